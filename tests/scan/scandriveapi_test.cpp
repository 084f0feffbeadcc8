#include "scan/scandriveapi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/program_state.h"
#include "scan/adjustpaths.h"
#include "scan/scan_list.h"
#include "tests/support/fake_disk.h"

namespace {

using Lines = std::vector<std::string>;

/// Keeps the captions and does at each entry what a test wants to happen.
class Window : public scan::ProgressDisplay, public base::PendingEvents {
  public:
    void setDisplayProgress(const std::string& caption) override { captions.push_back(caption); }
    void runPendingEvents() override {
        if (atEvents) {
            atEvents();
        }
    }

    Lines captions;
    std::function<void()> atEvents;
};

/// A folder of numbered names that is not kept anywhere, for walks beyond the desktop's limits.
class EndlessFolder : public platform::DirectoryLister {
  public:
    EndlessFolder(std::int64_t count, std::uint32_t attributes)
        : count_(count), attributes_(attributes) {}

    std::unique_ptr<platform::Listing> findFirst(std::string_view pattern) override {
        return pattern == "d:\\*" ? std::make_unique<Names>(count_) : nullptr;
    }
    std::uint32_t attributes(std::string_view /*path*/) override { return attributes_; }
    std::string typeName(std::string_view /*path*/) override { return "Thing"; }
    platform::FileTime fileTimeToLocalFileTime(platform::FileTime time) override { return time; }

  private:
    class Names : public platform::Listing {
      public:
        explicit Names(std::int64_t count) : left_(count) {}
        bool next(platform::FindData& data) override {
            if (left_ == 0) {
                return false;
            }
            data.cFileName = "n" + std::to_string(left_--);
            return true;
        }

      private:
        std::int64_t left_;
    };

    std::int64_t count_;
    std::uint32_t attributes_;
};

/// A destination and progress without 16-bit count, as the companion's.
class Counter : public scan::ScanDestination, public scan::ScanProgress {
  public:
    std::int64_t store(const base::ScanEntry& entry, scan::SizeFit fit) override {
        last = entry;
        lastFit = fit;
        return ++count;
    }
    void showScanProgress(std::int64_t shown) override { lastShown = shown; }

    std::int64_t count = 0;
    std::int64_t lastShown = 0;
    base::ScanEntry last;
    scan::SizeFit lastFit = scan::SizeFit::Exact;
};

class WalkerTest : public testing::Test {
  protected:
    WalkerTest() {
        state.currentMedia.mediaId = 12;
        state.currentMedia.driveLetter = "D";
        disk.addFolder("d:\\");
    }

    /// A scan as the scan window starts it.
    void scanDrive(const std::string& drive = "d:") {
        state.scanCount = 0;
        support::FakeDirectoryLister lister(disk);
        scan::Walker(state.currentMedia, lister, list, progress, scan::WalkLimits::Checked)
            .scanDrive(drive);
    }

    scan::WideningTotal walk(const std::string& path, std::string_view pattern = "*") {
        support::FakeDirectoryLister lister(disk);
        scan::Walker walker(state.currentMedia, lister, list, progress, scan::WalkLimits::Checked);
        return walker.walkFolder(path, pattern, fileCount, folderCount);
    }

    Lines names() const {
        Lines result;
        for (const base::ScanEntry& entry : state.scanList.elements()) {
            result.push_back(entry.FileName);
        }
        return result;
    }

    Lines operationsOf(const std::string& kind) const {
        Lines result;
        std::copy_if(disk.operations.begin(), disk.operations.end(), std::back_inserter(result),
                     [&](const std::string& line) { return line.starts_with(kind + " "); });
        return result;
    }

    support::FakeDisk disk;
    base::ProgramState state;
    Window window;
    scan::ScanList list{state};
    scan::WindowProgress progress{window, window};
    base::Int32 fileCount;
    base::Int32 folderCount;
};

constexpr std::uint64_t twoGiB = 0x80000000ULL;
constexpr std::uint64_t fourGiB = 0x100000000ULL;

}  // namespace

