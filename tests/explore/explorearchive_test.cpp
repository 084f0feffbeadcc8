#include "explore/explorearchive.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "tests/explore/explore_fixture.h"

// The explore command: media as the tree's roots, and the list's columns.

namespace {

using base::MessageAnswer;
using support::file;
using support::folder;
using support::medium;
using support::Texts;

using ExploreCommand = support::ExploreTest;

TEST_F(ExploreCommand, WithoutAnArchiveYesShowsTheOpenWindow) {
    state.archiveFolder.clear();
    state.archiveName.clear();
    messages.expect(MessageAnswer::Yes);
    exploring.exploreArchive();
    ASSERT_EQ(messages.asked.size(), 1U);
    EXPECT_EQ(messages.asked[0].title, "Open Archive Required");
    EXPECT_EQ(messages.asked[0].text,
              "You do not have an archive open currently, would you like to open one?");
    EXPECT_EQ(messages.asked[0].buttons, base::MessageButtons::YesNoCancel);
    EXPECT_EQ(log, Texts{"open window"});
    EXPECT_EQ(state.viewMode, "");
}

TEST_F(ExploreCommand, WithoutAnArchiveNoAndCancelChangeNothing) {
    store({medium(1, "Backup", "DISK1")}, {file("1:", "a")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    state.archiveName.clear();
    state.viewMode = "scan";
    log.clear();
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Cancel}) {
        messages.expect(answer);
        exploring.exploreArchive();
    }
    EXPECT_EQ(log, Texts{});
    EXPECT_EQ(tree.lines, Texts{"1:"});
    EXPECT_EQ(list.names(), Texts{"a"});
    EXPECT_EQ(list.columns.size(), 10U);
    EXPECT_EQ(state.viewMode, "scan");
}

TEST_F(ExploreCommand, AnArchiveIsOpenWhenItHasBothNameAndFolder) {
    messages.expect(MessageAnswer::No);
    state.archiveName.clear();
    exploring.exploreArchive();
    messages.expect(MessageAnswer::No);
    state.archiveName = "test.mdb";
    state.archiveFolder.clear();
    exploring.exploreArchive();
    EXPECT_EQ(messages.asked[1].title, "Open Archive Required");
}

TEST_F(ExploreCommand, ArrangesTheWorkspaceFirst) {
    store({medium(1, "Backup", "DISK1")});
    exploring.exploreArchive();
    EXPECT_EQ(log, Texts{"arrange"});
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(ExploreCommand, TheListIsArrangedBeforeItsColumnsAreParts) {
    store({medium(1, "Backup", "DISK1")});
    explore::ExploreCommands widening = commands();
    widening.arrangeWorkspace = [this] { list.width = 3000; };
    explore::ExploreArchive arranging(state, data, messages, tree, list, widening);
    arranging.exploreArchive();
    EXPECT_EQ(list.columns[0], "Name 300");
}

TEST_F(ExploreCommand, TheListCountsAsTheArchivesWhenTheTreeIsBuilt) {
    struct Watching : base::MessageBox {
        explicit Watching(const base::ProgramState& watched) : state(watched) {}
        MessageAnswer show(const base::Message&) override {
            modes.push_back(state.viewMode);
            return MessageAnswer::Ok;
        }
        const base::ProgramState& state;
        Texts modes;
    } watching(state);
    state.viewMode = "scan";
    explore::ExploreArchive(state, data, watching, tree, list, commands()).exploreArchive();
    EXPECT_EQ(watching.modes, Texts{"scan"});
    EXPECT_EQ(state.viewMode, "archive");
}

TEST_F(ExploreCommand, GivesOneRootForEachMediumInTheirOrder) {
    store(
        {medium(12, "Holiday 2001", "CD_HOL01"), medium(1, "Backup", "DISK1"), medium(-3, "", "")});
    exploring.exploreArchive();
    EXPECT_EQ(tree.lines, (Texts{"12:", "1:", "-3:"}));
    EXPECT_EQ(tree.texts(), (Texts{"12: Holiday 2001(CD_HOL01)", "1: Backup(DISK1)", "-3: ()"}));
    EXPECT_EQ(state.mediaList.upperBound(), 3);
    EXPECT_EQ(state.viewMode, "archive");
}

TEST_F(ExploreCommand, ImagesFollowTheExactType) {
    const Texts types = {"Removable", "Fixed",  "Remote", "CDROM", "RAMDisk",
                         "UnKnown",   "cdrom",  "CDROM ", "",      "removable",
                         "RamDisk",   "REMOTE", "Folder"};
    std::vector<base::MediaInfo> media;
    for (const std::string& type : types) {
        media.push_back(medium(static_cast<int>(media.size()) + 1, "x", "y", type));
    }
    store(media);
    exploring.exploreArchive();
    EXPECT_EQ(tree.images(),
              (Texts{"removable", "fixed", "remote", "cdrom", "ramdisk", "unknown", "unknown",
                     "unknown", "unknown", "unknown", "unknown", "unknown", "unknown"}));
    for (const explore::TreeNode& node : tree.nodes) {
        EXPECT_EQ(node.selectedImage, "");
    }
}

TEST_F(ExploreCommand, ReadsNoFoldersAndNoFiles) {
    store({medium(1, "Backup", "DISK1")}, {folder("1:", "photos"), file("1:", "a")});
    exploring.exploreArchive();
    EXPECT_EQ(tree.lines, Texts{"1:"});
    EXPECT_TRUE(state.archiveFolders.neverGrown());
    EXPECT_TRUE(state.archiveFiles.neverGrown());
    EXPECT_EQ(list.rows.size(), 0U);
}

TEST_F(ExploreCommand, AnArchiveWithoutMediaSaysSo) {
    messages.expect(MessageAnswer::Ok);
    exploring.exploreArchive();
    EXPECT_EQ(messages.asked[0].title, "No Data in Current Archive");
    EXPECT_EQ(messages.asked[0].text, "There is no data in the current archive.");
    EXPECT_EQ(messages.asked[0].buttons, base::MessageButtons::Ok);
    EXPECT_EQ(tree.lines, Texts{});
    EXPECT_EQ(log, Texts{"arrange"});
    EXPECT_EQ(state.viewMode, "archive");
}

TEST_F(ExploreCommand, AnArchiveWithoutMediaDoesNotShowThoseOfTheOneBefore) {
    store({medium(1, "Backup", "DISK1")});
    exploring.exploreArchive();
    openNewArchive("empty.mdb");
    messages.expect(MessageAnswer::Ok);
    exploring.exploreArchive();
    EXPECT_EQ(tree.lines, Texts{});
    EXPECT_TRUE(state.mediaList.neverGrown());
}

TEST_F(ExploreCommand, AMediaListThatWasNeverFilledIsToldAndEmptiesTheTree) {
    tree.addRootNode({"7:", "7: old()", "cdrom", ""});
    messages.expect(MessageAnswer::Ok);
    exploring.buildMediaNodes();
    EXPECT_EQ(messages.asked[0], explore::noDataMessage());
    EXPECT_EQ(tree.lines, Texts{});
}

TEST_F(ExploreCommand, AnIdUsedTwiceIsToldAndTheNodesBeforeItStay) {
    store({medium(1, "a", ""), medium(2, "b", ""), medium(1, "c", ""), medium(3, "d", "")});
    messages.expect(MessageAnswer::Ok);
    exploring.exploreArchive();
    EXPECT_EQ(messages.asked[0], explore::noDataMessage());
    EXPECT_EQ(tree.lines, (Texts{"1:", "2:"}));
    EXPECT_EQ(state.viewMode, "archive");
}

TEST_F(ExploreCommand, ATreeThatCannotBeClearedIsTold) {
    store({medium(1, "a", "")});
    tree.refuses = true;
    messages.expect(MessageAnswer::Ok);
    exploring.exploreArchive();
    EXPECT_EQ(messages.asked[0], explore::noDataMessage());
}

TEST_F(ExploreCommand, AnArchiveThatIsGoneEndsItAndLeavesTreeAndMedia) {
    store({medium(1, "a", "")}, {file("1:", "x")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    state.viewMode = "scan";
    loseArchive();
    EXPECT_THROW(exploring.exploreArchive(), base::EngineFailure);
    EXPECT_EQ(tree.lines, Texts{"1:"});
    EXPECT_EQ(state.viewMode, "scan");
    EXPECT_EQ(list.columns.size(), 20U);
    EXPECT_EQ(list.names(), Texts{});
    exploring.clickNode("1:");  // is still known, and read
    EXPECT_EQ(list.names(), Texts{"x"});
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(ExploreCommand, AgainItForgetsWhatWasRead) {
    store({medium(1, "a", "")}, {folder("1:", "photos")});
    exploring.exploreArchive();
    exploring.clickNode("1:");
    EXPECT_TRUE(state.mediaList[1].loaded);
    exploring.exploreArchive();
    EXPECT_EQ(tree.lines, Texts{"1:"});
    EXPECT_FALSE(state.mediaList[1].loaded);
    exploring.clickNode("1:");
    EXPECT_EQ(tree.lines, (Texts{"1:", "1: > 1:\\photos"}));
}

TEST_F(ExploreCommand, CommandsThatAreNotConnectedDoNothing) {
    store({medium(1, "a", "")}, {folder("1:", "photos")});
    explore::ExploreArchive bare(state, data, messages, tree, list, {});
    bare.exploreArchive();
    bare.clickNode("1:");
    EXPECT_EQ(tree.lines.size(), 2U);
    state.archiveName.clear();
    messages.expect(MessageAnswer::Yes);
    bare.exploreArchive();
}

// setupRecordColumns

TEST_F(ExploreCommand, TheListGetsTenColumnsAsPartsOfItsWidth) {
    exploring.setupRecordColumns();
    EXPECT_EQ(list.columns,
              (Texts{"Name 100", "Path 200", "Type 50", "Type 150", "Keywords 100", "Notes 1 100",
                     "Notes 2 100", "Date Created 50", "Date Modified 50", "Size 100"}));
}

TEST_F(ExploreCommand, WidthsAreWholeTwips) {
    list.width = 12345;
    exploring.setupRecordColumns();
    EXPECT_EQ(list.columns, (Texts{"Name 1234", "Path 2469", "Type 617", "Type 1851",
                                   "Keywords 1234", "Notes 1 1234", "Notes 2 1234",
                                   "Date Created 617", "Date Modified 617", "Size 1234"}));
}

TEST_F(ExploreCommand, ColumnsThatAreThereMoveBehindTheNewOnes) {
    list.columns = {"Old 7"};
    exploring.setupRecordColumns();
    list.width = 2000;
    exploring.setupRecordColumns();
    ASSERT_EQ(list.columns.size(), 21U);
    EXPECT_EQ(list.columns[0], "Name 200");
    EXPECT_EQ(list.columns[9], "Size 200");
    EXPECT_EQ(list.columns[10], "Name 100");
    EXPECT_EQ(list.columns[20], "Old 7");
}

TEST_F(ExploreCommand, ColumnsClearTheRows) {
    list.rows = {{"x"}};
    exploring.setupRecordColumns();
    EXPECT_EQ(list.rows.size(), 0U);
}

// Texts

TEST(NodeKeys, AMediumsKeyEndsWithItsFirstColon) {
    EXPECT_TRUE(explore::isMediumKey("12:"));
    EXPECT_TRUE(explore::isMediumKey("-1:"));
    EXPECT_TRUE(explore::isMediumKey(":"));
    for (const char* key : {"", "12", "12:\\a", "12:\\a:", "12::"}) {
        EXPECT_FALSE(explore::isMediumKey(key)) << key;
    }
}

TEST(NodeKeys, TheNumberStandsBeforeTheFirstColon) {
    EXPECT_EQ(explore::mediaIdOf("12:"), 12);
    EXPECT_EQ(explore::mediaIdOf("-2147483648:\\a:b"), INT32_MIN);
    EXPECT_EQ(explore::mediaIdOf("2147483647"), INT32_MAX);
    EXPECT_THROW(explore::mediaIdOf("2147483648:"), base::OverflowFailure);
    for (const char* key : {"", ":", "a:", "1x:", "1 :"}) {
        EXPECT_THROW(explore::mediaIdOf(key), base::InvalidArgumentFailure) << key;
    }
}

}  // namespace
