#include "shell/movie_library.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "tests/support/fake_platform.h"
#include "tests/support/temporary_folder.h"

namespace shell {
namespace {

class MovieLibraryTest : public testing::Test {
  protected:
    MovieLibraryTest() { machine.folder = VERDOLIN_PROGRAM_FOLDER; }

    void SetUp() override {
        if (!std::ifstream(movie("overview.swf"))) {
            GTEST_SKIP() << "this build has no movies";
        }
    }
    static std::string movie(const char* name) {
        return std::string(VERDOLIN_PROGRAM_FOLDER) + "/settings/" + name;
    }
    static std::string bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    int picturesOf(const std::string& path) {
        const auto decoder = library.open(path);
        MovieFrame frame;
        int pictures = 0;
        while (decoder && decoder->nextFrame(frame)) {
            ++pictures;
        }
        return pictures;
    }

    support::FakeShell machine;
    support::TemporaryFolder folder;
    MovieLibrary library{machine};
};

TEST_F(MovieLibraryTest, BothMoviesAreWholeAndSmall) {
    EXPECT_EQ(picturesOf(movie("overview.swf")), 96);
    EXPECT_EQ(picturesOf(movie("accessdata.swf")), 24);
    EXPECT_LT(bytesOf(movie("overview.swf")).size(), 300U * 1024);
    EXPECT_LT(bytesOf(movie("accessdata.swf")).size(), 300U * 1024);
}

TEST_F(MovieLibraryTest, TheyAreFlashFiles) {
    EXPECT_EQ(bytesOf(movie("overview.swf")).substr(1, 2), "WS");
    EXPECT_EQ(bytesOf(movie("accessdata.swf")).substr(1, 2), "WS");
}

TEST_F(MovieLibraryTest, PicturesMove) {
    const auto decoder = library.open(movie("overview.swf"));
    ASSERT_TRUE(decoder);
    MovieFrame frame;
    std::set<std::vector<std::uint8_t>> different;
    for (int i = 0; i < 12; ++i) {
        ASSERT_TRUE(decoder->nextFrame(frame));
        EXPECT_EQ(frame.pixels.size(), static_cast<std::size_t>(frame.width * frame.height * 4));
        EXPECT_EQ(frame.milliseconds, 83);
        different.insert(frame.pixels);
    }
    EXPECT_GT(different.size(), 6U);
}

TEST_F(MovieLibraryTest, WhatIsNoMovieGivesNone) {
    EXPECT_EQ(library.open(folder.pathOf("missing.swf")), nullptr);
    EXPECT_EQ(library.open(folder.path()), nullptr);
    EXPECT_EQ(library.open(folder.makeFile("empty.swf")), nullptr);
    EXPECT_EQ(library.open(folder.makeFile("text.swf", std::string(5000, 'x'))), nullptr);
}

TEST_F(MovieLibraryTest, AMovieThatWasCutGivesAtMostItsFirstPictures) {
    const std::string whole = bytesOf(movie("accessdata.swf"));
    for (std::size_t length = 0; length < whole.size(); length += 997) {
        EXPECT_LE(picturesOf(folder.makeFile("cut.swf", whole.substr(0, length))), 24) << length;
    }
}

TEST_F(MovieLibraryTest, ADamagedMovieEndsNothing) {
    const std::string whole = bytesOf(movie("accessdata.swf"));
    for (std::size_t place = 3; place < whole.size(); place += 1499) {
        std::string damaged = whole;
        damaged[place] = static_cast<char>(~damaged[place]);
        EXPECT_LE(picturesOf(folder.makeFile("damaged.swf", damaged)), 1000) << place;
    }
}

TEST_F(MovieLibraryTest, WithoutTheLibraryThereIsNoMovie) {
    support::FakeShell elsewhere;
    elsewhere.folder = folder.path();
    MovieLibrary none(elsewhere);
    EXPECT_EQ(none.open(movie("overview.swf")), nullptr);
}

}  // namespace
}  // namespace shell