TEST_F(WalkerTest, EmptyDriveKeepsTheEntriesOfTheScanBefore) {
    disk.addFile("d:\\old.txt");
    scanDrive();
    disk.remove("d:\\old.txt");
    scanDrive();
    EXPECT_EQ(state.scanCount, 0);
    EXPECT_EQ(names(), Lines{"old.txt"});
}

TEST_F(WalkerTest, EmptyDriveLeavesAListThatWasNeverGrownWithoutBounds) {
    scanDrive();
    EXPECT_TRUE(state.scanList.neverGrown());
}

TEST_F(WalkerTest, FirstEntryCutsTheListOfTheScanBefore) {
    disk.addFile("d:\\a");
    disk.addFile("d:\\b");
    scanDrive();
    disk.remove("d:\\a");
    scanDrive();
    EXPECT_EQ(names(), Lines{"b"});
}

TEST_F(WalkerTest, DotNamesNeverBecomeEntries) {
    disk.addFolder("d:\\sub");
    disk.addFile("d:\\sub\\f");
    ASSERT_TRUE(disk.listsDotEntries);
    scanDrive();
    EXPECT_EQ(names(), (Lines{"sub", "f"}));
}

TEST_F(WalkerTest, AttributesOfDotNamesAreAskedInTheFilePassOnly) {
    disk.addFile("d:\\f");
    disk.recording = true;
    scanDrive();
    EXPECT_EQ(operationsOf("attributes"), (Lines{"attributes d:\\f", "attributes d:\\.",
                                                 "attributes d:\\..", "attributes d:\\f"}));
}

TEST_F(WalkerTest, ListsSubfoldersThenFilesThenTheContentsOfEachSubfolder) {
    disk.addFile("d:\\f");
    disk.addFolder("d:\\b");
    disk.addFile("d:\\b\\b1");
    disk.addFolder("d:\\b\\bb");
    disk.addFile("d:\\b\\bb\\deep");
    disk.addFile("d:\\a\\a1");
    scanDrive();
    EXPECT_EQ(names(), (Lines{"b", "a", "f", "bb", "b1", "deep", "a1"}));
}

TEST_F(WalkerTest, CountsFilesAndFoldersOfAllLevels) {
    disk.addFile("d:\\f", 10);
    disk.addFile("d:\\a\\g", 20);
    disk.addFile("d:\\a\\b\\h", 30);
    const scan::WideningTotal total = walk("d:");
    EXPECT_EQ(fileCount, 3);
    EXPECT_EQ(folderCount, 2);
    EXPECT_EQ(total.value(), 60);
    EXPECT_FALSE(total.isDouble());
}

TEST_F(WalkerTest, AddsToTheCountsThatItIsGiven) {
    disk.addFile("d:\\f");
    disk.addFolder("d:\\a");
    fileCount = 100;
    folderCount = 200;
    walk("d:");
    EXPECT_EQ(fileCount, 101);
    EXPECT_EQ(folderCount, 201);
}

TEST_F(WalkerTest, AppendsTheSeparatorOnlyWhereItIsMissing) {
    disk.addFile("d:\\sub\\f");
    disk.recording = true;
    walk("d:\\sub");
    walk("d:\\sub\\");
    EXPECT_EQ(operationsOf("findFirst"), Lines({"findFirst d:\\sub\\*", "findFirst d:\\sub\\*",
                                                "findFirst d:\\sub\\*", "findFirst d:\\sub\\*"}));
}

TEST_F(WalkerTest, PatternChoosesFilesButFoldersAreAllFollowed) {
    disk.addFile("d:\\a.txt");
    disk.addFile("d:\\a.doc");
    disk.addFile("d:\\sub\\b.txt");
    disk.addFile("d:\\sub\\b.doc");
    walk("d:", "*.txt");
    EXPECT_EQ(names(), (Lines{"sub", "a.txt", "b.txt"}));
}

