#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "tests/explore/explore_fixture.h"

// Clicks on nodes: reading a medium, its folder nodes, and the list of files.

namespace {

using base::MessageAnswer;
using support::file;
using support::folder;
using support::medium;
using support::Texts;

class NodeClick : public support::ExploreTest {
  protected:
    /// An explored archive of two media.
    void exploreTwoMedia() {
        store({medium(1, "One", "A"), medium(2, "Two", "B")},
              {folder("1:", "photos"), file("1:", "root.txt"), file("1:\\photos", "a.jpg"),
               file("1:\\photos", "b.jpg"), file("1:\\photos\\2001", "a.jpg"),
               folder("1:\\photos", "2001"), folder("2:", "music"), file("2:", "root.txt"),
               file("2:\\music", "c.mp3")});
        exploring.exploreArchive();
        log.clear();
    }
    const Texts nodesOfOne{"1:", "2:", "1: > 1:\\photos", "1:\\photos > 1:\\photos\\2001"};
};

TEST_F(NodeClick, TheFirstClickOnAMediumReadsItAndAddsItsFolders) {
    exploreTwoMedia();
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, nodesOfOne);
    EXPECT_EQ(tree.texts(), (Texts{"1: One(A)", "2: Two(B)", "photos", "2001"}));
    EXPECT_EQ(tree.nodes[2].image, "folder");
    EXPECT_EQ(tree.nodes[2].selectedImage, "folderopen");
    EXPECT_TRUE(state.mediaList[1].loaded);
    EXPECT_FALSE(state.mediaList[2].loaded);
    EXPECT_EQ(log, (Texts{"show loading", "hide loading"}));
}

TEST_F(NodeClick, ALoadingWindowIsThereWhileTheMediumIsRead) {
    exploreTwoMedia();
    int rounds = 0;
    events.atEvents = [&] {
        ++rounds;
        EXPECT_TRUE(loadingShown);
        EXPECT_EQ(list.rows.size(), 0U);
        EXPECT_EQ(tree.lines.size(), 2U);
        EXPECT_FALSE(state.mediaList[1].loaded);
    };
    exploring.clickNode("1:");
    EXPECT_GE(rounds, 6);  // after each of its rows
    EXPECT_FALSE(loadingShown);
}

TEST_F(NodeClick, TheLoadingWindowGoesWithTheFoldersThereAndBeforeTheListIsFilled) {
    exploreTwoMedia();
    explore::ExploreCommands watched = commands();
    bool hidden = false;
    watched.hideLoading = [&] {
        hidden = true;
        EXPECT_EQ(tree.lines, nodesOfOne);
        EXPECT_TRUE(state.mediaList[1].loaded);
        EXPECT_EQ(list.rows.size(), 0U);
    };
    explore::ExploreArchive watching(state, data, messages, tree, list, watched);
    watching.clickNode("1:");
    EXPECT_TRUE(hidden);
    EXPECT_EQ(list.names(), Texts{"root.txt"});
}

TEST_F(NodeClick, FoldersAreReadBeforeFilesAndTheMediumCountsAsReadBeforeItsNodesCome) {
    exploreTwoMedia();
    bool filesFirst = false;
    events.atEvents = [&] { filesFirst = filesFirst || state.archiveFolders.neverGrown(); };
    int children = 0;
    tree.atChild = [&] {
        ++children;
        EXPECT_TRUE(state.mediaList[1].loaded);
    };
    exploring.clickNode("1:");
    EXPECT_FALSE(filesFirst);
    EXPECT_EQ(children, 2);
}

TEST_F(NodeClick, ASecondClickReadsNothingAndOnlyFillsTheList) {
    exploreTwoMedia();
    exploring.clickNode("1:");
    log.clear();
    list.rows = {{"something else"}};
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, nodesOfOne);
    EXPECT_EQ(list.names(), Texts{"root.txt"});
    EXPECT_EQ(log, Texts{});
}

TEST_F(NodeClick, AMediumListsTheFilesOfItsRootFolder) {
    exploreTwoMedia();
    exploring.clickNode("2:");
    EXPECT_EQ(list.names(), Texts{"root.txt"});
}

TEST_F(NodeClick, AFolderListsTheFilesDirectlyInIt) {
    exploreTwoMedia();
    exploring.clickNode("1:");
    exploring.clickNode("1:\\photos");
    EXPECT_EQ(list.names(), (Texts{"a.jpg", "b.jpg"}));
    exploring.clickNode("1:\\photos\\2001");
    EXPECT_EQ(list.names(), Texts{"a.jpg"});
    EXPECT_EQ(list.rows[0][1], "1:\\photos\\2001");
}

