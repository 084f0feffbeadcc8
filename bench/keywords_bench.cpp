// Collecting the known keywords and notes of an archive, side by side with a plain read of the same
// three fields of the same rows, and with events that run after every record: those of the window
// system, without a screen.

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/record_rows.h"
#include "base/program_state.h"
#include "jet/engine.h"
#include "keywords/initkeywords.h"
#include "platform/platform.h"
#include "realistic_entries.h"
#include "scratch_folder.h"
#include "shell/end_of_program.h"
#include "shell/form_progress.h"
#include "shell/window_events.h"
#include "stopwatch.h"

namespace {

namespace fs = std::filesystem;
constexpr int rounds = 3;
constexpr std::uint64_t seed = 20012;
constexpr unsigned distinctKeywords = 50000;

class NoEvents final : public base::PendingEvents {
  public:
    void runPendingEvents() override {}
};

class NoProgress final : public keywords::CollectionProgress {
  public:
    void setText(const std::string& /*text*/) override {}
    void setRange(std::int64_t /*minimum*/, std::int64_t /*maximum*/) override {}
    void setPosition(std::int64_t /*position*/) override {}
    void showProgress() override {}
};

/// `count` entries, each with one to three of the distinct keywords; the first `noteCount` of them
/// have a note, each another one.
void createArchive(jet::Engine& engine, const base::ArchiveLocation& archive, std::size_t count,
                   std::size_t noteCount) {
    archive::createArchive(engine, archive);
    archive::ArchiveTable table(engine, archive, "main");
    archive::RecordWriter writer(table.rows());
    std::mt19937_64 random(seed);
    const auto keyword = [&random] {
        return "keyword " + std::to_string(random() % distinctKeywords);
    };
    std::size_t number = 0;
    for (base::ScanEntry& entry : bench::realisticEntries(count, 1, seed)) {
        ++number;
        entry.keywords = keyword();
        for (std::uint64_t more = random() % 3; more > 0; --more) {
            entry.keywords += "," + keyword();
        }
        if (number <= noteCount) {
            entry.Notes1 = "a note of its own for record " + std::to_string(number);
        }
        writer.write(entry, 1);
    }
    table.close();
}

std::size_t readPlainly(jet::Engine& engine, const base::ArchiveLocation& archive) {
    archive::ArchiveTable table(engine, archive, "main", jet::LockType::ReadOnly);
    jet::Recordset& rows = table.rows();
    const int fields[] = {rows.field("Notes1"), rows.field("Notes2"), rows.field("keywords")};
    std::size_t bytes = 0;
    std::string text;
    for (; !rows.endOfFile(); rows.moveNext()) {
        for (const int field : fields) {
            rows.readText(field, text);
            bytes += text.size();
        }
    }
    table.close();
    return bytes;
}

template <typename Operation>
double best(Operation operation) {
    double seconds = 1e9;
    for (int round = 0; round < rounds; ++round) {
        bench::Stopwatch watch;
        operation();
        seconds = std::min(seconds, watch.lap());
    }
    return seconds;
}

void report(const char* what, double seconds, double plain) {
    std::printf("  %-52s %8.3f s   %5.2f times the plain read\n", what, seconds, seconds / plain);
}

void measure(jet::Engine& engine, const base::ArchiveLocation& archive) {
    base::ProgramState state;
    state.archiveFolder = archive.folder;
    state.archiveName = archive.name;
    NoEvents noEvents;
    NoProgress noProgress;
    const shell::ProgramEnd end;
    shell::WindowEvents events(end);
    shell::FormProgress progress;

    const double plain = best([&] { readPlainly(engine, archive); });
    report("plain read of the three fields", plain, plain);
    report("initKeywords, no events",
           best([&] { keywords::initKeywords(state, engine, noEvents, noProgress); }), plain);
    report("initKeywords, the program's own events and window", best([&] {
               keywords::initKeywords(state, engine, events, progress);
               progress.hide();
           }),
           plain);
    std::printf("  %lld keywords found, %lld different; %d notes, %lld different\n",
                static_cast<long long>(state.keywordCount),
                static_cast<long long>(state.archiveKeywords.upperBound()),
                int{state.noteCount.value()},
                static_cast<long long>(state.archiveNotes.upperBound()));
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    const std::size_t count = argc > 1 ? std::stoull(argv[1]) : 1000000;
    const fs::path parent = argc > 2 ? fs::path(argv[2]) : fs::temp_directory_path();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    const bench::ScratchFolder scratch(parent);
    const auto platform = platform::createPlatform(scratch.file("vdln.ini"));
    jet::Engine engine(platform->files());

    std::printf("%zu records with keywords, one with a note, seed %llu\n", count,
                static_cast<unsigned long long>(seed));
    createArchive(engine, {scratch.folder(), "keywords.mdb"}, count, 1);
    measure(engine, {scratch.folder(), "keywords.mdb"});

    constexpr std::size_t notes = 32767;
    std::printf("%zu records, each with keywords and a note of its own\n", notes);
    createArchive(engine, {scratch.folder(), "notes.mdb"}, notes, notes);
    measure(engine, {scratch.folder(), "notes.mdb"});
    return 0;
}