TEST_F(WalkerTest, FileEntryHasEveryField) {
    support::FakeEntry& file = disk.addFile("d:\\dir\\photo.jpg", 1234);
    file.created = support::timeOf(2001, 3, 7, 9, 5, 0);
    file.lastWrite = support::timeOf(2002, 11, 30, 23, 59, 58);
    file.typeName = "JPEG image";
    scanDrive();
    base::ScanEntry expected;
    expected.FileName = "photo.jpg";
    expected.path = "12:\\dir";
    expected.Folder = "file";
    expected.Type = "JPEG image";
    expected.Size = 1234;
    expected.DateCreated = "03/07/2001 09:05:00";
    expected.DateModified = "11/30/2002 23:59:58";
    expected.mediaId = 12;
    EXPECT_EQ(state.scanList[2], expected);
}

TEST_F(WalkerTest, FolderEntryHasNoSizeAndThePathOfTheFolderThatHoldsIt) {
    support::FakeEntry& folder = disk.addFolder("d:\\dir\\sub");
    folder.size = 4096;
    folder.created = support::timeOf(2001, 3, 7, 9, 5, 0);
    folder.lastWrite = support::timeOf(2001, 3, 8, 10, 6, 1);
    scanDrive();
    base::ScanEntry expected;
    expected.FileName = "sub";
    expected.path = "12:\\dir";
    expected.Folder = "folder";
    expected.Type = "Folder";
    expected.DateCreated = "03/07/2001 09:05:00";
    expected.DateModified = "03/08/2001 10:06:01";
    expected.mediaId = 12;
    EXPECT_EQ(state.scanList[2], expected);
}

TEST_F(WalkerTest, NothingOfAFileIsLeftInTheFolderThatFollows) {
    disk.addFile("d:\\f", 77).typeName = "Something";
    disk.addFolder("d:\\a\\b").typeName = "";
    scanDrive();
    EXPECT_EQ(names(), (Lines{"a", "f", "b"}));
    EXPECT_EQ(state.scanList[3].Size, 0);
    EXPECT_EQ(state.scanList[3].Type, "");
}

TEST_F(WalkerTest, TimesAreLocal) {
    disk.localOffset = 2LL * 3600 * 10'000'000;
    disk.addFile("d:\\f").created = support::timeOf(2001, 3, 7, 23, 5, 0);
    scanDrive();
    EXPECT_EQ(state.scanList[1].DateCreated, "03/08/2001 01:05:00");
}

TEST_F(WalkerTest, EveryPathStartsWithTheMediaIdAndAColon) {
    disk.addFile("d:\\f");
    disk.addFile("d:\\a\\b\\g");
    disk.addFolder("d:\\a\\c");
    scanDrive();
    ASSERT_EQ(state.scanCount, 5);
    for (const base::ScanEntry& entry : state.scanList.elements()) {
        EXPECT_TRUE(entry.path.starts_with("12:")) << entry.path;
    }
}

TEST_F(WalkerTest, RootEntriesHaveThePathOfTheMediumAlone) {
    disk.addFile("d:\\f");
    disk.addFolder("d:\\a");
    scanDrive();
    EXPECT_EQ(state.scanList[1].path, "12:");
    EXPECT_EQ(state.scanList[2].path, "12:");
}

TEST_F(WalkerTest, NameEndsBeforeItsPadding) {
    support::FakeEntry& file = disk.addFile("d:\\f.txt");
    file.padding = 5;
    file.behindPadding = "remains";
    support::FakeEntry& folder = disk.addFolder("d:\\sub");
    folder.padding = 3;
    disk.addFile("d:\\sub\\inner");
    scanDrive();
    EXPECT_EQ(names(), (Lines{"sub", "f.txt", "inner"}));
}

