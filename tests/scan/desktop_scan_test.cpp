#include "scan/desktop_scan.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "tests/scan/scan_fixture.h"

namespace scan {
namespace {

using Texts = std::vector<std::string>;

class CaptionLog : public ProgressDisplay {
  public:
    void setDisplayProgress(const std::string& caption) override { captions.push_back(caption); }
    Texts captions;
};

class DesktopScanTest : public support::ScanFixture {
  protected:
    void listOf(std::int64_t count) {
        state.scanList.growTo(count);
        for (std::int64_t i = 1; i <= count; ++i) {
            state.scanList[i].FileName = std::to_string(i);
        }
    }

    CaptionLog progress;
};

TEST(GroupedNumber, SetsThousandsApart) {
    EXPECT_EQ(groupedNumber(0, ","), "0");
    EXPECT_EQ(groupedNumber(7, ","), "7");
    EXPECT_EQ(groupedNumber(999, ","), "999");
    EXPECT_EQ(groupedNumber(1234, ","), "1,234");
    EXPECT_EQ(groupedNumber(123456, "."), "123.456");
    EXPECT_EQ(groupedNumber(-1234567, ","), "-1,234,567");
    EXPECT_EQ(groupedNumber(-123, ","), "-123");
    EXPECT_EQ(groupedNumber(std::numeric_limits<std::int32_t>::min(), "\u202F"),
              "-2\u202F147\u202F483\u202F648");
}

TEST_F(DesktopScanTest, ListsTheDrivesByLetter) {
    EXPECT_EQ(scan.driveEntries(), (Texts{"c: [SYSTEM]", "d: [HOLIDAY]"}));
}

TEST_F(DesktopScanTest, NamesTheArchiveOrSaysThatThereIsNone) {
    EXPECT_EQ(scan.archiveText(), "Scan for current archive: /archives/test.mdb");
    state.archiveName.clear();
    EXPECT_EQ(scan.archiveText(), "No current archive, go to File menu to make current archive.");
}

TEST_F(DesktopScanTest, TellsTheDriveWithItsThousandsSetApart) {
    ASSERT_TRUE(scan.readDriveInfo("c: [SYSTEM]"));
    EXPECT_EQ(scan.driveInfoTexts(","),
              (DesktopScan::DriveInfoTexts{"Disk Label: SYSTEM", "Disk Type: Fixed",
                                           "Disk Size: 1,234 Mb", "Disk Free Space: 234 Mb"}));
    EXPECT_EQ(scan.mediaIdText(), "Media ID Number:12");
}

TEST_F(DesktopScanTest, AScanCountsFromOneAndTellsEachEntry) {
    ASSERT_TRUE(scan.readDriveInfo("d: [HOLIDAY]"));
    state.scanCount = 7;
    scan.scanDrive("d: [HOLIDAY]", progress);
    EXPECT_EQ(progress.captions,
              (Texts{"Scanning:  File 1", "Scanning:  File 2", "Scanning:  File 3"}));
    EXPECT_EQ(events.count, 3);
    EXPECT_EQ(state.scanCount, 3);
    EXPECT_EQ(state.scanList.upperBound(), 3);
}

TEST_F(DesktopScanTest, AnEntryWithoutBracketIsTheDriveItself) {
    scan.readDriveInfo("d:");
    scan.scanDrive("d:", progress);
    EXPECT_EQ(state.scanCount, 3);
}

TEST_F(DesktopScanTest, TheListGetsItsTenColumnsAndTheirWidthsAddUp) {
    scan.setScanMain();
    Texts headings;
    double sum = 0;
    for (const ListColumn& column : main.columns) {
        headings.push_back(column.heading);
        sum += column.width;
    }
    EXPECT_EQ(headings, (Texts{"Name", "Path", "Type", "Type", "Keywords", "Notes 1", "Notes 2",
                               "Date Created", "Date Modified", "Size"}));
    EXPECT_NEAR(sum, 1.0, 1e-9);
    EXPECT_DOUBLE_EQ(main.columns[1].width, 0.20);
    EXPECT_DOUBLE_EQ(main.columns[2].width, 0.05);
    EXPECT_DOUBLE_EQ(main.columns[3].width, 0.15);
    EXPECT_EQ(main.calls, (Texts{"arrange", "columns"}));
}

TEST_F(DesktopScanTest, AnItemShowsItsEntryInTheOrderOfTheColumns) {
    state.scanList.growTo(1);
    state.scanList[1] = {"name",          "12:\\dir", "file",     "Text",
                         -2147483647 - 1, "created",  "modified", "words",
                         "one",           "two",      12,         3};
    scan.fillScanList();
    ASSERT_EQ(main.items.size(), 1U);
    EXPECT_EQ(main.items[0], (ListItem{"name", "12:\\dir", "file", "Text", "words", "one", "two",
                                       "created", "modified", "-2147483648"}));
}

TEST_F(DesktopScanTest, TheListShowsAllOfTheScanListWhateverScanCountSays) {
    listOf(5);
    state.scanCount = 2;
    scan.fillScanList();
    EXPECT_EQ(main.names(), (Texts{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(state.currentMedia.numberFiles, 5);
    EXPECT_EQ(main.calls, (Texts{"remove items", "add items"}));
}

TEST_F(DesktopScanTest, BeforeTheFirstEntryOfARunThereIsNothingToShow) {
    state.currentMedia.numberFiles = 9;
    scan.fillScanList();
    EXPECT_TRUE(main.items.empty());
    EXPECT_EQ(state.currentMedia.numberFiles, 0);
}

TEST_F(DesktopScanTest, ThirtyTwoThousandSevenHundredAndSixtySevenEntriesAreShown) {
    listOf(32767);
    scan.fillScanList();
    EXPECT_EQ(main.items.size(), 32767U);
}

TEST_F(DesktopScanTest, OneMoreIsAnOverflowBehindThoseThatFit) {
    listOf(32768);
    EXPECT_THROW(scan.fillScanList(), base::OverflowFailure);
    EXPECT_EQ(main.items.size(), 32767U);
    EXPECT_EQ(main.items.back()[0], "32767");
    EXPECT_EQ(state.currentMedia.numberFiles, 32768);
}

TEST_F(DesktopScanTest, TheSummaryNamesTheMediumAndTheSpaceInUse) {
    ASSERT_TRUE(scan.readDriveInfo("d: [HOLIDAY]"));
    scan.setMediaName("photos 2001");
    state.currentMedia.numberFiles = 1534;
    scan.showDriveInfoInDisplay();
    EXPECT_EQ(main.status[0], "12: HOLIDAY as User Name: photos 2001 is a: CDROM");
    EXPECT_EQ(main.status[1], "1534 files and folders totalling: 512 of 650 total size.");
}

TEST_F(DesktopScanTest, TheSummaryDoesNotSetThousandsApart) {
    ASSERT_TRUE(scan.readDriveInfo("c: [SYSTEM]"));
    scan.showDriveInfoInDisplay();
    EXPECT_EQ(main.status[1], "0 files and folders totalling: 1000 of 1234 total size.");
}

TEST_F(DesktopScanTest, SavingIsOfferedAndTheListCountsAsAScan) {
    state.viewMode = "archive";
    scan.offerSaving();
    EXPECT_EQ(main.calls, Texts{"enable save"});
    EXPECT_EQ(state.viewMode, "scan");
}

}  // namespace
}  // namespace scan
