#include "platform/file_private_profile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/file_path.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

class FilePrivateProfileTest : public testing::Test {
  protected:
    std::string get(const std::string& path) {
        return profile.getString("s", "k", "default", 255, path);
    }
    bool set(const std::string& path) { return profile.writeString("s", "k", "v", path); }
    int filesInFolder() const {
        int count = 0;
        for ([[maybe_unused]] const auto& file :
             std::filesystem::directory_iterator(base::filePath(folder.path()))) {
            ++count;
        }
        return count;
    }

    support::TemporaryFolder folder;
    FilePrivateProfile profile;
};

TEST_F(FilePrivateProfileTest, AFolderReadsAsAMissingFileAndIsNotWritten) {
    const std::string path = folder.makeFolder("vdln.ini");
    EXPECT_EQ(get(path), "default");
    EXPECT_FALSE(set(path));
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(FilePrivateProfileTest, AnEmptyFileIsWritten) {
    const std::string path = folder.makeFile("vdln.ini");
    EXPECT_EQ(get(path), "default");
    EXPECT_TRUE(set(path));
    EXPECT_EQ(folder.read("vdln.ini"), "[s]\nk=v\n");
}

TEST_F(FilePrivateProfileTest, AMissingFolderIsNotMade) {
    EXPECT_FALSE(set(folder.pathOf("settings/vdln.ini")));
    EXPECT_FALSE(folder.exists("settings"));
}

TEST_F(FilePrivateProfileTest, NothingIsLeftBesideTheFile) {
    ASSERT_TRUE(set(folder.pathOf("vdln.ini")));
    ASSERT_TRUE(set(folder.pathOf("vdln.ini")));
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(FilePrivateProfileTest, AFailureWhileWritingLeavesTheFileAsItWas) {
    const std::string path = folder.makeFile("vdln.ini", "[s]\nk=old\n");
    // The new text cannot be put beside the old file: a folder stands in its way.
    folder.makeFile("vdln.ini.new/occupied");
    EXPECT_FALSE(set(path));
    EXPECT_EQ(folder.read("vdln.ini"), "[s]\nk=old\n");
    EXPECT_TRUE(folder.exists("vdln.ini.new/occupied"));
}

TEST_F(FilePrivateProfileTest, TenMegabytesAreReadAndWritten) {
    std::string rest = "[s]\n";
    rest.resize(10'000'000, ';');
    rest += "\n";
    const std::string path = folder.makeFile("vdln.ini", rest);
    EXPECT_TRUE(set(path));
    EXPECT_EQ(get(path), "v");
    EXPECT_TRUE(folder.read("vdln.ini") == rest + "k=v\n");
}

}  // namespace
}  // namespace platform
