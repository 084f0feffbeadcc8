#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "archive/data.h"
#include "archive/schema.h"
#include "base/failure.h"
#include "jet/database.h"
#include "tests/archive/archive_fixture.h"

// The operations of data on table `main`.

namespace {

using Texts = std::vector<std::string>;

base::ScanEntry entryOf(const std::string& name, const std::string& path,
                        const std::string& kind = "file", std::int32_t mediaId = 7) {
    base::ScanEntry entry;
    entry.FileName = name;
    entry.path = path;
    entry.Folder = kind;
    entry.mediaId = mediaId;
    return entry;
}

base::MediaInfo medium(std::int32_t id) {
    base::MediaInfo media;
    media.mediaId = id;
    return media;
}

class ProgressBar : public archive::SaveProgress {
  public:
    void setProgress(std::int64_t entry) override { positions.push_back(entry); }
    std::vector<std::int64_t> positions;
};

class DataRecords : public support::ArchiveTest {
  protected:
    void scanned(const std::vector<base::ScanEntry>& entries) {
        for (const base::ScanEntry& entry : entries) {
            state.scanList.append(entry);
        }
        state.scanCount = static_cast<std::int64_t>(entries.size());
    }
    void stored(const std::vector<base::ScanEntry>& entries) {
        tables.addRecords(state.currentArchive(), entries);
    }

    static Texts names(const base::NumberedList<base::ScanEntry>& list) {
        Texts result;
        for (const base::ScanEntry& entry : list.elements()) {
            result.push_back(entry.FileName);
        }
        return result;
    }

    archive::Data data{state, engine, events};
    ProgressBar progress;
};

}  // namespace

TEST(ConnectionString, NamesProviderAndPath) {
    EXPECT_EQ(archive::connectionString({"C:\\archives\\", "photos.mdb"}),
              "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\archives\\photos.mdb");
}

// saveRecords

TEST_F(DataRecords, EmptyScanListWritesNoRow) {
    data.saveRecords(medium(7), progress);
    state.scanList.growTo(0);
    data.saveRecords(medium(7), progress);
    EXPECT_TRUE(tables.rows(state.currentArchive(), "main").empty());
    EXPECT_TRUE(progress.positions.empty());
}

TEST_F(DataRecords, SaveWritesEveryFieldOfAnEntry) {
    base::ScanEntry entry = entryOf("photo.jpg", "7:\\dir");
    entry.Type = "JPEG image";
    entry.Size = -2147483647 - 1;
    entry.DateCreated = "03/07/2001 09:05:00";
    entry.DateModified = "11/30/2002 23:59:58";
    entry.keywords = "k";
    entry.Notes1 = "n1";
    entry.Notes2 = "n2";
    scanned({entry});
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(
        tables.rows(state.currentArchive(), "main"),
        (std::vector<Texts>{{"photo.jpg", "7:\\dir", "file", "JPEG image", "-2147483648",
                             "03/07/2001 09:05:00", "11/30/2002 23:59:58", "k", "n1", "n2", "7"}}));
}

TEST_F(DataRecords, SaveStoresEmptyTextsAsEmptyAndNotAsNull) {
    scanned({base::ScanEntry()});
    data.saveRecords(medium(7), progress);
    archive::ArchiveTable table(engine, state.currentArchive(), "main");
    for (int field = 0; field < 11; ++field) {
        EXPECT_FALSE(table.rows().isNull(field)) << field;
    }
}

TEST_F(DataRecords, SaveWritesTheEntriesInTheirOrder) {
    scanned({entryOf("b", "7:"), entryOf("a", "7:"), entryOf("c", "7:")});
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "FileName"), (Texts{"b", "a", "c"}));
}

TEST_F(DataRecords, SaveTakesTheIdOfTheGivenMedium) {
    scanned({entryOf("a", "7:", "file", 7)});
    data.saveRecords(medium(3), progress);
    EXPECT_EQ(column("main", "mediaId"), Texts{"3"});
}

TEST_F(DataRecords, SaveWritesTextsAsTheyAre) {
    base::ScanEntry entry = entryOf("  ñandú – 日本\n.txt ", "7:\\a'b\"c");
    entry.DateCreated = "3/7/2001 9:5:0";
    scanned({entry});
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "filename"), Texts{"  ñandú – 日本\n.txt "});
    EXPECT_EQ(column("main", "path"), Texts{"7:\\a'b\"c"});
    EXPECT_EQ(column("main", "datecreated"), Texts{"3/7/2001 9:5:0"});
}

TEST_F(DataRecords, SaveKeepsATypeWithItsPadding) {
    base::ScanEntry entry = entryOf("a", "7:");
    entry.Type = std::string("Text Document") + std::string(67, '\0');
    scanned({entry});
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "type"), Texts{entry.Type});
}

