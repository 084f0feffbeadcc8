#include <gtest/gtest.h>

#include <chrono>

#include "keywords/keywords.h"
#include "tests/keywords/keywords_fixture.h"

namespace keywords {
namespace {

using support::entryWith;
using Shown = support::RecordedColumns::Shown;

class ApplyKeywordsTest : public testing::Test {
  protected:
    ApplyKeywordsTest() {
        state.scanList = support::listOf<base::ScanEntry>(
            {entryWith("k1", "n1", "m1"), entryWith("k2", "n2", "m2"), entryWith("", "", "")});
        state.archiveFiles = support::listOf<base::ScanEntry>(
            {entryWith("a1", "b1", "c1"), entryWith("a2", "b2", "c2")});
        state.viewMode = "scan";
    }

    void select(const std::vector<std::int16_t>& positions) {
        state.selectedRecords = support::listOf(positions);
    }
    static RecordTexts textsOf(const base::ScanEntry& entry) {
        return {entry.keywords, entry.Notes1, entry.Notes2};
    }
    void apply(const RecordTexts& texts) { applyKeywords(state, columns, texts, state.viewMode); }

    base::ProgramState state;
    support::RecordedColumns columns;
};

TEST_F(ApplyKeywordsTest, GivesTheSelectedEntriesOfTheScanAllThreeTexts) {
    select({1, 3});
    apply({"x,y", "one", "two"});
    EXPECT_EQ(textsOf(state.scanList[1]), (RecordTexts{"x,y", "one", "two"}));
    EXPECT_EQ(textsOf(state.scanList[2]), (RecordTexts{"k2", "n2", "m2"}));
    EXPECT_EQ(textsOf(state.scanList[3]), (RecordTexts{"x,y", "one", "two"}));
    EXPECT_EQ(columns.shown,
              (std::vector<Shown>{{1, {"x,y", "one", "two"}}, {3, {"x,y", "one", "two"}}}));
    EXPECT_EQ(textsOf(state.archiveFiles[1]), (RecordTexts{"a1", "b1", "c1"}));
}

TEST_F(ApplyKeywordsTest, GivesThemToTheFilesOfTheArchiveWhereThatIsShown) {
    state.viewMode = "archive";
    select({2});
    apply({"x", "", "z"});
    EXPECT_EQ(textsOf(state.archiveFiles[2]), (RecordTexts{"x", "b2", "z"}));
    EXPECT_EQ(textsOf(state.scanList[2]), (RecordTexts{"k2", "n2", "m2"}));
    EXPECT_EQ(columns.shown, (std::vector<Shown>{{2, {"x", "b2", "z"}}}));
}

TEST_F(ApplyKeywordsTest, WithEmptyKeywordsAndANoteOnlyNotes1Changes) {
    select({1, 2});
    apply({"", "new", ""});
    EXPECT_EQ(textsOf(state.scanList[1]), (RecordTexts{"k1", "new", "m1"}));
    EXPECT_EQ(textsOf(state.scanList[2]), (RecordTexts{"k2", "new", "m2"}));
}

TEST_F(ApplyKeywordsTest, TextsReplaceWhatWasThereAndAreNotAppended) {
    select({1});
    apply({"x", "", ""});
    apply({"y", "", ""});
    EXPECT_EQ(state.scanList[1].keywords, "y");
}

TEST_F(ApplyKeywordsTest, AFieldCannotBeEmptied) {
    select({1});
    apply({"", "", ""});
    EXPECT_EQ(textsOf(state.scanList[1]), (RecordTexts{"k1", "n1", "m1"}));
    EXPECT_EQ(columns.shown, (std::vector<Shown>{{1, {"k1", "n1", "m1"}}}));
}

TEST_F(ApplyKeywordsTest, AnyOtherViewModeChangesNothing) {
    select({1, 2});
    for (const char* mode : {"", "Scan", "SCAN", "archive ", "search"}) {
        state.viewMode = mode;
        apply({"x", "y", "z"});
        EXPECT_EQ(textsOf(state.scanList[1]), (RecordTexts{"k1", "n1", "m1"})) << mode;
        EXPECT_EQ(textsOf(state.archiveFiles[1]), (RecordTexts{"a1", "b1", "c1"})) << mode;
    }
    EXPECT_TRUE(columns.shown.empty());
}

TEST_F(ApplyKeywordsTest, AnyOtherViewModeChangesNothingEvenWhereThePositionsAreStale) {
    state.viewMode = "search";
    select({77});
    EXPECT_NO_THROW(apply({"x", "y", "z"}));
}

TEST_F(ApplyKeywordsTest, TakesThePositionsOfTheRowsForThoseOfTheEntries) {
    // As it is where the list was sorted, or shows one folder of the archive only: the row at
    // position 2 shows some other entry, and the second entry is changed and shown there.
    state.viewMode = "archive";
    select({2});
    apply({"x", "", ""});
    EXPECT_EQ(state.archiveFiles[2].keywords, "x");
    EXPECT_EQ(columns.shown, (std::vector<Shown>{{2, {"x", "b2", "c2"}}}));
}

TEST_F(ApplyKeywordsTest, WhereNoRowWasEverSelectedThereIsNothingToDo) {
    EXPECT_NO_THROW(apply({"x", "y", "z"}));
    EXPECT_TRUE(columns.shown.empty());
}

TEST_F(ApplyKeywordsTest, AListThatWasCutKeepsWhatItWasGivenSoFarAndFails) {
    select({1, 3});
    state.scanList.growTo(2);
    EXPECT_THROW(apply({"x", "", ""}), base::SubscriptFailure);
    EXPECT_EQ(state.scanList[1].keywords, "x");
    EXPECT_EQ(state.scanList[2].keywords, "k2");
    EXPECT_EQ(columns.shown.size(), 1U);
}

TEST_F(ApplyKeywordsTest, AListThatWasNeverFilledFails) {
    state.scanList = {};
    select({1});
    EXPECT_THROW(apply({"x", "", ""}), base::SubscriptFailure);
}

TEST_F(ApplyKeywordsTest, ARecordListThatHasLostItsRowsFails) {
    columns.rows = 1;
    select({1, 2, 3});
    EXPECT_THROW(apply({"x", "", ""}), base::SubscriptFailure);
    EXPECT_EQ(state.scanList[2].keywords, "x");
    EXPECT_EQ(state.scanList[3].keywords, "");
}

TEST_F(ApplyKeywordsTest, TheMostPositionsThereCanBeTakeNoTime) {
    constexpr std::int16_t most = 32767;
    state.scanList.growTo(most);
    std::vector<std::int16_t> positions;
    for (int position = 1; position <= most; ++position) {
        positions.push_back(static_cast<std::int16_t>(position));
    }
    select(positions);
    columns.rows = most;
    const auto begin = std::chrono::steady_clock::now();
    apply({"x", "y", "z"});
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_EQ(textsOf(state.scanList[most]), (RecordTexts{"x", "y", "z"}));
}

}  // namespace
}  // namespace keywords