TEST_F(WalkerTest, TypeIsTakenWholeWithItsPadding) {
    const std::string padded = std::string("Text Document") + std::string(67, '\0');
    disk.addFile("d:\\f").typeName = padded;
    scanDrive();
    EXPECT_EQ(state.scanList[1].Type, padded);
    EXPECT_EQ(state.scanList[1].Type.size(), 80U);
}

// Sizes: low half minus high half.

TEST_F(WalkerTest, SizeBelowTwoGiBIsExact) {
    disk.addFile("d:\\f", twoGiB - 1);
    scanDrive();
    EXPECT_EQ(state.scanList[1].Size, 2147483647);
}

TEST_F(WalkerTest, SizeOfExactlyTwoGiBIsTheSmallestNumber) {
    disk.addFile("d:\\f", twoGiB);
    scanDrive();
    EXPECT_EQ(state.scanList[1].Size, -2147483647 - 1);
}

TEST_F(WalkerTest, SizeJustBelowFourGiBIsMinusOne) {
    disk.addFile("d:\\f", fourGiB - 1);
    scanDrive();
    EXPECT_EQ(state.scanList[1].Size, -1);
}

TEST_F(WalkerTest, SizeOfFourGiBIsMinusOne) {
    disk.addFile("d:\\f", fourGiB);
    scanDrive();
    EXPECT_EQ(state.scanList[1].Size, -1);
}

TEST_F(WalkerTest, SizeAboveFourGiBIsTheLowHalfLessTheHighHalf) {
    disk.addFile("d:\\f", 3 * fourGiB + 1000);
    scanDrive();
    EXPECT_EQ(state.scanList[1].Size, 997);
}

TEST_F(WalkerTest, SizeThatLeaves32BitsFailsTheScan) {
    disk.addFile("d:\\a", 5);
    disk.addFile("d:\\f", fourGiB + twoGiB);
    disk.addFile("d:\\z", 5);
    EXPECT_THROW(scanDrive(), base::OverflowFailure);
    EXPECT_EQ(names(), (Lines{"a", "f"}));
}

TEST_F(WalkerTest, EntryWhoseSizeFailedStaysInTheListWithoutSizeAndType) {
    disk.addFile("d:\\a", 5);
    disk.addFile("d:\\f", fourGiB + twoGiB).created = support::timeOf(2001, 3, 7, 9, 5, 0);
    EXPECT_THROW(scanDrive(), base::OverflowFailure);
    base::ScanEntry expected;
    expected.FileName = "f";
    expected.path = "12:";
    expected.Folder = "file";
    expected.DateCreated = "03/07/2001 09:05:00";
    expected.DateModified = "01/01/1601 00:00:00";
    expected.mediaId = 12;
    ASSERT_EQ(state.scanCount, 2);
    EXPECT_EQ(state.scanList[2], expected);
    EXPECT_EQ(window.captions, Lines{"Scanning:  File 1"});
}

TEST_F(WalkerTest, HighHalfOfTheSmallestNumberFailsBeforeTheListGrows) {
    disk.addFile("d:\\f", twoGiB << 32);
    EXPECT_THROW(scanDrive(), base::OverflowFailure);
    EXPECT_EQ(state.scanCount, 0);
    EXPECT_TRUE(state.scanList.neverGrown());
}

TEST_F(WalkerTest, FailureOfASizeNamesTheFile) {
    disk.addFile("d:\\sub\\big.bin", fourGiB + twoGiB);
    try {
        scanDrive();
        FAIL() << "no failure";
    } catch (const base::OverflowFailure& failure) {
        EXPECT_TRUE(failure.text().starts_with("d:\\sub\\big.bin: ")) << failure.text();
    }
}

TEST_F(WalkerTest, TotalWidensToADouble) {
    disk.addFile("d:\\a", twoGiB - 1);
    disk.addFile("d:\\sub\\b", twoGiB - 1);
    const scan::WideningTotal total = walk("d:");
    EXPECT_TRUE(total.isDouble());
    EXPECT_EQ(total.value(), 4294967294.0);
}

