#include "platform/mount_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

/// A mount of a whole file system, its device named after the source.
Mount mounted(const std::string& folder, const std::string& fileSystem, const std::string& source,
              const std::string& root = "/") {
    return {folder, fileSystem, source, root, source, false};
}

std::vector<std::string> foldersOf(const std::vector<Mount>& mounts) {
    std::vector<std::string> folders;
    folders.reserve(mounts.size());
    for (const Mount& mount : mounts) {
        folders.push_back(mount.folder);
    }
    return folders;
}

using Folders = std::vector<std::string>;

const Mount rootMount = mounted("/", "ext4", "/dev/sda1");

TEST(MediaAmongTest, TheRootComesFirstAndTheOthersInOrderOfTheirFolders) {
    EXPECT_EQ(foldersOf(mediaAmong({mounted("/media/b", "vfat", "/dev/sdc1"), rootMount,
                                    mounted("/home", "ext4", "/dev/sda2"),
                                    mounted("/media/a", "ext4", "/dev/sdb1")})),
              (Folders{"/", "/home", "/media/a", "/media/b"}));
}

TEST(MediaAmongTest, WhatIsNoMediumIsLeftOut) {
    const Mount others[] = {
        mounted("/proc", "proc", "proc"),
        mounted("/sys", "sysfs", "sysfs"),
        mounted("/sys/fs/cgroup", "cgroup2", "cgroup2"),
        mounted("/dev", "devtmpfs", "udev"),
        mounted("/dev/shm", "tmpfs", "tmpfs"),
        mounted("/run", "tmpfs", "tmpfs"),
        mounted("/run/user/1000", "tmpfs", "tmpfs"),
        mounted("/run/user/1000/gvfs", "fuse.gvfsd-fuse", "gvfsd-fuse"),
        mounted("/run/credentials/x", "ramfs", "none"),
        mounted("/tmp", "tmpfs", "tmpfs"),
        mounted("/var/lock", "tmpfs", "tmpfs"),
        mounted("/snap/core/1", "squashfs", "/dev/loop0"),
        mounted("/var/lib/snapd/snap/core/1", "squashfs", "/dev/loop1"),
        mounted("/var/lib/docker/overlay2/x/merged", "overlay", "overlay"),
        mounted("/var/lib/docker/volumes/x", "ext4", "/dev/sdz1"),
        mounted("/mnt/merged", "overlay", "overlay"),
        mounted("/proc/sys/fs/binfmt_misc", "autofs", "systemd-1"),
        mounted("/net", "autofs", "auto.net"),
        mounted("/tmp/.mount_ProgX1", "fuse.Program.AppImage", "Program.AppImage"),
    };
    for (const Mount& other : others) {
        EXPECT_EQ(foldersOf(mediaAmong({rootMount, other})), Folders{"/"}) << other.folder;
    }
}

TEST(MediaAmongTest, WhatLooksLikeASystemPlaceButIsNotStays) {
    for (const char* const folder : {"/run/media/me/DISK", "/media/DISK", "/mnt", "/snapshots",
                                     "/devices", "/runner", "/processes", "/home/me/mnt"}) {
        EXPECT_EQ(foldersOf(mediaAmong({rootMount, mounted(folder, "ext4", "/dev/sdb1")})),
                  (Folders{"/", folder}));
    }
}

TEST(MediaAmongTest, AMemoryDiskThatAPersonMountedStays) {
    for (const char* const folder : {"/media/ram", "/mnt/ram", "/run/media/me/ram", "/ramdisk"}) {
        EXPECT_EQ(foldersOf(mediaAmong({rootMount, mounted(folder, "tmpfs", "tmpfs")})),
                  (Folders{"/", folder}));
    }
}

TEST(MediaAmongTest, OfBindMountsTheOneOfTheWholeFileSystemStays) {
    EXPECT_EQ(foldersOf(mediaAmong({mounted("/home/me/shortcut", "ext4", "/dev/sda1", "/srv"),
                                    rootMount, mounted("/mnt/part", "ext4", "/dev/sdb1", "/sub"),
                                    mounted("/mnt/whole", "ext4", "/dev/sdb1")})),
              (Folders{"/", "/mnt/whole"}));
}

