#include "platform/windows/windows_drives.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "base/failure.h"
#include "platform/windows/windows_api.h"
#include "tests/support/memory_profile.h"
#include "tests/support/temporary_folder.h"

namespace platform::windows {
namespace {

class WindowsDrivesTest : public testing::Test {
  protected:
    std::optional<DriveListEntry> entryOf(char letter) {
        for (const DriveListEntry& entry : drives.list()) {
            if (entry.letter == letter) {
                return entry;
            }
        }
        return std::nullopt;
    }

    support::TemporaryFolder folder;
    support::MemoryProfile profile;
    WindowsDrives drives{profile, "vdln.ini"};
};

TEST_F(WindowsDrivesTest, TheSystemsDriveIsListedAndAnswers) {
    const auto entry = entryOf('c');
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->folder, "C:\\");
    EXPECT_EQ(entry->type, static_cast<std::int32_t>(DriveType::Fixed));
    const auto drive = drives.createFileSystemObject()->getDrive("c:");
    EXPECT_EQ(drive->driveLetter(), "C");
    EXPECT_EQ(drive->driveType(), static_cast<std::int32_t>(DriveType::Fixed));
    std::array<char, MAX_PATH + 1> label{};
    ASSERT_TRUE(::GetVolumeInformationA("C:\\", label.data(), static_cast<DWORD>(label.size()),
                                        nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_EQ(drive->volumeName(), label.data());
    EXPECT_EQ(entry->label, label.data());
}

TEST_F(WindowsDrivesTest, SpaceIsWhatTheSystemSays) {
    ULARGE_INTEGER freeToCaller{};
    ULARGE_INTEGER total{};
    ULARGE_INTEGER free{};
    ASSERT_TRUE(::GetDiskFreeSpaceExA("c:", &freeToCaller, &total, &free));
    DiskSpace space;
    ASSERT_TRUE(drives.getDiskFreeSpace("c:", space));
    EXPECT_EQ(static_cast<DWORD>(space.totalBytes.low), total.LowPart);
    EXPECT_EQ(static_cast<DWORD>(space.totalBytes.high), total.HighPart);
}

TEST_F(WindowsDrivesTest, ALetterThatTheSystemDoesNotHaveIsNoDrive) {
    char letter = 'a';
    while ((::GetLogicalDrives() >> (letter - 'a') & 1U) != 0) {
        ++letter;
    }
    EXPECT_FALSE(entryOf(letter));
    EXPECT_THROW(drives.createFileSystemObject()->getDrive(std::string(1, letter) + ":"),
                 base::FileFailure);
}

TEST_F(WindowsDrivesTest, AFolderDriveWinsOverTheSystemsAndHasItsFoldersName) {
    profile.files["vdln.ini"] = "[drives]\nc=" + folder.makeFolder("Фото 東京") + "\n";
    const auto entry = entryOf('c');
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->text(), "c: [Фото 東京]");
    EXPECT_EQ(drives.rootOf('C'), folder.pathOf("Фото 東京"));
}

TEST_F(WindowsDrivesTest, WhatIsNoFolderDoesNotBecomeADrive) {
    EXPECT_THROW(drives.makeFolderDrive(folder.pathOf("missing")), base::FileFailure);
    EXPECT_THROW(drives.makeFolderDrive(folder.makeFile("file")), base::FileFailure);
    EXPECT_THROW(drives.makeFolderDrive(""), base::FileFailure);
}

}  // namespace
}  // namespace platform::windows