TEST_F(WalkerTest, TotalCountsTheHighHalfWithMinusOne) {
    disk.addFile("d:\\a", 3 * fourGiB + 1000);
    disk.addFile("d:\\b", 10);
    EXPECT_EQ(walk("d:").value(), 1007);
}

TEST_F(WalkerTest, LiftedLimitsCutASizeToItsLowBitsAndSaySo) {
    disk.addFile("d:\\f", 2 * fourGiB + twoGiB);
    support::FakeDirectoryLister lister(disk);
    Counter counter;
    scan::Walker(state.currentMedia, lister, counter, counter, scan::WalkLimits::Lifted)
        .scanDrive("d:");
    EXPECT_EQ(counter.last.Size, 2147483646);
    EXPECT_EQ(counter.lastFit, scan::SizeFit::Cut);
    EXPECT_EQ(counter.last.Type, "File");
}

TEST_F(WalkerTest, LiftedLimitsCutAHighHalfOfTheSmallestNumber) {
    disk.addFile("d:\\f", (twoGiB << 32) + 5);
    support::FakeDirectoryLister lister(disk);
    Counter counter;
    scan::Walker walker(state.currentMedia, lister, counter, counter, scan::WalkLimits::Lifted);
    const scan::WideningTotal total = walker.walkFolder("d:", "*", fileCount, folderCount);
    EXPECT_EQ(counter.last.Size, -2147483643);
    EXPECT_EQ(counter.lastFit, scan::SizeFit::Cut);
    EXPECT_EQ(total.value(), 2147483653.0);
}

TEST_F(WalkerTest, LiftedLimitsSayOfASizeWithAHighHalfThatItIsCutThoughItFits) {
    disk.addFile("d:\\f", 3 * fourGiB + 1000);
    support::FakeDirectoryLister lister(disk);
    Counter counter;
    scan::Walker(state.currentMedia, lister, counter, counter, scan::WalkLimits::Lifted)
        .scanDrive("d:");
    EXPECT_EQ(counter.last.Size, 997);
    EXPECT_EQ(counter.lastFit, scan::SizeFit::Cut);
}

TEST_F(WalkerTest, LiftedLimitsLeaveASizeWithoutAHighHalfExact) {
    for (const std::uint64_t size : {std::uint64_t{7}, twoGiB - 1, twoGiB, fourGiB - 1}) {
        support::FakeDisk one;
        one.addFile("d:\\f", size);
        support::FakeDirectoryLister lister(one);
        Counter counter;
        scan::Walker(state.currentMedia, lister, counter, counter, scan::WalkLimits::Lifted)
            .scanDrive("d:");
        EXPECT_EQ(static_cast<std::uint32_t>(counter.last.Size), size);
        EXPECT_EQ(counter.lastFit, scan::SizeFit::Exact);
    }
}

// What cannot be read.

TEST_F(WalkerTest, DriveThatCannotBeListedHasNoEntries) {
    scanDrive("x:");
    EXPECT_EQ(state.scanCount, 0);
}

TEST_F(WalkerTest, FolderThatCannotBeListedIsAnEntryWithoutContents) {
    disk.addFile("d:\\closed\\hidden");
    disk.at("d:\\closed").listable = false;
    disk.addFile("d:\\f");
    scanDrive();
    EXPECT_EQ(names(), (Lines{"closed", "f"}));
}

TEST_F(WalkerTest, NameWithoutAttributesCountsAsAnEmptyFolder) {
    disk.addFile("d:\\gone", 99).attributesKnown = false;
    disk.addFile("d:\\f");
    scanDrive();
    EXPECT_EQ(names(), (Lines{"gone", "f"}));
    EXPECT_EQ(state.scanList[1].Folder, "folder");
    EXPECT_EQ(state.scanList[1].Size, 0);
}

