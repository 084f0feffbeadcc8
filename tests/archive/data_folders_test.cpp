#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "archive/data.h"
#include "base/failure.h"
#include "tests/archive/archive_fixture.h"

// sortFoldersByLevel.

namespace {

using Texts = std::vector<std::string>;

class SortFolders : public support::ArchiveTest {
  protected:
    void folders(const Texts& paths) {
        state.archiveFolders.growTo(0);
        for (const std::string& path : paths) {
            base::ScanEntry entry;
            entry.path = path;
            entry.FileName = std::to_string(state.archiveFolders.elements().size() + 1);
            entry.mediaId = 7;
            state.archiveFolders.append(entry);
        }
    }

    /// Path and number before the sort, element by element.
    Texts sorted() const {
        Texts result;
        for (const base::ScanEntry& entry : state.archiveFolders.elements()) {
            result.push_back(entry.path + " " + entry.FileName);
        }
        return result;
    }

    std::vector<std::int16_t> levels() const {
        std::vector<std::int16_t> result;
        for (const base::ScanEntry& entry : state.archiveFolders.elements()) {
            result.push_back(entry.level);
        }
        return result;
    }

    archive::Data data{state, engine, events};
};

/// The sort in its simple form, whole elements and all.
void sortBySimpleForm(std::vector<base::ScanEntry>& folders) {
    for (base::ScanEntry& folder : folders) {
        folder.level =
            static_cast<std::int16_t>(1 + std::count(folder.path.begin(), folder.path.end(), '\\'));
    }
    for (std::size_t i = 0; i < folders.size(); ++i) {
        for (std::size_t j = i; j < folders.size(); ++j) {
            if (folders[i].level > folders[j].level) {
                std::swap(folders[i], folders[j]);
            }
        }
    }
}

}  // namespace

TEST_F(SortFolders, LevelIsTheNumberOfSeparatorsPlusOne) {
    folders({"", "docs", "3:", "3:\\", "3:\\a", "3:\\a\\b"});
    data.sortFoldersByLevel();
    EXPECT_EQ(levels(), (std::vector<std::int16_t>{1, 1, 1, 2, 2, 3}));
}

TEST_F(SortFolders, ShallowerFoldersComeFirst) {
    folders({"3:\\a\\b", "3:\\a"});
    data.sortFoldersByLevel();
    EXPECT_EQ(sorted(), (Texts{"3:\\a 2", "3:\\a\\b 1"}));
}

TEST_F(SortFolders, EqualLevelsAreNotReorderedAgainstEachOther) {
    folders({"3:\\", "3:\\a", "3:\\"});
    data.sortFoldersByLevel();
    EXPECT_EQ(sorted(), (Texts{"3:\\ 1", "3:\\a 2", "3:\\ 3"}));
}

TEST_F(SortFolders, ExchangesMayTurnEqualLevelsAround) {
    folders({"3:\\a", "3:\\b", "3:"});
    data.sortFoldersByLevel();
    EXPECT_EQ(sorted(), (Texts{"3: 3", "3:\\b 2", "3:\\a 1"}));
}

TEST_F(SortFolders, EqualsTheSimpleFormElementForElement) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 50; ++round) {
        Texts paths(std::uniform_int_distribution<std::size_t>(0, 200)(random));
        for (std::string& path : paths) {
            path = "7:";
            for (auto depth = random() % 7; depth > 0; --depth) {
                path += "\\folder with a longer name";
            }
        }
        folders(paths);
        std::vector<base::ScanEntry> expected = state.archiveFolders.elements();
        sortBySimpleForm(expected);
        data.sortFoldersByLevel();
        ASSERT_EQ(state.archiveFolders.elements(), expected);
    }
}

TEST_F(SortFolders, ListThatWasNeverGrownStaysSo) {
    data.sortFoldersByLevel();
    EXPECT_TRUE(state.archiveFolders.neverGrown());
    EXPECT_EQ(events.count, 0);
}

TEST_F(SortFolders, EventsRunForEachFolderInBothSteps) {
    folders({"3:\\a\\b", "3:\\a", "3:"});
    data.sortFoldersByLevel();
    EXPECT_EQ(events.count, 6);
}

TEST_F(SortFolders, LevelBeyond16BitsIsAnOverflow) {
    folders({"3:", std::string(32766, '\\')});
    data.sortFoldersByLevel();
    EXPECT_EQ(state.archiveFolders[2].level, 32767);
    folders({"3:", std::string(32767, '\\')});
    EXPECT_THROW(data.sortFoldersByLevel(), base::OverflowFailure);
}

TEST_F(SortFolders, ListThatIsCutWhileLevelsAreCountedIsASubscriptFailure) {
    folders({"3:\\a\\b", "3:\\a", "3:"});
    events.atEvents = [&] { state.archiveFolders.growTo(1); };
    EXPECT_THROW(data.sortFoldersByLevel(), base::SubscriptFailure);
}

TEST_F(SortFolders, ListThatIsCutWhileItIsSortedIsASubscriptFailure) {
    folders({"3:\\a\\b", "3:\\a", "3:"});
    events.atEvents = [&] {
        if (events.count == 5) {
            state.archiveFolders.growTo(2);
        }
    };
    EXPECT_THROW(data.sortFoldersByLevel(), base::SubscriptFailure);
}

TEST_F(SortFolders, ListThatIsRefilledWhileItIsSortedIsSortedAsItStands) {
    folders({"3:\\a\\b", "3:\\a", "3:"});
    events.atEvents = [&] {
        if (events.count == 5) {
            folders({"4:\\x", "4:", "4:\\y"});
            state.archiveFolders[1].level = 2;
            state.archiveFolders[2].level = 1;
            state.archiveFolders[3].level = 2;
        }
    };
    data.sortFoldersByLevel();
    EXPECT_EQ(sorted(), (Texts{"4: 2", "4:\\x 1", "4:\\y 3"}));
}

TEST_F(SortFolders, SortInsideTheSortLeavesNothingForTheOuterOne) {
    folders({"3:\\a", "3:\\b", "3:"});
    events.atEvents = [&] {
        if (events.count == 5) {
            events.atEvents = nullptr;
            data.sortFoldersByLevel();
        }
    };
    data.sortFoldersByLevel();
    EXPECT_EQ(sorted(), (Texts{"3: 3", "3:\\b 2", "3:\\a 1"}));
}

TEST_F(SortFolders, WhatIsAppendedWhileItIsSortedStaysAtTheEnd) {
    folders({"3:\\a", "3:"});
    events.atEvents = [&] {
        if (events.count == 3) {
            base::ScanEntry late;
            late.path = "late";
            late.FileName = "3";
            state.archiveFolders.append(late);
        }
    };
    data.sortFoldersByLevel();
    EXPECT_EQ(sorted(), (Texts{"3: 2", "3:\\a 1", "late 3"}));
}