TEST_F(NodeClick, PathsAreComparedExactly) {
    store({medium(1, "One", "A")},
          {folder("1:", "Photos"), file("1:\\photos", "a"), file("1:\\Photos", "b"),
           file("1:\\Photos\\", "c"), file("1:\\Photos ", "d"), file("1:\\Photos\\x", "e")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    exploring.clickNode("1:\\Photos");
    EXPECT_EQ(list.names(), Texts{"b"});
}

TEST_F(NodeClick, AFolderWithoutFilesGivesAnEmptyList) {
    store({medium(1, "One", "A")}, {folder("1:", "empty"), file("1:", "a")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    exploring.clickNode("1:\\empty");
    EXPECT_EQ(list.names(), Texts{});
}

TEST_F(NodeClick, ARowHoldsAllTenTexts) {
    base::ScanEntry entry = file("1:", "a.jpg");
    entry.keywords = "sea,sun";
    entry.Notes1 = "first";
    entry.Notes2 = "second";
    entry.Size = -5;
    store({medium(1, "One", "A")}, {entry, file("1:", "b.jpg")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    ASSERT_EQ(list.rows.size(), 2U);
    EXPECT_EQ(list.rows[0], (Texts{"a.jpg", "1:", "file", "JPEG image", "sea,sun", "first",
                                   "second", "07/14/2003 18:05:11", "07/14/2003 18:05:12", "-5"}));
    EXPECT_EQ(list.rows[1][4], "");
    EXPECT_EQ(list.rows[1][9], "0");
}

TEST_F(NodeClick, FoldersNeverAppearInTheList) {
    store({medium(1, "One", "A")}, {folder("1:", "photos"), file("1:", "a")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    EXPECT_EQ(list.names(), Texts{"a"});
}

TEST_F(NodeClick, AMediumReadEarlierIsFilledFromTheOneReadLast) {
    exploreTwoMedia();
    exploring.clickNode("1:");
    exploring.clickNode("2:");
    exploring.clickNode("1:");
    EXPECT_EQ(list.names(), Texts{});
    exploring.clickNode("2:\\music");
    EXPECT_EQ(list.names(), Texts{"c.mp3"});
    EXPECT_EQ(log.size(), 4U);
}

TEST_F(NodeClick, AmongMediaOfOneIdTheLastOnesFlagCounts) {
    exploreTwoMedia();
    state.mediaList.append(state.mediaList[1]);
    state.mediaList[1].loaded = true;
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, nodesOfOne);
    EXPECT_TRUE(state.mediaList[3].loaded);
    state.mediaList[1].loaded = false;
    log.clear();
    exploring.clickNode("1:");
    EXPECT_EQ(log, Texts{});
}

TEST_F(NodeClick, FoldersComeAfterTheFoldersThatHoldThem) {
    store({medium(3, "Three", "")},
          {folder("3:\\a\\b", "c"), folder("3:\\a", "b"), folder("3:", "a"), folder("3:", "z")});
    exploring.exploreArchive();
    exploring.clickNode("3:");
    EXPECT_EQ(tree.lines.size(), 5U);
    EXPECT_TRUE(tree.has("3:\\a\\b\\c"));
}

TEST_F(NodeClick, AFolderWhoseParentIsMissingEndsTheTreeInSilence) {
    store({medium(1, "One", "")},
          {folder("1:", "a"), folder("1:\\lost", "b"), folder("1:\\a", "c"), file("1:", "x")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "1: > 1:\\a"}));
    EXPECT_EQ(list.names(), Texts{"x"});
    EXPECT_TRUE(state.mediaList[1].loaded);
}

TEST_F(NodeClick, AFolderThatIsThereTwiceEndsTheTreeInSilence) {
    store({medium(1, "One", "")}, {folder("1:", "a"), folder("1:", "a"), folder("1:", "b")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "1: > 1:\\a"}));
}

TEST_F(NodeClick, KeysThatDifferInCaseOnlyAreTwo) {
    store({medium(1, "One", "")}, {folder("1:", "a"), folder("1:", "A"), folder("1:\\A", "b")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "1: > 1:\\a", "1: > 1:\\A", "1:\\A > 1:\\A\\b"}));
}

TEST_F(NodeClick, ANameWithAColonIsNoMedium) {
    store({medium(1, "One", "")}, {folder("1:", "2:"), file("1:\\2:", "x")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    log.clear();
    exploring.clickNode("1:\\2:");
    EXPECT_EQ(list.names(), Texts{"x"});
    EXPECT_EQ(log, Texts{});
}

TEST_F(NodeClick, AMediumWithoutRecordsHasNoneOfTheOneBefore) {
    exploreTwoMedia();
    exploring.clickNode("1:");
    openNewArchive("second.mdb");
    store({medium(1, "One", ""), medium(2, "Bare", "")}, {folder("1:", "other")});
    exploring.exploreArchive();
    exploring.clickNode("2:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "2:"}));
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "2:", "1: > 1:\\other"}));
    EXPECT_EQ(list.names(), Texts{});
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(NodeClick, TheTreeStaysWhenAnotherArchiveIsOpenedAndReadsFromThatOne) {
    exploreTwoMedia();
    openNewArchive("second.mdb");
    store({medium(1, "Other", "")}, {file("1:", "of the second"), file("2:", "also")});
    exploring.clickNode("1:");
    EXPECT_EQ(tree.texts()[0], "1: One(A)");
    EXPECT_EQ(list.names(), Texts{"of the second"});
}

// Failures

TEST_F(NodeClick, AnArchiveThatIsGoneIsToldOnceAndNotTriedAgain) {
    exploreTwoMedia();
    const std::string there = state.archiveName;
    loseArchive();
    messages.expect(MessageAnswer::Ok);
    exploring.clickNode("1:");
    ASSERT_EQ(messages.asked.size(), 1U);
    EXPECT_EQ(messages.asked[0].title, "Error Accessing Data");
    EXPECT_EQ(
        messages.asked[0].text,
        "There was an error accessing the data, please see the Help file for more information.");
    EXPECT_EQ(messages.asked[0].buttons, base::MessageButtons::Ok);
    EXPECT_EQ(log, (Texts{"show loading", "hide loading"}));
    EXPECT_TRUE(state.mediaList[1].loaded);
    state.archiveName = there;
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "2:"}));
    EXPECT_EQ(list.names(), Texts{});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, nodesOfOne);
    EXPECT_EQ(list.names(), Texts{"root.txt"});
}

TEST_F(NodeClick, WithoutAnOpenArchiveReadingFails) {
    exploreTwoMedia();
    state.archiveName.clear();
    state.archiveFolder.clear();
    messages.expect(MessageAnswer::Ok);
    exploring.clickNode("2:");
    EXPECT_EQ(messages.asked[0], explore::accessErrorMessage());
}

/// An archive of many pages; its first rows are a folder and a file, its last row is a folder.
class DamagedArchive : public NodeClick {
  protected:
    DamagedArchive() {
        std::vector<base::ScanEntry> records = {folder("1:", "photos"), file("1:", "first")};
        for (int i = 0; i < 2000; ++i) {
            records.push_back(file("1:\\photos", "picture " + std::to_string(i)));
        }
        records.push_back(folder("1:", "late"));
        store({medium(1, "One", "")}, records);
        whole = files.read(path);
    }

    /// Makes the places of its rows meaningless on the last page that has rows.
    void spoilLastPageWithRows() {
        constexpr std::size_t pageSize = 4096;
        constexpr std::size_t slotCount = 12;
        std::string bytes = whole;
        std::size_t page = bytes.size() - pageSize;
        while (bytes.compare(page, 2, "\x01\x01") != 0 || bytes[page + slotCount] == 0) {
            page -= pageSize;
        }
        bytes.replace(page + slotCount + 2, 2, "\x01\x00", 2);
        files.write(path, bytes);
    }

    const std::string path = "/archives/test.mdb";
    std::string whole;
};

TEST_F(DamagedArchive, WhatCouldBeReadIsShown) {
    exploring.exploreArchive();
    spoilLastPageWithRows();
    messages.expect(MessageAnswer::Ok);
    exploring.clickNode("1:");
    ASSERT_EQ(messages.asked.size(), 1U);
    EXPECT_EQ(messages.asked[0], explore::accessErrorMessage());
    EXPECT_FALSE(loadingShown);
    EXPECT_TRUE(state.mediaList[1].loaded);
    EXPECT_EQ(tree.lines, (Texts{"1:", "1: > 1:\\photos"}));
    EXPECT_EQ(list.names(), Texts{"first"});
    exploring.clickNode("1:\\photos");
    EXPECT_GT(list.rows.size(), 100U);
    EXPECT_LT(list.rows.size(), 2000U);
}

/// Takes any message and keeps it.
struct PatientUser : base::MessageBox {
    MessageAnswer show(const base::Message& message) override {
        asked.push_back(message);
        return MessageAnswer::Ok;
    }
    std::vector<base::Message> asked;
};

TEST_F(DamagedArchive, CutAnywhereItIsReadAsFarAsItGoesOrTold) {
    for (std::size_t size = 0; size < whole.size(); size += whole.size() / 40) {
        PatientUser user;
        explore::ExploreArchive patient(state, data, user, tree, list, commands());
        files.write(path, whole);
        patient.exploreArchive();
        files.write(path, whole.substr(0, size));
        patient.clickNode("1:");
        EXPECT_FALSE(loadingShown) << size;
        EXPECT_TRUE(state.mediaList[1].loaded) << size;
        EXPECT_LE(user.asked.size(), 1U) << size;
        for (const base::Message& message : user.asked) {
            EXPECT_EQ(message, explore::accessErrorMessage());
        }
    }
}

TEST_F(NodeClick, AListThatCannotBeEmptiedStaysAsItIs) {
    exploreTwoMedia();
    exploring.clickNode("1:");
    list.refuses = true;
    exploring.clickNode("1:\\photos");
    EXPECT_EQ(list.names(), Texts{"root.txt"});
}

TEST_F(NodeClick, ListsThatWereNeverFilledAreEmpty) {
    exploring.addFolderNodes("1:");
    exploring.fillRecordList("1:");
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, Texts{});
    EXPECT_EQ(list.names(), Texts{});
    EXPECT_EQ(log, Texts{});
}

TEST_F(NodeClick, AKeyWithoutANumberReadsNothing) {
    EXPECT_THROW(exploring.loadMediaRecords("x:"), base::InvalidArgumentFailure);
    EXPECT_THROW(exploring.loadMediaRecords("4294967296:"), base::OverflowFailure);
}

}  // namespace