TEST_F(WalkerTest, OtherAttributesMakeNoFolder) {
    disk.addFile("d:\\f").extraAttributes = 0x27;
    scanDrive();
    EXPECT_EQ(state.scanList[1].Folder, "file");
}

TEST_F(WalkerTest, ListingThatFailsInTheSecondPassOnlyLeavesTheFilesOut) {
    disk.addFolder("d:\\a");
    disk.addFile("d:\\f");
    disk.addFile("d:\\a\\g");
    disk.beforeOperation = [&](std::string_view operation, std::string_view path) {
        if (operation == "findFirst" && path == "d:\\*" && disk.listings.at("d:\\*") == 2) {
            disk.at("d:\\").listable = false;
        }
    };
    scanDrive();
    EXPECT_EQ(names(), (Lines{"a", "g"}));
}

TEST_F(WalkerTest, FolderThatVanishesInMidWalkHasNoContents) {
    disk.addFile("d:\\a\\x");
    disk.addFile("d:\\b\\y");
    window.atEvents = [&] {
        if (state.scanCount == 2) {
            disk.remove("d:\\b");
        }
    };
    scanDrive();
    EXPECT_EQ(names(), (Lines{"a", "b", "x"}));
}

TEST_F(WalkerTest, NoListingIsOpenWhileSubfoldersAreWalked) {
    disk.addFile("d:\\a\\x");
    disk.recording = true;
    scanDrive();
    const auto& operations = disk.operations;
    const auto descent = std::find(operations.begin(), operations.end(), "findFirst d:\\a\\*");
    ASSERT_NE(descent, operations.end());
    EXPECT_EQ(std::find(descent, operations.end(), "next d:\\*"), operations.end());
}

// Progress and limits.

TEST_F(WalkerTest, ProgressIsShownForEveryEntry) {
    disk.addFolder("d:\\a");
    disk.addFile("d:\\f");
    scanDrive();
    EXPECT_EQ(window.captions, (Lines{"Scanning:  File 1", "Scanning:  File 2"}));
}

TEST_F(WalkerTest, Entry32768EndsTheDesktopsScanAndStaysInTheList) {
    EndlessFolder lister(40000, 0);
    scan::Walker walker(state.currentMedia, lister, list, progress, scan::WalkLimits::Checked);
    EXPECT_THROW(walker.scanDrive("d:"), base::OverflowFailure);
    EXPECT_EQ(state.scanCount, 32768);
    EXPECT_EQ(state.scanList.upperBound(), 32768);
    EXPECT_EQ(window.captions.size(), 32767U);
}

TEST_F(WalkerTest, EntryCountOf32767IsFine) {
    EndlessFolder lister(32767, 0);
    scan::Walker walker(state.currentMedia, lister, list, progress, scan::WalkLimits::Checked);
    walker.scanDrive("d:");
    EXPECT_EQ(state.scanCount, 32767);
}

TEST_F(WalkerTest, Subfolder32768OfOneFolderFailsBeforeItsEntry) {
    EndlessFolder lister(40000, platform::fileAttributeDirectory);
    Counter counter;
    scan::Walker walker(state.currentMedia, lister, counter, counter, scan::WalkLimits::Checked);
    EXPECT_THROW(walker.walkFolder("d:", "*", fileCount, folderCount), base::OverflowFailure);
    EXPECT_EQ(counter.count, 32767);
    EXPECT_EQ(folderCount, 32768);
}

TEST_F(WalkerTest, LiftedLimitsTakeAnyNumberOfSubfoldersAndFiles) {
    Counter counter;
    EndlessFolder folders(100000, platform::fileAttributeDirectory);
    scan::Walker(state.currentMedia, folders, counter, counter, scan::WalkLimits::Lifted)
        .scanDrive("d:");
    EXPECT_EQ(counter.lastShown, 100000);
    EndlessFolder files(100000, 0);
    scan::Walker(state.currentMedia, files, counter, counter, scan::WalkLimits::Lifted)
        .scanDrive("d:");
    EXPECT_EQ(counter.lastShown, 200000);
}