TEST_F(DataRecords, SaveWritesTheWholeListWhateverScanCountSays) {
    scanned({entryOf("a", "7:"), entryOf("b", "7:")});
    state.scanCount = 0;
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "b"}));
}

TEST_F(DataRecords, SaveShowsEachEntryAndThenLetsEventsRun) {
    scanned({entryOf("a", "7:"), entryOf("b", "7:")});
    std::vector<std::size_t> shownAtEvents;
    events.atEvents = [&] { shownAtEvents.push_back(progress.positions.size()); };
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(progress.positions, (std::vector<std::int64_t>{1, 2}));
    EXPECT_EQ(shownAtEvents, (std::vector<std::size_t>{1, 2}));
}

TEST_F(DataRecords, SaveKeepsTheRowsBeforeTheOneThatFails) {
    scanned({entryOf("a", "7:"), entryOf(std::string(256, 'x'), "7:"), entryOf("c", "7:")});
    try {
        data.saveRecords(medium(7), progress);
        FAIL() << "no failure";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::Value);
        EXPECT_NE(failure.text().find("filename"), std::string::npos) << failure.text();
    }
    EXPECT_EQ(column("main", "filename"), Texts{"a"});
}

TEST_F(DataRecords, SaveFailsWhereTheListIsCutInTheMiddle) {
    scanned({entryOf("a", "7:"), entryOf("b", "7:"), entryOf("c", "7:")});
    events.atEvents = [&] { state.scanList.growTo(1); };
    EXPECT_THROW(data.saveRecords(medium(7), progress), base::SubscriptFailure);
    EXPECT_EQ(column("main", "filename"), Texts{"a"});
}

TEST_F(DataRecords, SaveWritesWhatTheListHoldsWhenItsTurnComes) {
    scanned({entryOf("a", "7:"), entryOf("b", "7:")});
    events.atEvents = [&] {
        state.scanList[2].FileName = "changed";
        state.scanList.append(entryOf("late", "7:"));
    };
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "changed"}));
}

TEST_F(DataRecords, SaveGoesOnIntoItsArchiveWhenAnotherBecomesCurrent) {
    const base::ArchiveLocation first = state.currentArchive();
    archive::createArchive(engine, {"/archives/", "other.mdb"});
    scanned({entryOf("a", "7:"), entryOf("b", "7:")});
    state.currentMedia = medium(7);
    events.atEvents = [&] {
        state.archiveName = "other.mdb";
        state.currentMedia.mediaId = 99;
    };
    data.saveRecords(state.currentMedia, progress);
    EXPECT_EQ(tables.column(first, "main", "mediaid"), (Texts{"7", "7"}));
    EXPECT_TRUE(column("main", "mediaid").empty());
}

TEST_F(DataRecords, SaveInsideASaveStoresBoth) {
    scanned({entryOf("a", "7:"), entryOf("b", "7:")});
    events.atEvents = [&] {
        events.atEvents = nullptr;
        data.saveRecords(medium(8), progress);
    };
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "a", "b", "b"}));
    EXPECT_EQ(column("main", "mediaid"), (Texts{"7", "8", "8", "7"}));
}

TEST_F(DataRecords, SaveWithoutAnArchiveIsAFailure) {
    scanned({entryOf("a", "7:")});
    state.archiveName = "missing.mdb";
    EXPECT_THROW(data.saveRecords(medium(7), progress), base::EngineFailure);
    state.archiveName.clear();
    state.archiveFolder.clear();
    EXPECT_THROW(data.saveRecords(medium(7), progress), base::EngineFailure);
}

// deleteRecords

TEST_F(DataRecords, DeleteTakesTheRowsOfThatMediumOnly) {
    stored({entryOf("a", "7:", "file", 7), entryOf("b", "77:", "file", 77),
            entryOf("c", "7:", "folder", 7), entryOf("d", "1:", "file", 1)});
    data.deleteRecords(7);
    EXPECT_EQ(column("main", "filename"), (Texts{"b", "d"}));
}

TEST_F(DataRecords, DeleteOfAMediumWithoutRowsChangesNothing) {
    stored({entryOf("a", "7:", "file", 7)});
    const auto before = tables.rows(state.currentArchive(), "main");
    data.deleteRecords(8);
    EXPECT_EQ(tables.rows(state.currentArchive(), "main"), before);
}

TEST_F(DataRecords, DeleteInAnEmptyArchiveIsNoFailure) {
    data.deleteRecords(1);
    EXPECT_TRUE(column("main", "filename").empty());
}

