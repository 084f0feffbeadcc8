// Settings files as only systems of the POSIX family have them.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/file_private_profile.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

class PosixSettingsFile : public testing::Test {
  protected:
    std::string get(const std::string& path) {
        return profile.getString("s", "k", "default", 255, path);
    }
    bool set(const std::string& path) { return profile.writeString("s", "k", "v", path); }

    support::TemporaryFolder folder;
    FilePrivateProfile profile;
};

TEST_F(PosixSettingsFile, APipeReadsAsAMissingFileWithoutWaiting) {
    const std::string path = folder.makeFifo("vdln.ini");
    EXPECT_EQ(get(path), "default");
    EXPECT_FALSE(set(path));
}

TEST_F(PosixSettingsFile, PermissionsAreKept) {
    const std::string path = folder.makeFile("vdln.ini", "[s]\nk=old\n");
    folder.setPermissions("vdln.ini", 0600);
    ASSERT_TRUE(set(path));
    EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(path).permissions()), 0600U);
}

TEST_F(PosixSettingsFile, ALinkStaysALink) {
    folder.makeFile("real.ini", "[s]\nk=old\n");
    const std::string path = folder.makeLink("vdln.ini", "real.ini");
    ASSERT_TRUE(set(path));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(folder.read("real.ini"), "[s]\nk=v\n");
}

TEST_F(PosixSettingsFile, AnOddNameIsFound) {
    const std::string path = folder.makeFile("sett\\ings \xE9 日本.ini", "[s]\nk=1\n");
    EXPECT_EQ(get(path), "1");
    EXPECT_TRUE(set(path));
    EXPECT_EQ(get(path), "v");
}

}  // namespace
}  // namespace platform
