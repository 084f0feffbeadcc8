#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/explore/explore_fixture.h"

// What the user does while a medium is read.

namespace {

using base::MessageAnswer;
using support::file;
using support::folder;
using support::medium;
using support::Texts;

/// What ends the program is no std::exception.
struct ProgramEnded {};

class Meanwhile : public support::ExploreTest {
  protected:
    Meanwhile() {
        std::vector<base::ScanEntry> records;
        for (int id = 1; id <= 2; ++id) {
            const std::string root = std::to_string(id) + ":";
            for (int i = 0; i < folders; ++i) {
                records.push_back(folder(root, "folder " + std::to_string(i)));
                records.push_back(file(root, "file " + std::to_string(i)));
            }
        }
        store({medium(1, "One", ""), medium(2, "Two", "")}, records);
        exploring.exploreArchive();
    }

    /// Does something once, in the n-th round of events from now.
    void atRound(int n, std::function<void()> action) {
        const int round = events.count + n;
        events.atEvents = [this, round, action = std::move(action)] {
            if (events.count == round) {
                action();
            }
        };
    }
    /// How many rounds of events the first click on a medium has.
    int roundsOfAClick() {
        const int before = events.count;
        exploring.clickNode("1:");
        const int rounds = events.count - before;
        exploring.exploreArchive();
        return rounds;
    }
    std::size_t nodesBelow(const std::string& key) const {
        std::size_t count = 0;
        for (const std::string& line : tree.lines) {
            count += line.rfind(key + " > ", 0) == 0 ? 1 : 0;
        }
        return count;
    }

