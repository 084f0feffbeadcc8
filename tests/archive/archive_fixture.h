#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/media_rows.h"
#include "archive/record_rows.h"
#include "base/pending_events.h"
#include "base/program_state.h"
#include "jet/engine.h"
#include "tests/archive/memory_files.h"

namespace support {

/// Counts how often events were let run, and does then what the test wants to happen.
class ScriptedEvents : public base::PendingEvents {
  public:
    void runPendingEvents() override {
        ++count;
        if (atEvents) {
            atEvents();
        }
    }

    int count = 0;
    std::function<void()> atEvents;
};

/// The tables of an archive as texts, and rows to put into them.
class ArchiveTables {
  public:
    using Row = std::vector<std::string>;

    explicit ArchiveTables(jet::Engine& engine) : engine_(engine) {}

    std::vector<Row> rows(const base::ArchiveLocation& archive, std::string_view table) {
        archive::ArchiveTable open(engine_, archive, table, jet::LockType::ReadOnly);
        const int fields = static_cast<int>(open.rows().definition().fields.size());
        std::vector<Row> result;
        for (; !open.rows().endOfFile(); open.rows().moveNext()) {
            Row& row = result.emplace_back();
            for (int field = 0; field < fields; ++field) {
                row.push_back(open.rows().text(field));
            }
        }
        open.close();
        return result;
    }

    std::vector<std::string> column(const base::ArchiveLocation& archive, std::string_view table,
                                    std::string_view field) {
        archive::ArchiveTable open(engine_, archive, table, jet::LockType::ReadOnly);
        const int position = open.rows().field(field);
        std::vector<std::string> result;
        for (; !open.rows().endOfFile(); open.rows().moveNext()) {
            result.push_back(open.rows().text(position));
        }
        open.close();
        return result;
    }

    void addRecords(const base::ArchiveLocation& archive,
                    const std::vector<base::ScanEntry>& entries) {
        archive::ArchiveTable open(engine_, archive, "main");
        archive::RecordWriter writer(open.rows());
        for (const base::ScanEntry& entry : entries) {
            writer.write(entry, entry.mediaId);
        }
        open.close();
    }

    void addMedia(const base::ArchiveLocation& archive, const std::vector<base::MediaInfo>& media) {
        archive::ArchiveTable open(engine_, archive, "media");
        const archive::MediaFields fields(open.rows());
        for (const base::MediaInfo& medium : media) {
            archive::addMedia(open.rows(), fields, medium);
        }
        open.close();
    }

  private:
    jet::Engine& engine_;
};

/// A new, empty archive in memory, which is the current one.
class ArchiveTest : public testing::Test {
  protected:
    ArchiveTest() {
        state.archiveFolder = "/archives/";
        state.archiveName = "test.mdb";
        archive::createArchive(engine, state.currentArchive());
    }

    std::vector<std::string> column(std::string_view table, std::string_view field) {
        return tables.column(state.currentArchive(), table, field);
    }

    MemoryFiles files;
    jet::Engine engine{files};
    base::ProgramState state;
    ScriptedEvents events;
    ArchiveTables tables{engine};
};

}  // namespace support
