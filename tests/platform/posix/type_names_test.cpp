#include "platform/posix/type_names.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QMimeDatabase>
#include <QMimeType>
#include <string>

#include "base/text.h"
#include "platform/type_name_rules.h"

namespace platform::posix {
namespace {

std::string nameOf(TypeNames& types, const std::string& name) {
    return std::string(types.ofFile(name));
}

TEST(TypeNamesTest, KnownTypesHaveTheirEnglishComment) {
    TypeNames types;
    EXPECT_EQ(nameOf(types, "a.pdf"), "PDF document");
    EXPECT_EQ(nameOf(types, "A.PDF"), "PDF document");
    EXPECT_EQ(nameOf(types, "letter.txt"), "plain text document");
    EXPECT_EQ(nameOf(types, "photo.jpg"), "JPEG image");
}

TEST(TypeNamesTest, UnknownTypesAreNamedAfterTheExtension) {
    TypeNames types;
    EXPECT_EQ(nameOf(types, "a.qqq"), "QQQ File");
    EXPECT_EQ(nameOf(types, "a.bin"), "BIN File");
    EXPECT_EQ(nameOf(types, "noextension"), "File");
    EXPECT_EQ(nameOf(types, ".qqq"), "File");
    EXPECT_EQ(nameOf(types, "x.qqq"), "QQQ File");
    EXPECT_EQ(nameOf(types, ""), "File");
    EXPECT_EQ(nameOf(types, "0123456789abcdef0123456789abcdef01234567"), "File");
}

TEST(TypeNamesTest, TheWholeNameCountsWhereTheDatabaseSaysSo) {
    TypeNames types;
    EXPECT_EQ(nameOf(types, "Makefile"), "Makefile build file");
    EXPECT_EQ(nameOf(types, "README"), "README document");
    EXPECT_EQ(nameOf(types, "CMakeLists.txt"), "CMake source code");
    EXPECT_EQ(nameOf(types, "other.txt"), "plain text document");
    EXPECT_EQ(nameOf(types, "notes~"), "backup file");
}

TEST(TypeNamesTest, CompoundExtensionsAreToldApart) {
    TypeNames types;
    EXPECT_EQ(nameOf(types, "a.gz"), "Gzip archive");
    EXPECT_EQ(nameOf(types, "a.tar.gz"), "Tar archive (gzip-compressed)");
    EXPECT_EQ(nameOf(types, "b.gz"), "Gzip archive");
    EXPECT_EQ(nameOf(types, ".gz"), "File");
    EXPECT_EQ(nameOf(types, "c.gz"), "Gzip archive");
    EXPECT_EQ(nameOf(types, "lib.so.1.2"), nameOf(types, "lib.so"));
}

/// What the database answers, asked for each name by itself.
std::string askedDirectly(const std::string& name) {
    const QLocale before;
    QLocale::setDefault(QLocale::c());
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QString::fromStdString(name),
                                                           QMimeDatabase::MatchExtension);
    const std::string comment = type.isDefault() ? "" : type.comment().toStdString();
    QLocale::setDefault(before);
    return comment.empty() ? extensionTypeName(name)
                           : std::string(base::firstUtf16Units(comment, longestTypeName));
}

TEST(TypeNamesTest, RememberedAnswersAreThoseOfTheDatabase) {
    TypeNames types;
    const std::string fronts[] = {"",      "x",   "README",   "readme", "core",
                                  "a.tar", "1",   "a.so",     "lib",    "ReadMe",
                                  "x.ps",  "a b", "Makefile", "a.anim", "copying"};
    const std::string backs[] = {
        "",  ".txt", ".TXT",  ".gz",  ".tar.gz", ".so.6", ".so",  ".c",     ".C",   ".1",
        "~", "%",    ",v",    ".bz2", ".am",     ".vdr",  ".xml", ".svg",   ".pdf", ".qqq",
        ".", ".b c", ".日本", ".Z",   ".xz",     ".zst",  ".9",   ".anim3", ".dat", ".html.gz"};
    for (int round = 0; round < 2; ++round) {
        for (const std::string& front : fronts) {
            for (const std::string& back : backs) {
                EXPECT_EQ(nameOf(types, front + back), askedDirectly(front + back)) << front + back;
            }
        }
    }
}

TEST(TypeNamesTest, EveryPatternOfTheDatabaseIsAnswered) {
    TypeNames types;
    int patterns = 0;
    for (const QMimeType& type : QMimeDatabase().allMimeTypes()) {
        for (const QString& pattern : type.globPatterns()) {
            std::string name = pattern.toStdString();
            for (char& letter : name) {
                letter = letter == '*' || letter == '?' ? 'x' : letter;
            }
            EXPECT_EQ(nameOf(types, name), askedDirectly(name)) << name;
            ++patterns;
        }
    }
    EXPECT_GT(patterns, 100);
}

TEST(TypeNamesTest, EnglishWhateverTheLocaleAndTheLocaleStays) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    TypeNames types;
    EXPECT_EQ(nameOf(types, "a.pdf"), "PDF document");
    EXPECT_EQ(nameOf(types, "a.txt"), "plain text document");
    EXPECT_EQ(QLocale(), QLocale(QLocale::German, QLocale::Germany));
    QLocale::setDefault(before);
}

TEST(TypeNamesTest, ManyDifferentNamesAreNoTrouble) {
    TypeNames types;
    for (int i = 0; i < 30'000; ++i) {
        const std::string number = std::to_string(i);
        ASSERT_EQ(nameOf(types, "a.q" + number), "Q" + number + " File");
        ASSERT_EQ(nameOf(types, "a." + number + "x.gz"), "Gzip archive");
    }
    EXPECT_EQ(nameOf(types, "a.pdf"), "PDF document");
}

TEST(TypeNamesTest, NamesOfAnyBytesAreAnswered) {
    TypeNames types;
    EXPECT_EQ(nameOf(types, "a.\xFF\xFE"), extensionTypeName("a.\xFF\xFE"));
    EXPECT_EQ(nameOf(types, std::string(255, '.')), "File");
    EXPECT_EQ(nameOf(types, "line\nfeed.pdf"), "PDF document");
}

}  // namespace
}  // namespace platform::posix
