#include "cli/visible_text.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

TEST(VisibleText, LeavesNamesInAnyScriptAsTheyAre) {
    for (const char* name : {"Grüße", "Αθήνα", "写真 😀.png", "back\\slash", "می‌خواهم"}) {
        EXPECT_EQ(visibleText(name), name);
    }
}

TEST(VisibleText, ShowsControlCharactersAsEscapes) {
    EXPECT_EQ(visibleText("a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(visibleText("\x1b[2J\x7f"), "\\x1b[2J\\x7f");
    EXPECT_EQ(visibleText(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(visibleText("\xC2\x9B"), "\\x9b");
}

TEST(VisibleText, ShowsWhatTurnsTheDirectionOfAText) {
    EXPECT_EQ(visibleText("a\u202Egpj.exe"), "a\\u202egpj.exe");
    EXPECT_EQ(visibleText("\u2066\uFEFF"), "\\u2066\\ufeff");
}

TEST(VisibleText, MakesBytesThatAreNoUtf8Harmless) {
    EXPECT_EQ(visibleText("a\xFF"), "a\uFFFD");
    EXPECT_EQ(visibleText("a\x9B"), "a\uFFFD");
}

TEST(DisplayWidth, CountsColumns) {
    EXPECT_EQ(displayWidth(""), 0);
    EXPECT_EQ(displayWidth("Grüße"), 5);
    EXPECT_EQ(displayWidth("写真"), 4);
    EXPECT_EQ(displayWidth("e\u0301"), 1);
    EXPECT_EQ(displayWidth("😀"), 2);
}

TEST(CutToWidth, KeepsWhatFits) {
    EXPECT_EQ(cutToWidth("abcdef", 6), "abcdef");
    EXPECT_EQ(cutToWidth("abcdefg", 6), "abc...");
}

TEST(CutToWidth, NeverCutsACharacter) {
    EXPECT_EQ(cutToWidth("写真写真", 6), "写...");
    EXPECT_EQ(cutToWidth("üüüüüüü", 5), "üü...");
}

}  // namespace
}  // namespace cli
