#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "archive/data.h"
#include "archive/makedb.h"
#include "archive/schema.h"
#include "platform/platform.h"
#include "save/save_session.h"
#include "tests/archive/archive_fixture.h"
#include "tests/jet/mdb_tools.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

namespace support {

/// An archive in a file of its own, which is the current one, and a scan that waits to be saved.
class SaveFixture : public testing::Test {
  protected:
    using Row = ArchiveTables::Row;

    SaveFixture() {
        state.archiveFolder = folder.path() + "/";
        state.archiveName = "test.mdb";
        archive::createArchive(engine, state.currentArchive());
        state.currentMedia = medium(7, "DISC", "photos 2001", "CDROM");
        state.currentMedia.numberFiles = 3;
        scanOf({"a", "b", "c"});
    }

    /// Whatever a test has stored, another program must read the same.
    ~SaveFixture() override {
        if (jet_test::MdbTools::installed() && folder.exists("test.mdb")) {
            compareWithJudge(archive::mainTable());
            compareWithJudge(archive::mediaTable());
        }
    }

    static base::MediaInfo medium(std::int32_t id, const std::string& label,
                                  const std::string& name, const std::string& type) {
        base::MediaInfo media;
        media.mediaId = id;
        media.driveLetter = "D";
        media.mediaLabel = label;
        media.mediaName = name;
        media.mediaSize = 650;
        media.mediaType = type;
        media.mediaFreeSpace = 138;
        media.archiveDate = "03/07/2001 09:05:00";
        media.archiveUpdate = "03/07/2001 09:05:00";
        return media;
    }

    void scanOf(const std::vector<std::string>& names) {
        std::int64_t number = 0;
        state.scanList.growTo(static_cast<std::int64_t>(names.size()));
        for (const std::string& name : names) {
            base::ScanEntry& entry = state.scanList[++number];
            entry.FileName = name;
            entry.path = "7:\\docs";
            entry.Folder = "file";
            entry.Type = "Text";
            entry.Size = static_cast<std::int32_t>(number);
            entry.DateCreated = "03/07/2001 09:05:00";
            entry.mediaId = 7;
        }
    }

    /// Two media, 3 with two records and 5 with one.
    void storeTwoMedia() {
        base::MediaInfo third = medium(3, "OLD", "letters", "Fixed");
        third.archiveDate = "01/02/1999 03:04:05";
        third.archiveUpdate = "01/02/1999 03:04:05";
        third.numberFiles = 2;
        base::MediaInfo fifth = medium(5, "OTHER", "music", "Removable");
        fifth.numberFiles = 1;
        tables.addMedia(state.currentArchive(), {third, fifth});
        base::ScanEntry entry;
        entry.FileName = "old";
        entry.path = "3:";
        entry.Folder = "file";
        entry.mediaId = 3;
        base::ScanEntry kept = entry;
        kept.FileName = "kept";
        kept.path = "5:";
        kept.mediaId = 5;
        tables.addRecords(state.currentArchive(), {entry, kept, entry});
    }

    std::vector<std::string> column(std::string_view table, std::string_view field) {
        return tables.column(state.currentArchive(), table, field);
    }
    std::vector<Row> rows(std::string_view table) {
        return tables.rows(state.currentArchive(), table);
    }

    TemporaryFolder folder;
    std::unique_ptr<platform::Platform> machine = platform::createPlatform();
    jet::Engine engine{machine->files(), {.lockWaitMilliseconds = 20}};
    base::ProgramState state;
    ScriptedEvents events;
    ScriptedMessageBox messages;
    archive::Data data{state, engine, events};
    ArchiveTables tables{engine};

  private:
    void compareWithJudge(const jet::TableDefinition& table) {
        std::vector<Row> ours = tables.rows({folder.path() + "/", "test.mdb"}, table.name);
        std::sort(ours.begin(), ours.end());
        EXPECT_EQ(jet_test::differenceOf(
                      ours, jet_test::MdbTools::rows(folder.pathOf("test.mdb"), table)),
                  "");
    }
};

}  // namespace support
