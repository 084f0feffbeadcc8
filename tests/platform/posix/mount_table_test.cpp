#include "platform/posix/mount_table.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include <algorithm>
#include <string>

#include "tests/platform/posix/child_process.h"
#include "tests/support/temporary_folder.h"

namespace platform::posix {
namespace {

using support::ChildResult;

TEST(MountTableTest, TheRootFileSystemIsInTheTable) {
    const auto mounts = readMountTable();
    const auto root = std::ranges::find(mounts, "/", &Mount::folder);
    ASSERT_NE(root, mounts.end());
    EXPECT_FALSE(root->fileSystem.empty());
    EXPECT_FALSE(root->root.empty());
    EXPECT_NE(root->device.find(':'), std::string::npos);
    EXPECT_FALSE(root->onFile);
}

TEST(MountTableTest, AMountWithoutDeviceHasNoFacts) {
    const DeviceFacts facts = deviceFactsOf({"/nowhere", "tmpfs", "tmpfs", "/", "0:9999", false});
    EXPECT_EQ(facts.label, "");
    EXPECT_FALSE(facts.removable);
    EXPECT_FALSE(facts.optical);
}

TEST(MountTableTest, MountsOfThisMomentAreToldWithFoldersOfAnyName) {
    support::TemporaryFolder folder;
    const std::string place = folder.makeFolder("my disk \\ 日本");
    const std::string file = folder.makeFile("file", "x");
    const auto result = support::inChildProcess([&] {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("ram", place.c_str(), "tmpfs", 0, nullptr) != 0 ||
            ::mount(file.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) != 0) {
            return ChildResult::Refused;
        }
        const auto mounts = readMountTable();
        const auto disk = std::ranges::find(mounts, place, &Mount::folder);
        const auto onFile = std::ranges::find(mounts, file, &Mount::folder);
        const bool right = disk != mounts.end() && disk->fileSystem == "tmpfs" &&
                           disk->source == "ram" && disk->root == "/" && !disk->onFile &&
                           onFile != mounts.end() && onFile->onFile;
        return right ? ChildResult::Passed : ChildResult::Failed;
    });
    if (result == ChildResult::Refused) {
        GTEST_SKIP() << "mounting needs rights that this process does not have";
    }
    EXPECT_EQ(result, ChildResult::Passed);
}

}  // namespace
}  // namespace platform::posix