    static constexpr int folders = 7;
};

TEST_F(Meanwhile, AnotherFolderOfTheSameMediumIsListedAndTheReadingGoesOn) {
    atRound(3, [&] { exploring.clickNode("1:\\folder 1"); });
    exploring.clickNode("1:");
    EXPECT_EQ(nodesBelow("1:"), 7U);
    EXPECT_EQ(list.rows.size(), 7U);
}

TEST_F(Meanwhile, TheSameMediumClickedAgainAtAnyMomentIsReadWhole) {
    const int rounds = roundsOfAClick();
    for (int round = 1; round <= rounds; ++round) {
        exploring.exploreArchive();
        atRound(round, [&] { exploring.clickNode("1:"); });
        exploring.clickNode("1:");
        EXPECT_EQ(nodesBelow("1:"), 7U) << round;
        EXPECT_EQ(list.rows.size(), 7U) << round;
        EXPECT_EQ(folderCount(), 7) << round;
        EXPECT_FALSE(loadingShown);
    }
}

TEST_F(Meanwhile, AnotherMediumClickedAtAnyMomentIsReadInBetween) {
    const int rounds = roundsOfAClick();
    for (int round = 1; round <= rounds; ++round) {
        exploring.exploreArchive();
        std::size_t listed = 0;
        atRound(round, [&] {
            exploring.clickNode("2:");
            listed = list.rows.size();
        });
        exploring.clickNode("1:");
        EXPECT_EQ(nodesBelow("2:"), 7U) << round;
        EXPECT_EQ(listed, 7U) << round;
        EXPECT_TRUE(state.mediaList[1].loaded && state.mediaList[2].loaded);
        EXPECT_FALSE(loadingShown);
    }
}

TEST_F(Meanwhile, ExploringAgainAtAnyMomentGivesTheNodesToTheNewTree) {
    const int rounds = roundsOfAClick();
    for (int round = 1; round <= rounds; ++round) {
        exploring.exploreArchive();
        atRound(round, [&] { exploring.exploreArchive(); });
        exploring.clickNode("1:");
        EXPECT_EQ(nodesBelow("1:"), 7U) << round;
        EXPECT_EQ(list.rows.size(), 7U) << round;
        EXPECT_TRUE(state.mediaList[1].loaded);
    }
}

TEST_F(Meanwhile, ExploringAnotherArchiveAtAnyMomentEndsTheClick) {
    const base::ArchiveLocation first = state.currentArchive();
    openNewArchive("second.mdb");
    const base::ArchiveLocation second = state.currentArchive();
    store({medium(1, "Of the second", "")}, {folder("1:", "other"), file("1:", "a")});
    state.archiveName = first.name;
    const int rounds = roundsOfAClick();
    for (int round = 1; round <= rounds; ++round) {
        state.archiveName = first.name;
        exploring.exploreArchive();
        atRound(round, [&] {
            state.archiveName = second.name;
            exploring.exploreArchive();
        });
        exploring.clickNode("1:");
        EXPECT_EQ(tree.texts(), Texts{"1: Of the second()"}) << round;
        EXPECT_EQ(list.rows.size(), 0U);
        EXPECT_FALSE(state.mediaList[1].loaded);
        EXPECT_FALSE(loadingShown);
        exploring.clickNode("1:");
        EXPECT_EQ(nodesBelow("1:"), 1U);
        EXPECT_EQ(list.names(), Texts{"a"});
    }
}

TEST_F(Meanwhile, AnotherArchiveThatIsOnlyOpenedDoesNotMixIntoTheReading) {
    const std::string first = state.archiveName;
    openNewArchive("second.mdb");
    const std::string second = state.archiveName;
    state.archiveName = first;
    for (const int round : {1, 10, 20}) {
        state.archiveName = first;
        exploring.exploreArchive();
        atRound(round, [&] { state.archiveName = second; });
        exploring.clickNode("1:");
        EXPECT_EQ(nodesBelow("1:"), 7U);
        EXPECT_EQ(list.rows.size(), 7U);
    }
}

TEST_F(Meanwhile, ClosingTheArchiveDoesNotEndTheReading) {
    atRound(2, [&] { state.archiveName.clear(); });
    exploring.clickNode("1:");
    EXPECT_EQ(nodesBelow("1:"), 7U);
    EXPECT_EQ(list.rows.size(), 7U);
}

TEST_F(Meanwhile, ListsThatAreCutAtAnyMomentEndInAMessageAtWorst) {
    const int rounds = roundsOfAClick();
    for (int round = 1; round <= rounds; ++round) {
        exploring.exploreArchive();
        messages.asked.clear();
        atRound(round, [&] {
            state.archiveFolders = {};
            state.archiveFiles = {};
            state.mediaList.growTo(0);
            tree.clearNodes();
            messages.expect(MessageAnswer::Ok);
        });
        exploring.clickNode("1:");
        EXPECT_FALSE(loadingShown) << round;
        if (messages.asked.empty()) {
            // Nothing was asked: the answer is left for the next round.
            messages.show(explore::accessErrorMessage());
        } else {
            EXPECT_EQ(messages.asked[0], explore::accessErrorMessage());
        }
    }
}

TEST_F(Meanwhile, TheEndOfTheProgramEndsTheClickAndHidesTheLoadingWindow) {
    const int rounds = roundsOfAClick();
    for (int round = 1; round <= rounds; ++round) {
        exploring.exploreArchive();
        list.rows = {{"before"}};
        atRound(round, [] { throw ProgramEnded(); });
        EXPECT_THROW(exploring.clickNode("1:"), ProgramEnded) << round;
        EXPECT_FALSE(loadingShown);
        EXPECT_EQ(nodesBelow("1:"), 0U);
        EXPECT_EQ(list.names(), Texts{"before"});
        EXPECT_TRUE(messages.asked.empty());
    }
}

TEST_F(Meanwhile, TheEndOfTheProgramLeavesTheArchiveFree) {
    atRound(4, [] { throw ProgramEnded(); });
    EXPECT_THROW(exploring.clickNode("1:"), ProgramEnded);
    events.atEvents = nullptr;
    store({medium(3, "Three", "")});  // could not be written while another held the file
    exploring.exploreArchive();
    EXPECT_TRUE(tree.has("3:"));
}

}  // namespace
