#include "base/archive_location.h"

#include <gtest/gtest.h>

namespace base {
namespace {

struct Case {
    const char* fullPath;
    ArchiveLocation expected;
};

void expectSplits(const Case& c) {
    const ArchiveLocation location = splitArchivePath(c.fullPath);
    EXPECT_EQ(location, c.expected)
        << c.fullPath << " gave \"" << location.folder << "\" and \"" << location.name << '"';
    EXPECT_EQ(location.fullPath(), c.fullPath);
}

TEST(ArchiveLocation, SplitsAtTheLastBackslashAndKeepsItInTheFolder) {
    const Case cases[] = {
        {"c:\\archives\\photos.mdb", {"c:\\archives\\", "photos.mdb"}},
        {"c:\\photos.mdb", {"c:\\", "photos.mdb"}},
        {"\\\\server\\share\\photos.mdb", {"\\\\server\\share\\", "photos.mdb"}},
        {"c:\\архив\\фото.mdb", {"c:\\архив\\", "фото.mdb"}},
        {"c:\\two dots\\a.b.mdb", {"c:\\two dots\\", "a.b.mdb"}},
    };
    for (const Case& c : cases) {
        expectSplits(c);
    }
}

TEST(ArchiveLocation, WithoutASeparatorTheFolderIsEmpty) {
    expectSplits({"photos.mdb", {"", "photos.mdb"}});
    expectSplits({"", {"", ""}});
}

TEST(ArchiveLocation, AFinalSeparatorLeavesNoName) {
    expectSplits({"c:\\archives\\", {"c:\\archives\\", ""}});
}

#ifndef _WIN32
TEST(ArchiveLocation, SplitsAtTheLastOfEitherSeparatorWhereTheSlashIsOne) {
    const Case cases[] = {
        {"/home/me/photos.mdb", {"/home/me/", "photos.mdb"}},
        {"/photos.mdb", {"/", "photos.mdb"}},
        {"/mnt/d\\photos.mdb", {"/mnt/d\\", "photos.mdb"}},
        {"c:\\archives/photos.mdb", {"c:\\archives/", "photos.mdb"}},
    };
    for (const Case& c : cases) {
        expectSplits(c);
    }
}
#endif

}  // namespace
}  // namespace base
