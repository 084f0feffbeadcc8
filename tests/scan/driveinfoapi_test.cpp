#include "scan/driveinfoapi.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/failure.h"
#include "tests/archive/archive_fixture.h"
#include "tests/support/fake_platform.h"

namespace {

constexpr std::uint64_t mb = 1048576;

class DriveInfoTest : public support::ArchiveTest {
  protected:
    DriveInfoTest() {
        support::FakeDrive& drive = drives.add('d', "MY DISK", 4);
        drive.totalBytes = 650 * mb;
        drive.totalFree = 12 * mb;
        drive.freeToCaller = 3 * mb;
    }

    void storedIds(const std::vector<std::int32_t>& ids) {
        std::vector<base::MediaInfo> media;
        for (const std::int32_t id : ids) {
            media.emplace_back().mediaId = id;
        }
        tables.addMedia(state.currentArchive(), media);
    }

    std::int32_t sizeReadFor(std::uint64_t totalBytes) {
        drives.at('d').totalBytes = totalBytes;
        EXPECT_TRUE(info.readDriveInfo("d:"));
        return state.currentMedia.mediaSize;
    }

    /// A reading that went well, with values of its own in every field.
    base::MediaInfo goodReading() {
        EXPECT_TRUE(info.readDriveInfo("d: [MY DISK]"));
        state.currentMedia.mediaName = "typed";
        return state.currentMedia;
    }

    support::FakeDrives drives;
    support::FixedClock clock;
    scan::DriveInfo info{state, engine, drives, clock};
};

}  // namespace

TEST(StripDriveEntry, KeepsLetterAndColon) {
    EXPECT_EQ(scan::stripDriveEntry("d: [MY DISK]"), "d:");
    EXPECT_EQ(scan::stripDriveEntry("d: []"), "d:");
    EXPECT_EQ(scan::stripDriveEntry("e: [a [b] c]"), "e:");
}

TEST(StripDriveEntry, KeepsAnEntryWithoutBracketWhole) {
    EXPECT_EQ(scan::stripDriveEntry("d:"), "d:");
    EXPECT_EQ(scan::stripDriveEntry(""), "");
    EXPECT_EQ(scan::stripDriveEntry("d: MY DISK]"), "d: MY DISK]");
}

TEST(StripDriveEntry, DropsTheCharacterBeforeTheBracketWhateverItIs) {
    EXPECT_EQ(scan::stripDriveEntry("d:[X]"), "d");
    EXPECT_EQ(scan::stripDriveEntry(" [X]"), "");
}

TEST(StripDriveEntry, FailsWhereTheBracketComesFirst) {
    EXPECT_THROW(scan::stripDriveEntry("[X]"), base::InvalidArgumentFailure);
}

TEST(CombineHalves, ReadsEachHalfAsUnsigned) {
    EXPECT_EQ(scan::combineHalves(0, 0), 0.0);
    EXPECT_EQ(scan::combineHalves(5, 0), 5.0);
    EXPECT_EQ(scan::combineHalves(5, 1), 4294967301.0);
    EXPECT_EQ(scan::combineHalves(-1, 0), 4294967295.0);
    EXPECT_EQ(scan::combineHalves(0, -1), 18446744069414584320.0);
}

TEST(CombineHalves, OfThreeGiBIsPositiveAndExact) {
    const platform::CountHalves halves = support::halvesOf(3221225472U);
    EXPECT_LT(halves.low, 0);
    EXPECT_EQ(scan::combineHalves(halves.low, halves.high), 3221225472.0);
}

// nextMediaId

TEST_F(DriveInfoTest, NextIdInAnEmptyTableIsOne) { EXPECT_EQ(info.nextMediaId(), 1); }

TEST_F(DriveInfoTest, NextIdIsOneMoreThanTheLargest) {
    storedIds({3, 7, 5});
    EXPECT_EQ(info.nextMediaId(), 8);
}

TEST_F(DriveInfoTest, NextIdIsOneWhereAllIdsAreNegative) {
    storedIds({-4, -9});
    EXPECT_EQ(info.nextMediaId(), 1);
}

TEST_F(DriveInfoTest, NextIdPastTheLargestNumberIsAnOverflow) {
    storedIds({std::numeric_limits<std::int32_t>::max()});
    EXPECT_THROW(info.nextMediaId(), base::OverflowFailure);
    EXPECT_FALSE(info.readDriveInfo("d:"));
}

TEST_F(DriveInfoTest, NextIdWithoutAnArchiveIsAnEngineFailure) {
    state.archiveName.clear();
    EXPECT_THROW(info.nextMediaId(), base::EngineFailure);
}

TEST_F(DriveInfoTest, NextIdChangesNothingInTheArchive) {
    storedIds({3});
    const std::string before = files.read("/archives/test.mdb");
    info.nextMediaId();
    EXPECT_EQ(files.read("/archives/test.mdb"), before);
}

// readDriveInfo

TEST_F(DriveInfoTest, ReadingFillsEveryField) {
    storedIds({11});
    clock.now = {2003, 5, 12, 21, 4, 9};
    state.currentMedia.mediaName = "typed before";
    state.currentMedia.numberFiles = 44;
    EXPECT_TRUE(info.readDriveInfo("d: [MY DISK]"));
    base::MediaInfo expected;
    expected.mediaId = 12;
    expected.driveLetter = "D";
    expected.mediaLabel = "MY DISK";
    expected.mediaSize = 650;
    expected.mediaType = "CDROM";
    expected.mediaFreeSpace = 12;
    expected.archiveDate = "05/12/2003 21:04:09";
    expected.archiveUpdate = "05/12/2003 21:04:09";
    expected.numberFiles = 44;
    EXPECT_EQ(state.currentMedia, expected);
}

