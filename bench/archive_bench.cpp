// Storing and reading the rows of table `main`, side by side with SQLite in one run. Both write to
// files in a temporary folder; reading finds the files in the system's cache.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "archive/data.h"
#include "archive/makedb.h"
#include "base/program_state.h"
#include "jet/connection.h"
#include "jet/engine.h"
#include "jet/recordset.h"
#include "platform/platform.h"
#include "realistic_entries.h"
#include "scratch_folder.h"
#include "sqlite_records.h"
#include "stopwatch.h"

namespace {

namespace fs = std::filesystem;
constexpr int rounds = 3;

class NoEvents final : public base::PendingEvents {
  public:
    void runPendingEvents() override {}
};

class CountingProgress final : public archive::SaveProgress {
  public:
    void setProgress(std::int64_t entry) override { last_ = entry; }

  private:
    std::int64_t last_ = 0;
};

void report(const char* what, double ours, double theirs, const char* against) {
    std::printf("%-44s %8.3f s   %-26s %8.3f s   ratio %5.2f\n", what, ours, against, theirs,
                theirs / ours);
}

std::int64_t readAllColumns(jet::Engine& engine, const base::ArchiveLocation& archive,
                            const char* filter) {
    jet::Connection connection(engine);
    connection.open(archive::connectionString(archive));
    std::int64_t bytes = 0;
    {
        jet::Recordset rows;
        rows.open("main", connection, jet::CursorType::Dynamic, jet::LockType::ReadOnly,
                  jet::CommandType::Table);
        rows.setFilter(filter);
        std::string text;
        for (; !rows.endOfFile(); rows.moveNext()) {
            for (int field = 0; field < 11; ++field) {
                if (field == 4 || field == 10) {
                    bytes += rows.integer(field) & 1;
                } else {
                    rows.readText(field, text);
                    bytes += static_cast<std::int64_t>(text.size());
                }
            }
        }
    }
    connection.close();
    return bytes;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    const std::size_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
    const fs::path parent = argc > 2 ? fs::path(argv[2]) : fs::temp_directory_path();
    const std::uint64_t seed = 20011;
    const bench::ScratchFolder scratch(parent);
    std::printf("%zu entries, seed %llu\n", count, static_cast<unsigned long long>(seed));

    const auto platform = platform::createPlatform(scratch.file("vdln.ini"));
    jet::Engine engine(platform->files());
    base::ProgramState state;
    state.archiveFolder = scratch.folder();
    state.archiveName = "bench.mdb";
    NoEvents events;
    CountingProgress progress;
    archive::Data data(state, engine, events);

    const auto entries = bench::realisticEntries(count, 1, seed);
    state.scanList.growTo(0);
    state.scanList.elements() = entries;
    base::MediaInfo medium;
    medium.mediaId = 1;

    bench::Stopwatch watch;
    std::optional<bench::SqliteRecords> sqliteFile;
    double sqliteInsert = 1e9;
    double insert = 1e9;
    for (int round = 0; round < rounds; ++round) {
        sqliteFile.reset();
        fs::remove(scratch.file("bench.sqlite"));
        fs::remove(state.currentArchive().fullPath());
        archive::createArchive(engine, state.currentArchive());
        sqliteFile.emplace(scratch.file("bench.sqlite"));
        watch.lap();
        sqliteFile->insert(entries);
        sqliteInsert = std::min(sqliteInsert, watch.lap());
        data.saveRecords(medium, progress);
        insert = std::min(insert, watch.lap());
    }
    bench::SqliteRecords& sqlite = *sqliteFile;
    report("saveRecords", insert, sqliteInsert, "SQLite insert");

    watch.lap();
    const std::size_t sqliteRows = sqlite.selectEntries().size();
    const double sqliteSelect = watch.lap();
    data.loadFiles(state.currentArchive(), 1);
    const double load = watch.lap();
    report("loadFiles (files only, kept as entries)", load, sqliteSelect, "SQLite select, kept");

    watch.lap();
    const std::int64_t sqliteBytes = sqlite.selectColumns();
    const double sqliteColumns = watch.lap();
    const std::int64_t bytes = readAllColumns(engine, state.currentArchive(), "");
    const double columns = watch.lap();
    report("all columns of all rows, not kept", columns, sqliteColumns, "SQLite select, not kept");
    if (bytes != sqliteBytes) {
        std::printf("the two read different texts: %lld and %lld bytes\n",
                    static_cast<long long>(bytes), static_cast<long long>(sqliteBytes));
        return 1;
    }
    state.archiveFiles.growTo(0);
    state.archiveFiles.elements().shrink_to_fit();
    const std::string exporting =
        "mdb-export '" + state.currentArchive().fullPath() + "' main > /dev/null 2>&1";
    watch.lap();
    if (std::system(exporting.c_str()) == 0) {
        report("all columns of all rows, not kept", columns, watch.lap(), "mdb-export");
    }

    // Nine more media of a tenth of the size each, of which one is read and deleted.
    const std::size_t part = count / 10;
    std::vector<base::ScanEntry> later;
    double insertPart = 0;
    for (std::int32_t id = 2; id <= 3; ++id) {
        later = bench::realisticEntries(part, id, seed + static_cast<std::uint64_t>(id));
        state.scanList.elements() = later;
        medium.mediaId = id;
        watch.lap();
        data.saveRecords(medium, progress);
        insertPart = watch.lap();
    }
    sqlite.insert(later);
    watch.lap();
    readAllColumns(engine, state.currentArchive(), "mediaid='2'");
    const double filtered = watch.lap();
    readAllColumns(engine, state.currentArchive(), "mediaid='999'");
    const double nothing = watch.lap();
    std::printf("%-44s %8.3f s   (%zu rows of %zu; finding none: %.3f s)\n", "filter by mediaid",
                filtered, part, count + 2 * part, nothing);
    watch.lap();
    data.deleteRecords(3);
    const double deletion = watch.lap();
    report("deleteRecords of the last medium", deletion, insertPart, "saveRecords of it");
    watch.lap();
    sqlite.deleteMedium(3);
    report("deleteRecords of the last medium", deletion, watch.lap(), "SQLite delete");

    std::printf(
        "file sizes: ours %.1f MB (without the last medium), SQLite %.1f MB, texts %.1f MB\n",
        static_cast<double>(fs::file_size(scratch.file("bench.mdb"))) / 1e6,
        static_cast<double>(fs::file_size(scratch.file("bench.sqlite"))) / 1e6,
        static_cast<double>(bytes) / 1e6);
    return sqliteRows == count ? 0 : 1;
}
