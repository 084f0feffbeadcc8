// Searching in an archive of realistic names: loading, queries, duplicates and export, and the same
// word looked for by SQLite in the same run. The best of some rounds counts, in seconds of
// the processor. All on one thread.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/record_rows.h"
#include "jet/engine.h"
#include "platform/platform.h"
#include "realistic_entries.h"
#include "scratch_folder.h"
#include "search/copies.h"
#include "search/duplicates.h"
#include "search/exporter.h"
#include "search/index_loader.h"
#include "search/query_parser.h"
#include "search/search_run.h"
#include "sqlite_records.h"

namespace {

namespace fs = std::filesystem;
constexpr int rounds = 5;

/// Seconds of the processor in the best of some rounds: others may use the machine meanwhile.
template <typename Work>
double best(Work work) {
    double seconds = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const std::clock_t start = std::clock();
        work();
        const std::clock_t used = std::clock() - start;
        seconds = std::min(seconds, static_cast<double>(used) / CLOCKS_PER_SEC);
    }
    return seconds;
}

void report(const char* what, double seconds, const std::string& result) {
    std::printf("%-52s %9.2f ms   %s\n", what, seconds * 1000, result.c_str());
}

std::vector<base::ScanEntry> entriesOfFourMedia(std::size_t count) {
    std::vector<base::ScanEntry> all;
    for (std::int32_t id = 1; id <= 4; ++id) {
        const auto part =
            bench::realisticEntries(count / 4, id, 77 + static_cast<unsigned>(id % 3));
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

void store(jet::Engine& engine, const base::ArchiveLocation& archive,
           const std::vector<base::ScanEntry>& entries) {
    archive::createArchive(engine, archive);
    archive::ArchiveTable table(engine, archive, "main");
    archive::RecordWriter writer(table.rows());
    for (const base::ScanEntry& entry : entries) {
        writer.write(entry, entry.mediaId);
    }
    table.close();
}

class Queries {
  public:
    explicit Queries(std::shared_ptr<const search::Index> index) : index_(std::move(index)) {}

    void measure(const std::string& line) {
        const search::Query query = search::parseQuery(line, now_);
        std::size_t found = 0;
        const double all = best([&] {
            search::SearchRun run(index_, query);
            run.run(search::Budget::unlimited());
            found = run.found();
        });
        const double first = best([&] { runToFirstHit(query); });
        char text[80];
        std::snprintf(text, sizeof text, "%zu hits, the first after %.2f ms", found, first * 1000);
        report(("query " + line).c_str(), all, text);
    }

    void measureTyping(const std::string& earlier, const std::string& later) {
        search::SearchRun before(index_, search::parseQuery(earlier, now_));
        before.run(search::Budget::unlimited());
        bool isWithin = false;
        const double seconds = best([&] {
            search::SearchRun run(index_, search::parseQuery(later, now_), before);
            run.run(search::Budget::unlimited());
            isWithin = run.isWithinEarlier();
        });
        report(("query " + later + " after " + earlier).c_str(), seconds,
               isWithin ? "within the earlier hits" : "anew");
    }

  private:
    void runToFirstHit(const search::Query& query) const {
        search::SearchRun run(index_, query);
        while (run.hits().empty() && !run.run(search::Budget(std::chrono::milliseconds(0)))) {
        }
    }

    std::shared_ptr<const search::Index> index_;
    search::LocalTime now_ = search::localTime({2026, 11, 21, 12, 0, 0});
};

class FileSink : public search::ExportSink {
  public:
    explicit FileSink(const std::string& path) : file_(path, std::ios::binary) {}
    void write(std::string_view bytes) override {
        file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes_ += bytes.size();
    }
    std::size_t bytes() const { return bytes_; }

  private:
    std::ofstream file_;
    std::size_t bytes_ = 0;
};

void measureSqlite(const std::string& path, const std::vector<base::ScanEntry>& entries,
                   const std::shared_ptr<const search::Index>& index) {
    bench::SqliteRecords sqlite(path);
    sqlite.insert(entries);
    std::int64_t theirs = 0;
    const double like = best([&] { theirs = sqlite.countLike("%invoice%"); });
    const search::Query query = search::parseQuery("invoice", 0);
    std::size_t ours = 0;
    // Up to the last hit, as counting does, and with the ranking behind it.
    const double find = best([&] {
        search::SearchRun run(index, query);
        while (run.done() < run.expected()) {
            run.run(search::Budget(std::chrono::milliseconds(0)));
        }
        ours = run.found();
    });
    const double rank = best([&] { search::findRows(index, query); });
    char text[100];
    std::snprintf(text, sizeof text,
                  "%lld hits (ours: %zu in %.2f ms, %.1f times as fast; ranked %.1f times)",
                  static_cast<long long>(theirs), ours, find * 1000, like / find, like / rank);
    report("SQLite: name or path LIKE '%invoice%', counted", like, text);
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    const std::size_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
    const fs::path parent = argc > 2 ? fs::path(argv[2]) : fs::temp_directory_path();
    const bench::ScratchFolder scratch(parent);
    const auto platform = platform::createPlatform(scratch.file("vdln.ini"));
    jet::Engine engine(platform->files());
    const base::ArchiveLocation archive{scratch.folder(), "bench.mdb"};
    const auto entries = entriesOfFourMedia(count);
    store(engine, archive, entries);

    std::shared_ptr<const search::Index> index;
    const double load = best([&] { index = search::loadIndex(engine, archive); });
    report("load the archive", load, std::to_string(index->size()) + " entries");
    const auto rows = static_cast<double>(index->size());
    std::printf("%-52s %9.1f      of which %.1f are the stored texts\n", "bytes of memory an entry",
                static_cast<double>(index->memory()) / rows,
                static_cast<double>(index->textMemory()) / rows);

    Queries queries(index);
    for (const char* const line :
         {"invoice", "summer garden", "zzz", "e", "ext:pdf size:>1mb date:2015 medium:2",
          "name:\"budget 77\"", "*7.mp3", "regex:^[a-d].*\\d{4}\\.(jpg|png)$", "case:Photo", "żółw",
          "sort:name", "copies:1 size:>1mb"}) {
        queries.measure(line);
    }
    queries.measureTyping("summer gar", "summer garden");

    std::vector<search::Row> all(index->size());
    for (search::Row row = 0; row < all.size(); ++row) {
        all[row] = row;
    }
    std::size_t groups = 0;
    const double duplicates = best([&] {
        search::DuplicateSearch work(*index, all, {});
        work.run(search::Budget::unlimited());
        groups = work.groups().size();
    });
    report("duplicates", duplicates, std::to_string(groups) + " groups");
    std::size_t bytes = 0;
    const double csv = best([&] {
        FileSink sink(scratch.file("all.csv"));
        search::Exporter exporter(*index, all, search::ExportFormat::Csv, {}, sink);
        exporter.run(search::Budget::unlimited());
        bytes = sink.bytes();
    });
    report("CSV of all rows, all columns", csv, std::to_string(bytes / 1000000) + " MB");
    measureSqlite(scratch.file("bench.sqlite"), entries, index);
    return 0;
}