TEST_F(DriveInfoTest, EachReadingMakesAFileSystemObject) {
    info.readDriveInfo("d:");
    info.readDriveInfo("d:");
    EXPECT_EQ(drives.fileSystemObjectsMade, 2);
}

TEST_F(DriveInfoTest, TypeCodesHaveTheirNames) {
    const std::vector<std::pair<std::int32_t, std::string>> cases{
        {0, "UnKnown"}, {1, "Removable"}, {2, "Fixed"},   {3, "Remote"},
        {4, "CDROM"},   {5, "RAMDisk"},   {6, "UnKnown"}, {-1, "UnKnown"},
    };
    for (const auto& [code, name] : cases) {
        drives.at('d').type = code;
        EXPECT_TRUE(info.readDriveInfo("d:"));
        EXPECT_EQ(state.currentMedia.mediaType, name) << code;
    }
}

TEST_F(DriveInfoTest, SizesAreWholeMb) {
    EXPECT_EQ(sizeReadFor(681574400), 650);
    EXPECT_EQ(sizeReadFor(0), 0);
    EXPECT_EQ(sizeReadFor(3221225472U), 3072);
    EXPECT_EQ(sizeReadFor(mb / 2 - 1), 0);
    EXPECT_EQ(sizeReadFor(mb / 2 + 1), 1);
}

TEST_F(DriveInfoTest, HalvesOfAMbAreRoundedToEven) {
    EXPECT_EQ(sizeReadFor(524288), 0);
    EXPECT_EQ(sizeReadFor(1572864), 2);
    EXPECT_EQ(sizeReadFor(2621440), 2);
    EXPECT_EQ(sizeReadFor(3670016), 4);
}

TEST_F(DriveInfoTest, LargestSizeInMbIsReadAndOneMoreFails) {
    EXPECT_EQ(sizeReadFor(2147483647 * mb), 2147483647);
    drives.at('d').totalBytes = 2147483648 * mb;
    EXPECT_FALSE(info.readDriveInfo("d:"));
    EXPECT_EQ(state.currentMedia.mediaSize, 2147483647);
}

TEST_F(DriveInfoTest, FreeSpaceIsTheTotalFreeAndNotTheCallers) {
    EXPECT_TRUE(info.readDriveInfo("d:"));
    EXPECT_EQ(state.currentMedia.mediaFreeSpace, 12);
}

TEST_F(DriveInfoTest, DriveThatIsNotReadyChangesNothing) {
    const base::MediaInfo before = goodReading();
    drives.add('e').ready = false;
    EXPECT_FALSE(info.readDriveInfo("e:"));
    EXPECT_EQ(state.currentMedia, before);
}

TEST_F(DriveInfoTest, DriveThatIsNotThereChangesNothing) {
    const base::MediaInfo before = goodReading();
    EXPECT_FALSE(info.readDriveInfo("x:"));
    EXPECT_FALSE(info.readDriveInfo(""));
    EXPECT_EQ(state.currentMedia, before);
}

TEST_F(DriveInfoTest, MissingServiceIsAFailedReading) {
    const base::MediaInfo before = goodReading();
    drives.fileSystemObjectFails = true;
    EXPECT_FALSE(info.readDriveInfo("d:"));
    EXPECT_EQ(state.currentMedia, before);
}

TEST_F(DriveInfoTest, WithoutAnArchiveLabelAndLetterChangeAndTheNameIsEmptied) {
    base::MediaInfo expected = goodReading();
    drives.add('e', "OTHER", 1).totalBytes = 99 * mb;
    state.archiveName.clear();
    state.archiveFolder.clear();
    clock.now.wYear = 2050;
    EXPECT_FALSE(info.readDriveInfo("e:"));
    expected.mediaLabel = "OTHER";
    expected.driveLetter = "E";
    expected.mediaName = "";
    EXPECT_EQ(state.currentMedia, expected);
}

TEST_F(DriveInfoTest, ArchiveThatCannotBeOpenedIsAFailedReading) {
    files.write("/archives/test.mdb", "not a database at all");
    base::MediaInfo expected;
    expected.mediaLabel = "MY DISK";
    expected.driveLetter = "D";
    EXPECT_FALSE(info.readDriveInfo("d:"));
    EXPECT_EQ(state.currentMedia, expected);
}

TEST_F(DriveInfoTest, FailedDiskSpaceQueryKeepsTheSizesOfTheReadingBefore) {
    goodReading();
    drives.add('e', "OTHER", 1).spaceKnown = false;
    EXPECT_FALSE(info.readDriveInfo("e:"));
    EXPECT_EQ(state.currentMedia.mediaType, "Removable");
    EXPECT_EQ(state.currentMedia.mediaSize, 650);
    EXPECT_EQ(state.currentMedia.mediaFreeSpace, 12);
}

TEST_F(DriveInfoTest, EntryThatBeginsWithABracketIsAFailedReading) {
    EXPECT_FALSE(info.readDriveInfo("[X]"));
}
