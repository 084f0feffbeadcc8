#include "platform/path_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/drives.h"

namespace platform {
namespace {

using Names = std::vector<std::string>;

TEST(DriveListEntryTest, TextIsLetterAndLabelInBrackets) {
    EXPECT_EQ((DriveListEntry{'d', "MY DISK", "/media/disk", 1}.text()), "d: [MY DISK]");
    EXPECT_EQ((DriveListEntry{'c', "", "/", 2}.text()), "c: []");
    EXPECT_EQ((DriveListEntry{'n', "//server/share", "/mnt/n", 3}.text()), "n: [//server/share]");
}

TEST(PathRulesTest, ADriveLetterNeedsItsColon) {
    EXPECT_EQ(driveLetterOf("d:"), 'd');
    EXPECT_EQ(driveLetterOf("D:\\dir"), 'd');
    EXPECT_EQ(driveLetterOf("d: [MY DISK]"), 'd');
    for (const char* const path : {"", "d", ":", "d\\", "1:", "@:", "[:", "/:", "é:", "\\d:"}) {
        EXPECT_EQ(driveLetterOf(path), std::nullopt) << path;
    }
}

TEST(PathRulesTest, APathIsSplitAtItsLastBackslash) {
    const struct {
        const char* path;
        const char* folder;
        const char* name;
    } cases[] = {
        {"d:\\dir\\sub\\*", "d:\\dir\\sub\\", "*"},
        {"d:\\name", "d:\\", "name"},
        {"d:\\", "d:\\", ""},
        {"d:name", "d:", "name"},
        {"d:", "d:", ""},
        {"", "", ""},
        {"name", "", "name"},
    };
    for (const auto& path : cases) {
        EXPECT_EQ(splitPath(path.path).folder, path.folder) << path.path;
        EXPECT_EQ(splitPath(path.path).name, path.name) << path.path;
    }
}

TEST(PathRulesTest, ComponentsLeaveTheDriveAndEmptyNamesOut) {
    using Views = std::vector<std::string_view>;
    EXPECT_EQ(pathComponents("d:\\dir\\sub\\"), (Views{"dir", "sub"}));
    EXPECT_EQ(pathComponents("d:"), Views());
    EXPECT_EQ(pathComponents("d:\\"), Views());
    EXPECT_EQ(pathComponents("d:\\\\a\\\\b"), (Views{"a", "b"}));
    EXPECT_EQ(pathComponents("a:b\\c"), (Views{"b", "c"}));
    EXPECT_EQ(pathComponents(""), Views());
}

TEST(PathRulesTest, PatternsTakeNamesIn) {
    const struct {
        const char* name;
        const char* pattern;
        bool taken;
    } cases[] = {
        {"a", "*", true},
        {"a.b", "*", true},
        {"a", "*.*", true},
        {"a.txt", "*.txt", true},
        {"A.TXT", "*.txt", true},
        {"a.txt.bak", "*.txt", false},
        {"a.txt", "a?txt", true},
        {"é.txt", "?.txt", true},
        {"日.txt", "?.TXT", true},
        {"ÄÖ.txt", "äö.*", true},
        {"", "*", true},
        {"a", "", false},
        {"a", "?", true},
        {"ab", "?", false},
        {"aab", "*ab", true},
        {"ababac", "*ab*c", true},
        {"ababab", "*ab*c", false},
        {"abc", "***", true},
        {"abc", "abc*", true},
        {"abc", "ab", false},
        {"x\xFFy", "x?y", true},
    };
    for (const auto& match : cases) {
        EXPECT_EQ(matchesPattern(match.name, match.pattern), match.taken)
            << match.name << " " << match.pattern;
    }
}

TEST(PathRulesTest, ALongPatternOfStarsIsQuick) {
    std::string pattern;
    for (int i = 0; i < 60; ++i) {
        pattern += "*a";
    }
    EXPECT_FALSE(matchesPattern(std::string(250, 'a') + "b", pattern + "*c"));
    EXPECT_TRUE(matchesPattern(std::string(250, 'a'), pattern));
}

TEST(PathRulesTest, OnlyOddNamesAreShownOtherwise) {
    const struct {
        const char* native;
        const char* shown;
    } cases[] = {
        {"plain.txt", "plain.txt"},
        {"naïve 日本 😀", "naïve 日本 😀"},
        {"a\\b", "a＼b"},
        {"\\\\", "＼＼"},
        {"caf\xE9", "café"},
        {"\x80uro", "€uro"},
        {"\xE9\\\xE8", "é＼è"},
        {"half \xE6\x97", "half æ—"},
        {"\xED\xA0\x80", "í\xC2\xA0€"},
        {"line\nfeed", "line\nfeed"},
        {"a＼b", "a＼b"},
    };
    for (const auto& name : cases) {
        EXPECT_EQ(shownName(name.native), name.shown) << name.native;
        EXPECT_EQ(isPlainName(name.native), std::string(name.native) == name.shown) << name.native;
    }
}

TEST(PathRulesTest, TheNativeNameIsAmongTheCandidates) {
    EXPECT_EQ(nativeNames("plain"), Names{"plain"});
    EXPECT_EQ(nativeNames("a＼b"), (Names{"a＼b", "a\\b"}));
    EXPECT_EQ(nativeNames("café"), (Names{"café", "caf\xE9"}));
    EXPECT_EQ(nativeNames("é＼"), (Names{"é＼", "é\\", "\xE9\\"}));
    EXPECT_EQ(nativeNames("日本"), Names{"日本"});
}

TEST(PathRulesTest, EveryByteNameFindsItsWayBack) {
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == '/') {
            continue;
        }
        const std::string native = std::string("x") + static_cast<char>(byte) + "y";
        const Names candidates = nativeNames(shownName(native));
        EXPECT_NE(std::find(candidates.begin(), candidates.end(), native), candidates.end())
            << byte;
    }
}

TEST(PathRulesTest, NativePathsHangBelowTheRoot) {
    EXPECT_EQ(nativePath("/media/disk", "d:\\dir\\sub"), "/media/disk/dir/sub");
    EXPECT_EQ(nativePath("/media/disk", "d:\\dir\\sub\\"), "/media/disk/dir/sub");
    EXPECT_EQ(nativePath("/", "c:\\etc"), "/etc");
    EXPECT_EQ(nativePath("/", "c:\\"), "/");
    EXPECT_EQ(nativePath("/media/disk", "d:"), "/media/disk");
    EXPECT_EQ(nativePath("/m", "d:\\a＼b"), "/m/a＼b");
}

TEST(PathRulesTest, EscapedBytesOfDeviceNamesComeBack) {
    EXPECT_EQ(withoutEscapes("MY\\x20DISK"), "MY DISK");
    EXPECT_EQ(withoutEscapes("\\xc3\\xA9"), "é");
    EXPECT_EQ(withoutEscapes("a\\x2fb\\x5cc"), "a/b\\c");
    EXPECT_EQ(withoutEscapes("plain"), "plain");
    EXPECT_EQ(withoutEscapes("\\x2"), "\\x2");
    EXPECT_EQ(withoutEscapes("\\xg0 \\x0g \\y"), "\\xg0 \\x0g \\y");
}

}  // namespace
}  // namespace platform
