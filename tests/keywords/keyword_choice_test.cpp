#include "keywords/keyword_choice.h"

#include <gtest/gtest.h>

#include "keywords/collection_failures.h"
#include "tests/keywords/keywords_fixture.h"

namespace keywords {
namespace {

using support::know;
using support::textsOf;
using Texts = std::vector<std::string>;

class KeywordChoiceTest : public testing::Test {
  protected:
    base::ProgramState state;
    KeywordChoice choice{state};
};

TEST_F(KeywordChoiceTest, ListsThatWereNeverFilledAreEmpty) {
    EXPECT_EQ(choice.keywords(Listed::All), Texts{});
    EXPECT_EQ(choice.notes(Listed::Added), Texts{});
}

TEST_F(KeywordChoiceTest, ListsAllOrTheAddedOnesInTheirOrder) {
    know(state.archiveKeywords, {"b", "a"});
    state.keywordCount = 2;
    choice.addKeyword("c");
    choice.addKeyword("b");
    EXPECT_EQ(choice.keywords(Listed::All), (Texts{"b", "a", "c", "b"}));
    EXPECT_EQ(choice.keywords(Listed::Added), (Texts{"c", "b"}));
    EXPECT_EQ(choice.notes(Listed::All), Texts{});
}

TEST_F(KeywordChoiceTest, TheFirstKeywordOfAllBecomesEntryOne) {
    choice.addKeyword("first");
    EXPECT_EQ(state.keywordCount, 1);
    EXPECT_EQ(state.archiveKeywords[1], (base::KeywordEntry{"first", "current"}));
}

TEST_F(KeywordChoiceTest, AddingSetsTheCounterToTheListsLength) {
    // Seven were found, three of them different.
    know(state.archiveKeywords, {"a", "b", "c"});
    state.keywordCount = 7;
    choice.addKeyword("d");
    EXPECT_EQ(state.keywordCount, 4);
    EXPECT_EQ(textsOf(state.archiveKeywords), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(support::sourcesOf(state.archiveKeywords),
              (Texts{"archive", "archive", "archive", "current"}));
}

TEST_F(KeywordChoiceTest, EmptyAndKnownTextsAreAddedAsTheyAre) {
    for (const char* text : {"x", "x", "", " x "}) {
        choice.addKeyword(text);
        choice.addNote(text);
    }
    EXPECT_EQ(textsOf(state.archiveKeywords), (Texts{"x", "x", "", " x "}));
    EXPECT_EQ(textsOf(state.archiveNotes), (Texts{"x", "x", "", " x "}));
    EXPECT_EQ(state.noteCount, 4);
}

TEST_F(KeywordChoiceTest, ACounterOfZeroCutsAListThatStillHoldsFormerTexts) {
    // As after opening an archive with notes and without keywords.
    know(state.archiveKeywords, {"former 1", "former 2"});
    state.keywordCount = 0;
    choice.addKeyword("new");
    EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"new"});
    EXPECT_EQ(state.keywordCount, 1);
}

TEST_F(KeywordChoiceTest, AListThatIsCountedButWasNeverFilledFails) {
    // As after opening, first of all, an archive with keywords and without notes.
    state.keywordCount = 3;
    EXPECT_THROW(choice.addKeyword("new"), base::SubscriptFailure);
    EXPECT_EQ(state.keywordCount, 3);
    EXPECT_TRUE(state.archiveKeywords.neverGrown());
}

TEST_F(KeywordChoiceTest, TheLastNoteThatCanBeCountedIsTheLastThatCanBeAdded) {
    state.archiveNotes.growTo(32766);
    state.noteCount = 32766;
    choice.addNote("last");
    EXPECT_EQ(state.noteCount, 32767);
    EXPECT_THROW(choice.addNote("one more"), TooManyNotesFailure);
    EXPECT_EQ(state.noteCount, 32767);
    EXPECT_EQ(state.archiveNotes.upperBound(), 32767);
}

TEST_F(KeywordChoiceTest, KeywordsHaveNoSuchLimit) {
    state.archiveKeywords.growTo(40000);
    state.keywordCount = 40000;
    choice.addKeyword("one more");
    EXPECT_EQ(state.keywordCount, 40001);
}

TEST_F(KeywordChoiceTest, SelectedKeywordsAreJoinedByCommas) {
    for (const char* text : {"a", "b", "a"}) {
        choice.selectKeyword(text);
    }
    EXPECT_EQ(choice.selected().keywords, "a,b,a");
}

TEST_F(KeywordChoiceTest, AnEmptyKeywordIsJoinedToo) {
    choice.selectKeyword("");
    EXPECT_EQ(choice.selected().keywords, "");
    choice.selectKeyword("a");
    choice.selectKeyword("");
    EXPECT_EQ(choice.selected().keywords, "a,");
}

TEST_F(KeywordChoiceTest, ANoteGoesWhereTheBoxesSay) {
    choice.selectNote("one", {true, false});
    EXPECT_EQ(choice.selected(), (RecordTexts{"", "one", ""}));
    choice.selectNote("two", {false, true});
    EXPECT_EQ(choice.selected(), (RecordTexts{"", "one", "two"}));
    choice.selectNote("both", {true, true});
    EXPECT_EQ(choice.selected(), (RecordTexts{"", "both", "both"}));
}

TEST_F(KeywordChoiceTest, SaysHowManyRecordsAreSelected) {
    EXPECT_FALSE(choice.recordsEverSelected());
    EXPECT_EQ(choice.openingInfo(),
              "Select and/or Add Keywords to be applied to the selected records (qty: 0)");
    state.selectedRecords.growTo(12);
    EXPECT_TRUE(choice.recordsEverSelected());
    EXPECT_EQ(choice.openingInfo(),
              "Select and/or Add Keywords to be applied to the selected records (qty: 12)");
}

TEST_F(KeywordChoiceTest, SaysWhatWillBeApplied) {
    state.selectedRecords.growTo(3);
    choice.selectKeyword("x");
    EXPECT_EQ(choice.info(),
              "Keywords: x\r\nNote1: \r\nNote2: \r\nto be applied to the selected records "
              "(qty: 3)");
    choice.selectNote("n", {true, false});
    choice.selectNote("m", {false, true});
    EXPECT_EQ(choice.info(),
              "Keywords: x\r\nNote1: n\r\nNote2: m\r\nto be applied to the selected records "
              "(qty: 3)");
}

TEST_F(KeywordChoiceTest, AppliesToTheListThatViewModeNames) {
    state.scanList.growTo(1);
    state.archiveFiles.growTo(1);
    state.selectedRecords.growTo(1);
    state.selectedRecords[1] = 1;
    state.viewMode = "archive";
    support::RecordedColumns columns;
    choice.selectNote("n", {true, false});
    choice.apply(columns);
    EXPECT_EQ(state.archiveFiles[1].Notes1, "n");
    EXPECT_EQ(state.scanList[1].Notes1, "");
}

}  // namespace
}  // namespace keywords