TEST(MediaAmongTest, OfTheSameFileSystemMountedTwiceTheFirstFolderStays) {
    EXPECT_EQ(foldersOf(mediaAmong({rootMount, mounted("/mnt/b", "ext4", "/dev/sdb1"),
                                    mounted("/mnt/a", "ext4", "/dev/sdb1")})),
              (Folders{"/", "/mnt/a"}));
}

TEST(MediaAmongTest, TheRootStaysEvenAsAViewOfSomethingWider) {
    EXPECT_EQ(foldersOf(mediaAmong({mounted("/", "btrfs", "/dev/sda1", "/@"),
                                    mounted("/mnt/all", "btrfs", "/dev/sda1", "/")})),
              (Folders{"/", "/mnt/all"}));
}

TEST(MediaAmongTest, SubvolumesBesideEachOtherAreDrivesOfTheirOwn) {
    EXPECT_EQ(foldersOf(mediaAmong({mounted("/", "btrfs", "/dev/sda1", "/@"),
                                    mounted("/home", "btrfs", "/dev/sda1", "/@home")})),
              (Folders{"/", "/home"}));
}

TEST(MediaAmongTest, MountsOverSingleFilesAreLeftOut) {
    Mount onFile = mounted("/etc/hosts", "ext4", "/dev/sdx1", "/containers/1/hosts");
    onFile.onFile = true;
    EXPECT_EQ(foldersOf(mediaAmong({mounted("/", "overlay", "overlay"), onFile})), Folders{"/"});
}

TEST(MediaAmongTest, OnlyTheLastMountOnAFolderIsVisible) {
    const auto media = mediaAmong(
        {rootMount, mounted("/mnt", "ext4", "/dev/sdb1"), mounted("/mnt", "vfat", "/dev/sdc1")});
    ASSERT_EQ(media.size(), 2U);
    EXPECT_EQ(media[1].fileSystem, "vfat");
    EXPECT_EQ(foldersOf(mediaAmong({rootMount, mounted("/mnt", "ext4", "/dev/sdb1"),
                                    mounted("/mnt", "autofs", "x")})),
              Folders{"/"});
}

TEST(MediaAmongTest, NothingMountedIsNoDrive) { EXPECT_TRUE(mediaAmong({}).empty()); }

TEST(DriveTypeTest, TableOfTypes) {
    const DeviceFacts plain;
    const DeviceFacts stick{"STICK", true, false};
    const DeviceFacts disc{"DISC", true, true};
    const struct {
        Mount mount;
        DeviceFacts facts;
        DriveType type;
    } cases[] = {
        {rootMount, plain, DriveType::Fixed},
        {mounted("/m", "vfat", "/dev/sdb1"), stick, DriveType::Removable},
        {mounted("/m", "iso9660", "/dev/sr0"), disc, DriveType::CdRom},
        {mounted("/m", "udf", "/dev/sdb1"), stick, DriveType::CdRom},
        {mounted("/m", "iso9660", "/dev/loop0"), plain, DriveType::CdRom},
        {mounted("/m", "ext4", "/dev/sr0"), disc, DriveType::CdRom},
        {mounted("/m", "tmpfs", "tmpfs"), plain, DriveType::RamDisk},
        {mounted("/m", "nfs4", "server:/x"), plain, DriveType::Remote},
        {mounted("/m", "cifs", "//server/share"), plain, DriveType::Remote},
        {mounted("/m", "fuse.sshfs", "me@server:"), plain, DriveType::Remote},
        {mounted("/m", "fuseblk", "/dev/sdb1"), stick, DriveType::Removable},
        {mounted("/m", "zfs", "pool/data"), plain, DriveType::Fixed},
    };
    for (const auto& drive : cases) {
        EXPECT_EQ(driveTypeOf(drive.mount, drive.facts), drive.type)
            << drive.mount.fileSystem << " " << drive.mount.source;
    }
}