TEST_F(DataRecords, DeleteTakesEveryRowOfMany) {
    std::vector<base::ScanEntry> entries;
    for (int i = 0; i < 3000; ++i) {
        entries.push_back(entryOf("name " + std::to_string(i), "7:\\folder", "file", 7 + i % 3));
    }
    stored(entries);
    data.deleteRecords(8);
    EXPECT_EQ(column("main", "mediaid").size(), 2000U);
    data.deleteRecords(7);
    data.deleteRecords(9);
    EXPECT_TRUE(column("main", "mediaid").empty());
}

TEST_F(DataRecords, RowsCanBeSavedAfterADelete) {
    stored({entryOf("a", "7:"), entryOf("b", "7:")});
    data.deleteRecords(7);
    scanned({entryOf("c", "7:")});
    data.saveRecords(medium(7), progress);
    EXPECT_EQ(column("main", "filename"), Texts{"c"});
}

// adjustRecordPaths

TEST_F(DataRecords, AdjustPutsTheIdInThePlaceOfWhatStandsBeforeTheColon) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"E:\\", "12:\\"},
        {"E:\\photos\\2001", "12:\\photos\\2001"},
        {"7:\\docs", "12:\\docs"},
        {"7:", "12:"},
        {"docs", "12docs"},
        {"", "12"},
        {":x", "12:x"},
        {"a:b:c", "12:b:c"},
    };
    for (const auto& [path, expected] : cases) {
        state.scanList.growTo(1);
        state.scanList[1].path = path;
        data.adjustRecordPaths(medium(12));
        EXPECT_EQ(state.scanList[1].path, expected) << path;
    }
}

TEST_F(DataRecords, AdjustRewritesTheWholeListAndNothingElse) {
    scanned({entryOf("a:b", "7:\\x"), entryOf("c", "7:\\y")});
    state.scanCount = 1;
    data.adjustRecordPaths(medium(3));
    EXPECT_EQ(state.scanList[1], entryOf("a:b", "3:\\x"));
    EXPECT_EQ(state.scanList[2], entryOf("c", "3:\\y"));
}

TEST_F(DataRecords, AdjustOfAnEmptyListDoesNothing) {
    data.adjustRecordPaths(medium(3));
    EXPECT_TRUE(state.scanList.neverGrown());
}

// loadFolders and loadFiles

TEST_F(DataRecords, LoadSplitsTheRowsOfTheMediumByTheirKind) {
    stored({entryOf("sub", "7:", "folder"), entryOf("f", "7:", "file"),
            entryOf("other", "8:", "folder", 8), entryOf("g", "8:", "file", 8),
            entryOf("h", "7:\\sub", "file")});
    EXPECT_TRUE(data.loadFolders(state.currentArchive(), 7));
    EXPECT_TRUE(data.loadFiles(state.currentArchive(), 7));
    EXPECT_EQ(names(state.archiveFolders), Texts{"sub"});
    EXPECT_EQ(names(state.archiveFiles), (Texts{"f", "h"}));
}

TEST_F(DataRecords, LoadReadsEveryField) {
    base::ScanEntry entry = entryOf("photo.jpg", "7:\\dir");
    entry.Type = "JPEG image";
    entry.Size = -1;
    entry.DateCreated = "03/07/2001 09:05:00";
    entry.DateModified = "11/30/2002 23:59:58";
    entry.keywords = "k";
    entry.Notes1 = "n1";
    entry.Notes2 = "n2";
    stored({entry});
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_EQ(state.archiveFiles[1], entry);
}

TEST_F(DataRecords, LoadReadsNullAsAnEmptyText) {
    {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        table.rows().addNew();
        table.rows().setInteger(table.rows().field("mediaId"), 7);
        table.rows().setText(table.rows().field("folder"), "file");
        table.rows().update();
        table.close();
    }
    state.archiveFiles.append(entryOf("old", "old"));
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_EQ(state.archiveFiles[1], entryOf("", "", "file"));
}

TEST_F(DataRecords, LoadTakesTheArchiveItIsGiven) {
    const base::ArchiveLocation other{"/archives/", "other.mdb"};
    archive::createArchive(engine, other);
    tables.addRecords(other, {entryOf("there", "7:")});
    data.loadFiles(other, 7);
    EXPECT_EQ(names(state.archiveFiles), Texts{"there"});
}

TEST_F(DataRecords, LoadOfAMediumWithoutRowsLeavesTheListsAsTheyWere) {
    stored({entryOf("sub", "7:", "folder"), entryOf("f", "7:", "file")});
    data.loadFolders(state.currentArchive(), 7);
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_TRUE(data.loadFolders(state.currentArchive(), 8));
    EXPECT_TRUE(data.loadFiles(state.currentArchive(), 8));
    EXPECT_EQ(names(state.archiveFolders), Texts{"sub"});
    EXPECT_EQ(names(state.archiveFiles), Texts{"f"});
}