TEST_F(WalkerTest, FolderCountBeyond32BitsFails) {
    disk.addFolder("d:\\a");
    folderCount = 2147483647;
    EXPECT_THROW(walk("d:"), base::OverflowFailure);
    EXPECT_TRUE(state.scanList.neverGrown());
}

TEST_F(WalkerTest, FolderAtTheRootFailsWhereTheCaseOfTheLetterMatches) {
    disk.addFolder("d:\\a");
    state.currentMedia.driveLetter = "d";
    EXPECT_THROW(scanDrive(), base::InvalidArgumentFailure);
    EXPECT_EQ(names(), Lines{"a"});
    EXPECT_EQ(state.scanList[1].path, "");
    EXPECT_EQ(state.scanList[1].Type, "");
}

TEST_F(WalkerTest, FilesAtTheRootAreFineWhereTheCaseOfTheLetterMatches) {
    disk.addFile("d:\\f");
    state.currentMedia.driveLetter = "d";
    scanDrive();
    EXPECT_EQ(state.scanList[1].path, "12:");
}

// Events in the middle of a walk.

TEST_F(WalkerTest, NestedScanBeginsTheListAgainAndTheOuterOneGoesOnBehindIt) {
    disk.addFile("d:\\a");
    disk.addFile("d:\\b");
    disk.addFile("d:\\c");
    bool nested = false;
    window.atEvents = [&] {
        if (state.scanCount == 2 && !nested) {
            nested = true;
            scanDrive();
        }
    };
    scanDrive();
    EXPECT_EQ(names(), (Lines{"a", "b", "c", "c"}));
    EXPECT_EQ(state.scanCount, 4);
}

TEST_F(WalkerTest, NestedScanOfAnEmptyDriveLetsTheOuterOneCutTheList) {
    disk.addFile("d:\\a");
    disk.addFile("d:\\b");
    disk.addFile("d:\\c");
    disk.addFolder("e:\\");
    bool nested = false;
    window.atEvents = [&] {
        if (state.scanCount == 2 && !nested) {
            nested = true;
            scanDrive("e:");
        }
    };
    scanDrive();
    EXPECT_EQ(names(), Lines{"c"});
}

TEST_F(WalkerTest, MediumThatChangesInMidWalkShowsInTheEntriesThatFollow) {
    disk.addFile("d:\\s\\a");
    disk.addFile("d:\\s\\b");
    disk.addFile("d:\\s\\c");
    window.atEvents = [&] {
        if (state.scanCount == 2) {
            state.currentMedia.mediaId = 13;
        } else if (state.scanCount == 3) {
            state.currentMedia.driveLetter = "d";
        }
    };
    scanDrive();
    EXPECT_EQ(state.scanList[2].path, "12:\\s");
    EXPECT_EQ(state.scanList[3].path, "13:\\s");
    EXPECT_EQ(state.scanList[3].mediaId, 13);
    EXPECT_EQ(state.scanList[4].path, "13:s");
}

TEST_F(WalkerTest, FailureOutOfEventsEndsTheWalkAndKeepsTheEntries) {
    disk.addFile("d:\\a");
    disk.addFile("d:\\b");
    window.atEvents = [] { throw base::FileFailure("stop"); };
    EXPECT_THROW(scanDrive(), base::FileFailure);
    EXPECT_EQ(names(), Lines{"a"});
}

TEST_F(WalkerTest, DeepTreesAreWalkedToTheEnd) {
    std::string path = "d:";
    for (int depth = 0; depth < 300; ++depth) {
        path += "\\x";
    }
    disk.addFile(path + "\\f");
    scanDrive();
    EXPECT_EQ(state.scanCount, 301);
    EXPECT_EQ(state.scanList[301].FileName, "f");
}