TEST(DriveLabelTest, TheShareOfANetworkDriveElseTheVolumesLabel) {
    EXPECT_EQ(driveLabelOf(mounted("/m", "cifs", "//server/share"), {}), "//server/share");
    EXPECT_EQ(driveLabelOf(mounted("/m", "vfat", "/dev/sdb1"), {"STICK", true, false}), "STICK");
    EXPECT_EQ(driveLabelOf(rootMount, {}), "");
}

TEST(MountHoldingTest, TheDeepestMountAboveAFolderHoldsIt) {
    const std::vector<Mount> mounts = {rootMount, mounted("/home", "ext4", "/dev/sda2"),
                                       mounted("/home/me/disk", "vfat", "/dev/sdb1"),
                                       mounted("/home/me/disk", "ext4", "/dev/sdc1")};
    EXPECT_EQ(mountHolding(mounts, "/etc")->source, "/dev/sda1");
    EXPECT_EQ(mountHolding(mounts, "/")->source, "/dev/sda1");
    EXPECT_EQ(mountHolding(mounts, "/home")->source, "/dev/sda2");
    EXPECT_EQ(mountHolding(mounts, "/homestead")->source, "/dev/sda1");
    EXPECT_EQ(mountHolding(mounts, "/home/me/disk/x")->source, "/dev/sdc1");
    EXPECT_EQ(mountHolding({}, "/etc"), nullptr);
}

std::string lettersOf(const std::vector<DriveListEntry>& drives) {
    std::string letters;
    for (const DriveListEntry& drive : drives) {
        letters += drive.letter;
    }
    return letters;
}

TEST(DriveLettersTest, TheRootIsCAndTheOthersFollow) {
    const auto drives = withLetters({{'?', "", "/", 2}, {'?', "A", "/a", 2}, {'?', "B", "/b", 2}});
    EXPECT_EQ(lettersOf(drives), "cde");
    EXPECT_EQ(drives[2].label, "B");
}

TEST(DriveLettersTest, WithoutARootNothingIsC) {
    EXPECT_EQ(lettersOf(withLetters({{'?', "A", "/a", 2}})), "d");
}

TEST(DriveLettersTest, LettersEndAtZ) {
    std::vector<DriveListEntry> many = {{'?', "", "/", 2}};
    for (int i = 0; i < 40; ++i) {
        many.push_back({'?', "", "/mnt/" + std::to_string(100 + i), 2});
    }
    const auto drives = withLetters(many);
    EXPECT_EQ(lettersOf(drives), "cdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(drives.back().folder, "/mnt/122");
}

TEST(DriveLettersTest, FoldersMadeDrivesWin) {
    const auto drives = withFolderDrives({{'c', "", "/", 2}, {'d', "D", "/d", 2}},
                                         {{'p', {'?', "Photos", "/photos", 2}},
                                          {'d', {'?', "Dias", "/dias", 2}},
                                          {'a', {'?', "First", "/first", 2}}});
    EXPECT_EQ(lettersOf(drives), "acdp");
    EXPECT_EQ(drives[2].label, "Dias");
}

TEST(DriveLettersTest, TheFreeLetterIsTheLastOne) {
    EXPECT_EQ(freeLetter({}), 'z');
    EXPECT_EQ(freeLetter({{'z', "", "", 2}, {'c', "", "", 2}, {'y', "", "", 2}}), 'x');
    std::vector<DriveListEntry> all;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        all.push_back({letter, "", "", 2});
    }
    EXPECT_EQ(freeLetter(all), 0);
}

TEST(FolderNameTest, TheLastNameOfAPath) {
    EXPECT_EQ(folderName("/home/me/Photos"), "Photos");
    EXPECT_EQ(folderName("/home/me/Photos//"), "Photos");
    EXPECT_EQ(folderName("Photos"), "Photos");
    EXPECT_EQ(folderName("/"), "");
    EXPECT_EQ(folderName(""), "");
}

}  // namespace
}  // namespace platform