TEST_F(DataRecords, LoadOfNothingLeavesListsThatWereNeverGrownWithoutBounds) {
    EXPECT_TRUE(data.loadFolders(state.currentArchive(), 7));
    EXPECT_TRUE(data.loadFiles(state.currentArchive(), 7));
    EXPECT_TRUE(state.archiveFolders.neverGrown());
    EXPECT_TRUE(state.archiveFiles.neverGrown());
}

TEST_F(DataRecords, FirstRowOfALoadCutsTheList) {
    stored({entryOf("a", "7:"), entryOf("b", "7:"), entryOf("c", "8:", "file", 8)});
    data.loadFiles(state.currentArchive(), 7);
    data.loadFiles(state.currentArchive(), 8);
    EXPECT_EQ(names(state.archiveFiles), Texts{"c"});
}

TEST_F(DataRecords, LoadFindsTheKindInAnyLetterCase) {
    stored({entryOf("a", "7:", "FOLDER"), entryOf("b", "7:", "File"), entryOf("c", "7:", "")});
    data.loadFolders(state.currentArchive(), 7);
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_EQ(names(state.archiveFolders), Texts{"a"});
    EXPECT_EQ(names(state.archiveFiles), Texts{"b"});
}

TEST_F(DataRecords, IdsThatAreKeptAsTextsAreFoundByTheirText) {
    jet::TableDefinition main = archive::mainTable();
    main.fields.back().type = jet::DataType::Text;
    const base::ArchiveLocation other{"/archives/", "texts.mdb"};
    {
        jet::Database database =
            jet::Database::create(engine, other.fullPath(), ";LANGID=0x0409;CP=1252;COUNTRY=0");
        database.append(main);
        database.close();
    }
    tables.addRecords(other, {entryOf("a", "7:", "file", 7), entryOf("b", "70:", "file", 70)});
    data.loadFiles(other, 7);
    EXPECT_EQ(names(state.archiveFiles), Texts{"a"});
}

TEST_F(DataRecords, LoadFilesKeepsTheOrderOfTheTable) {
    stored({entryOf("deep", "7:\\a\\b"), entryOf("top", "7:"), entryOf("mid", "7:\\a")});
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_EQ(names(state.archiveFiles), (Texts{"deep", "top", "mid"}));
    EXPECT_EQ(state.archiveFiles[1].level, 0);
}

TEST_F(DataRecords, LoadFoldersOrdersThemByLevel) {
    stored({entryOf("b", "3:\\a\\b", "folder", 3), entryOf("a", "3:\\a", "folder", 3)});
    data.loadFolders(state.currentArchive(), 3);
    EXPECT_EQ(names(state.archiveFolders), (Texts{"a", "b"}));
    EXPECT_EQ(state.archiveFolders[1].level, 2);
    EXPECT_EQ(state.archiveFolders[2].level, 3);
}

TEST_F(DataRecords, LoadLetsEventsRunAfterEachRow) {
    stored({entryOf("a", "7:"), entryOf("b", "7:"), entryOf("c", "8:", "file", 8)});
    std::vector<std::int64_t> lengths;
    events.atEvents = [&] { lengths.push_back(state.archiveFiles.upperBound()); };
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_EQ(lengths, (std::vector<std::int64_t>{1, 2}));
}

TEST_F(DataRecords, LoadInsideALoadIsCutByTheOuterOne) {
    stored({entryOf("a", "7:"), entryOf("b", "7:"), entryOf("x", "8:", "file", 8),
            entryOf("y", "8:", "file", 8), entryOf("z", "8:", "file", 8)});
    events.atEvents = [&] {
        events.atEvents = nullptr;
        data.loadFiles(state.currentArchive(), 8);
    };
    data.loadFiles(state.currentArchive(), 7);
    EXPECT_EQ(names(state.archiveFiles), (Texts{"x", "b"}));
}

TEST_F(DataRecords, LoadOfAnArchiveThatIsNotThereIsAFailure) {
    EXPECT_THROW(data.loadFiles({"/archives/", "missing.mdb"}, 7), base::EngineFailure);
    EXPECT_THROW(data.loadFolders({"/archives/", "missing.mdb"}, 7), base::EngineFailure);
}

TEST_F(DataRecords, WriterGoesOnAfterAnEntryThatDoesNotFit) {
    archive::ArchiveTable table(engine, state.currentArchive(), "main");
    archive::RecordWriter writer(table.rows());
    writer.write(entryOf("a", "7:"), 7);
    EXPECT_THROW(writer.write(entryOf("b", std::string(256, 'p')), 7), base::EngineFailure);
    EXPECT_EQ(table.rows().text(0), "a");
    writer.write(entryOf("c", "7:"), 7);
    table.close();
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "c"}));
}
