#include "platform/profile_text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace platform {
namespace {

using namespace std::string_literals;

std::string valueIn(const std::string& text, const std::string& section = "s",
                    const std::string& key = "k") {
    return profileValue(text, section, key).value_or("(none)");
}

TEST(ProfileValueTest, ReadsTheKeyOfItsSection) {
    const std::string text = "[a]\nk=1\n[s]\nj=2\nk=3\n[b]\nk=4\n";
    EXPECT_EQ(valueIn(text), "3");
    EXPECT_EQ(valueIn(text, "a"), "1");
    EXPECT_EQ(valueIn(text, "b"), "4");
}

TEST(ProfileValueTest, MissingSectionsAndKeysGiveNothing) {
    EXPECT_EQ(valueIn(""), "(none)");
    EXPECT_EQ(valueIn("k=1\n"), "(none)");
    EXPECT_EQ(valueIn("[t]\nk=1\n"), "(none)");
    EXPECT_EQ(valueIn("[s]\nkk=1\n"), "(none)");
    EXPECT_EQ(valueIn("[s]\nk\n"), "(none)");
}

TEST(ProfileValueTest, TableOfForms) {
    const struct {
        const char* text;
        const char* value;
    } cases[] = {
        {"[s]\nk=v", "v"},
        {"[s]\r\nk=v\r\n", "v"},
        {"[S]\nK=v\n", "v"},
        {"  [ s ]  trailing\n \t k \t = \t v w \t \n", "v w"},
        {"[s]\nk=\n", ""},
        {"[s]\nk=   \n", ""},
        {"[s]\nk=\"v\"\n", "v"},
        {"[s]\nk='v'\n", "v"},
        {"[s]\nk=\" v \"\n", " v "},
        {"[s]\nk=\"\"v\"\"\n", "\"v\""},
        {"[s]\nk=\"v'\n", "\"v'"},
        {"[s]\nk=\"\n", "\""},
        {"[s]\nk=\"\"\n", ""},
        {"[s]\nk=a=b\n", "a=b"},
        {"[s]\nk=v ; no comment\n", "v ; no comment"},
        {"[s]\n;k=1\n ; k=2\nk=3\n", "3"},
        {"[s]\n#k=1\nk=3\n", "3"},
        {"[s]\nk=1\nk=2\n", "1"},
        {"[s]\n[s]\nk=2\n", "2"},
        {"[s]\nk=1\n[s]\nk=2\n", "1"},
        {"\xEF\xBB\xBF[s]\nk=v\n", "v"},
        {"[s]\n[broken\nk=v\n", "v"},
        {"[s]\nk=h\xC3\xA9\n", "h\xC3\xA9"},
        {"[s]\nk=h\xE9 \x80\n", "h\xC3\xA9 \xE2\x82\xAC"},
    };
    for (const auto& form : cases) {
        EXPECT_EQ(valueIn(form.text), form.value) << form.text;
    }
}

TEST(ProfileValueTest, NamesIgnoreCaseBeyondAscii) {
    EXPECT_EQ(valueIn("[ÄRGER]\nÖL=v\n", "ärger", "öl"), "v");
    EXPECT_EQ(valueIn("[\xC4RGER]\n\xD6L=v\n", "ärger", "öl"), "v");
}

TEST(ProfileValueTest, ReadsUtf16Files) {
    EXPECT_EQ(valueIn("\xFF\xFE[\0s\0]\0\r\0\n\0k\0=\0\xE9\0\x16\x04\r\0\n\0"s), "éЖ");
}

TEST(ProfileValueTest, SurvivesAnyBytes) {
    std::string bytes = "[s]\nk=v\n";
    for (int i = 0; i < 70000; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    EXPECT_EQ(valueIn(bytes), "v");
    EXPECT_EQ(valueIn("\xFF\xFE"s), "(none)");
    EXPECT_EQ(valueIn("\xFF\xFE["s), "(none)");
    EXPECT_EQ(valueIn("\0\0\0"s), "(none)");
}

std::string written(const std::string& text, const std::string& value,
                    const std::string& section = "s", const std::string& key = "k") {
    return withProfileValue(text, section, key, value).value_or("(refused)");
}

TEST(WithProfileValueTest, TableOfChanges) {
    const struct {
        const char* fact;
        std::string before;
        const char* after;
    } cases[] = {
        {"a new file", "", "[s]\nk=v\n"},
        {"a value is replaced", "[s]\nk=old\nj=1\n", "[s]\nk=v\nj=1\n"},
        {"a value with its quotes", "[s]\nk=\"old\"\n", "[s]\nk=v\n"},
        {"the form of the line stays", "[s]\n  K \t=  old  \n", "[s]\n  K \t=  v\n"},
        {"an empty value", "[s]\nk=\nj=1\n", "[s]\nk=v\nj=1\n"},
        {"CRLF stays", "[s]\r\nk=old\r\nj=1\r\n", "[s]\r\nk=v\r\nj=1\r\n"},
        {"a new key takes the file's line end", "[s]\r\nj=1\r\n", "[s]\r\nj=1\r\nk=v\r\n"},
        {"a new section, too", "[t]\r\nj=1\r\n", "[t]\r\nj=1\r\n[s]\r\nk=v\r\n"},
        {"mixed line ends stay", "[s]\nk=old\r\nj=1\n", "[s]\nk=v\r\nj=1\n"},
        {"no final newline", "[s]\nk=old", "[s]\nk=v"},
        {"no final newline, new key", "[s]\nj=1", "[s]\nj=1\nk=v\n"},
        {"no final newline, new section", "[t]\nj=1", "[t]\nj=1\n[s]\nk=v\n"},
        {"blank lines between sections stay", "[s]\nj=1\n\n\n[t]\nx=1\n",
         "[s]\nj=1\nk=v\n\n\n[t]\nx=1\n"},
        {"comments stay", "; top\n[s]\n; about k\nk=1 ; x\n;k=2\n",
         "; top\n[s]\n; about k\nk=v\n;k=2\n"},
        {"a comment ends the section", "[s]\nj=1\n; last\n[t]\n", "[s]\nj=1\n; last\nk=v\n[t]\n"},
        {"an empty section", "[s]\n[t]\nk=1\n", "[s]\nk=v\n[t]\nk=1\n"},
        {"the first of two sections", "[s]\nj=1\n[t]\n[S]\nj=2\n",
         "[s]\nj=1\nk=v\n[t]\n[S]\nj=2\n"},
        {"a key in the second of two", "[s]\nj=1\n[s]\nk=2\n", "[s]\nj=1\n[s]\nk=v\n"},
        {"the first of two keys", "[s]\nk=1\nk=2\n", "[s]\nk=v\nk=2\n"},
        {"order of the file", "[z]\nb=1\na=2\n[s]\ny=1\nk=0\nx=2\n[a]\n",
         "[z]\nb=1\na=2\n[s]\ny=1\nk=v\nx=2\n[a]\n"},
        {"junk stays", "junk\n[s\n=\n[]\n[s]\nk=1\n\x01\xFF\n",
         "junk\n[s\n=\n[]\n[s]\nk=v\n\x01\xFF\n"},
        {"a byte order mark stays first", "\xEF\xBB\xBF[s]\nk=1\n", "\xEF\xBB\xBF[s]\nk=v\n"},
        {"nothing but a byte order mark", "\xEF\xBB\xBF", "\xEF\xBB\xBF[s]\nk=v\n"},
        {"bytes of code page 1252", "[t]\nn=\xE9\n[s]\nk=\xE9\n", "[t]\nn=\xE9\n[s]\nk=v\n"},
    };
    for (const auto& change : cases) {
        EXPECT_EQ(written(change.before, "v"), change.after) << change.fact;
    }
}

TEST(WithProfileValueTest, EveryValueThatCanBeWrittenReadsBack) {
    const char* const values[] = {"",     " ",      " v ",  "\tv",      "\"",   "\"v\"",
                                  "'v'",  "''",     "a=b",  "[x]",      ";x",   "a\\b.mdb",
                                  "none", "日本語", "\"v'", "v \"w\" ", "'\"'", "\v"};
    for (const char* const value : values) {
        EXPECT_EQ(valueIn(written("[s]\nk=old\n", value)), value);
        EXPECT_EQ(valueIn(written("", value)), value);
    }
}

TEST(WithProfileValueTest, WhatWouldTearTheFileIsRefused) {
    EXPECT_EQ(written("", "a\nb"), "(refused)");
    EXPECT_EQ(written("", "a\rb"), "(refused)");
    EXPECT_EQ(written("", "a\0b"s), "(refused)");
    EXPECT_EQ(written("", "v", "s]"), "(refused)");
    EXPECT_EQ(written("", "v", "s\n"), "(refused)");
    EXPECT_EQ(written("", "v", "s", "k=j"), "(refused)");
    EXPECT_EQ(written("", "v", "s", ";k"), "(refused)");
    EXPECT_EQ(written("", "v", "s", "[k"), "(refused)");
    EXPECT_EQ(written("", "v", "s", "  "), "(refused)");
}

TEST(WithProfileValueTest, Utf16FilesStayUtf16) {
    EXPECT_EQ(written("\xFF\xFE[\0s\0]\0\n\0k\0=\0x\0\n\0"s, "é"),
              "\xFF\xFE[\0s\0]\0\n\0k\0=\0\xE9\0\n\0"s);
}

TEST(WithProfileValueTest, BrokenUtf16IsRefusedAndNotRepaired) {
    EXPECT_EQ(written("\xFF\xFE[\0s\0]\0\n"s, "v"), "(refused)");
    EXPECT_EQ(written("\xFF\xFE\x00\xD8\n\0"s, "v"), "(refused)");
}

TEST(WithProfileValueTest, TenMegabytesAreNoTrouble) {
    std::string big = "[s]\n";
    while (big.size() < 10'000'000) {
        big += "key of a line that means nothing = value of it\n";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(written(big, "v"), big + "k=v\n");
    EXPECT_EQ(valueIn(big + "k=v\n"), "v");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    std::string oneLine = "[s]\nk=";
    oneLine.resize(10'000'006, 'x');
    EXPECT_EQ(valueIn(oneLine).size(), 10'000'000U);
    EXPECT_EQ(written(oneLine, "v"), "[s]\nk=v");
}

}  // namespace
}  // namespace platform
