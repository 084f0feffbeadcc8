#include "platform/posix/posix_drives.h"

#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "base/failure.h"
#include "platform/directory_lister.h"
#include "platform/platform.h"
#include "tests/support/memory_profile.h"
#include "tests/support/temporary_folder.h"

namespace platform::posix {
namespace {

class PosixDrivesTest : public testing::Test {
  protected:
    void setDrives(const std::string& lines) { profile.files["ini"] = "[drives]\n" + lines; }

    support::TemporaryFolder folder;
    support::MemoryProfile profile;
    PosixDrives drives{profile, "ini"};
};

TEST_F(PosixDrivesTest, LetterCIsTheRootFileSystem) {
    EXPECT_EQ(drives.rootOf('c'), "/");
    EXPECT_EQ(drives.rootOf('C'), "/");
}

TEST_F(PosixDrivesTest, TheListIsInTheOrderOfTheLetters) {
    setDrives("z=/usr\nb=/etc\n");
    const auto list = drives.list();
    EXPECT_TRUE(std::ranges::is_sorted(list, {}, &DriveListEntry::letter));
    EXPECT_EQ(list.front().letter, 'b');
    EXPECT_EQ(list.back().letter, 'z');
}

TEST_F(PosixDrivesTest, AFolderOfTheSettingsFileIsADrive) {
    const std::string photos = folder.makeFolder("Photos");
    setDrives("P=" + photos + "\n");
    const auto drive = drives.find('p');
    ASSERT_TRUE(drive);
    EXPECT_EQ(drive->text(), "p: [Photos]");
    EXPECT_EQ(drive->folder, photos);
    struct statvfs facts {};
    ASSERT_EQ(::statvfs(photos.c_str(), &facts), 0);
    DiskSpace space;
    ASSERT_TRUE(drives.getDiskFreeSpace("p:", space));
    const std::uint64_t total = std::uint64_t{facts.f_blocks} * facts.f_frsize;
    EXPECT_EQ(static_cast<std::uint32_t>(space.totalBytes.low), static_cast<std::uint32_t>(total));
    EXPECT_EQ(static_cast<std::uint32_t>(space.totalBytes.high),
              static_cast<std::uint32_t>(total >> 32));
}

TEST_F(PosixDrivesTest, ItsTypeIsThatOfTheFileSystemThatHoldsIt) {
    setDrives("p=/etc\n");
    EXPECT_EQ(drives.find('p')->type, drives.find('c')->type);
}

TEST_F(PosixDrivesTest, ItWinsOverTheMountOfTheSameLetter) {
    setDrives("c=" + folder.path() + "\n");
    EXPECT_EQ(drives.rootOf('c'), folder.path());
    EXPECT_EQ(std::ranges::count(drives.list(), 'c', &DriveListEntry::letter), 1);
}

TEST_F(PosixDrivesTest, ALongPathIsNotCut) {
    std::string name = "deep";
    for (int i = 0; i < 10; ++i) {
        name += "/" + std::string(100, 'x');
    }
    const std::string deep = folder.makeFolder(name);
    setDrives("p=" + deep + "\n");
    EXPECT_EQ(drives.rootOf('p'), deep);
}

TEST_F(PosixDrivesTest, AFolderThatIsNotThereIsADriveThatIsNotReady) {
    setDrives("p=" + folder.pathOf("missing") + "\n");
    ASSERT_TRUE(drives.find('p'));
    const auto drive = drives.createFileSystemObject()->getDrive("p:");
    EXPECT_THROW(drive->volumeName(), base::FileFailure);
    DiskSpace space;
    EXPECT_FALSE(drives.getDiskFreeSpace("p:", space));
}

TEST_F(PosixDrivesTest, AFileIsNoDriveRoot) {
    setDrives("p=" + folder.makeFile("file") + "\n");
    const auto drive = drives.createFileSystemObject()->getDrive("p:");
    EXPECT_THROW(drive->volumeName(), base::FileFailure);
}

TEST_F(PosixDrivesTest, OtherKeysOfTheSectionAreNoDrives) {
    setDrives("pp=/etc\n1=/etc\nq=\n");
    EXPECT_FALSE(drives.find('p'));
    EXPECT_FALSE(drives.find('q'));
    EXPECT_FALSE(drives.find('1'));
    EXPECT_FALSE(drives.find('\\'));
}

TEST_F(PosixDrivesTest, AnOddFolderNameIsShownAsNamesAre) {
    setDrives("p=" + folder.makeFolder("a\\b") + "\n");
    EXPECT_EQ(drives.find('p')->label, "a＼b");
}

TEST_F(PosixDrivesTest, AFolderMadeADriveForThisRunTakesTheLastFreeLetter) {
    EXPECT_EQ(drives.makeFolderDrive(folder.path()), 'z');
    setDrives("y=/etc\n");
    EXPECT_EQ(drives.makeFolderDrive(folder.makeFolder("sub/../sub")), 'x');
    EXPECT_EQ(drives.rootOf('x'), folder.pathOf("sub"));
}

TEST_F(PosixDrivesTest, OnlyFoldersCanBeMadeDrives) {
    EXPECT_THROW(drives.makeFolderDrive(folder.pathOf("missing")), base::FileFailure);
    EXPECT_THROW(drives.makeFolderDrive(folder.makeFile("file")), base::FileFailure);
    EXPECT_THROW(drives.makeFolderDrive(""), base::FileFailure);
}

TEST_F(PosixDrivesTest, WithAllLettersTakenNoFolderCanBeMadeADrive) {
    std::string lines;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        lines += std::string(1, letter) + "=/etc\n";
    }
    setDrives(lines);
    EXPECT_EQ(drives.list().size(), 26U);
    EXPECT_THROW(drives.makeFolderDrive(folder.path()), base::FileFailure);
}

TEST(PosixPlatformTest, AWholeMachineListsAFolderMadeADrive) {
    support::TemporaryFolder folder;
    folder.makeFile("Photos/summer.pdf", "12345");
    const std::string settings =
        folder.makeFile("vdln.ini", "[drives]\r\np=" + folder.pathOf("Photos") + "\r\n");
    const auto machine = createPlatform(settings);
    const auto lister = machine->createDirectoryLister();
    const auto listing = lister->findFirst("p:\\summer*");
    ASSERT_TRUE(listing);
    FindData data;
    ASSERT_TRUE(listing->next(data));
    EXPECT_EQ(data.cFileName, "summer.pdf");
    EXPECT_EQ(data.nFileSizeLow, 5U);
    EXPECT_EQ(lister->typeName("p:\\summer.pdf"), "PDF document");
}

}  // namespace
}  // namespace platform::posix
