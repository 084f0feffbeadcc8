#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/drives.h"

// Which of a machine's mounted file systems are drives, and under which letter: rules over plain
// values, for machines without drive letters.

namespace platform {

/// One mounted file system, as the machine's mount table and its devices describe it.
struct Mount {
    std::string folder;      ///< where it is mounted, native
    std::string fileSystem;  ///< "ext4", "tmpfs", "nfs4", ...
    std::string source;      ///< the device's path, the share, or any word
    std::string root;        ///< which folder of the file system is mounted; "/" is the whole
    std::string device;      ///< number of the device, the same for all mounts of one file system
    bool onFile = false;     ///< mounted over a single file, not a folder
};

/// What a device says of itself.
struct DeviceFacts {
    std::string label;
    bool removable = false;  ///< USB, a card reader, or marked removable by the kernel
    bool optical = false;
};

/// The mounts that a person would call media: the root file system first, then the others in the
/// order of their folders. A folder on which several were mounted shows the last one, so only that
/// counts.
std::vector<Mount> mediaAmong(const std::vector<Mount>& mounts);

/// The mount that holds a folder (absolute, links resolved); null where the table has none.
const Mount* mountHolding(const std::vector<Mount>& mounts, const std::string& folder);

bool isNetworkMount(const Mount& mount);
DriveType driveTypeOf(const Mount& mount, const DeviceFacts& facts);
/// What the drive list shows in brackets: the share of a network drive, else the volume's label.
std::string driveLabelOf(const Mount& mount, const DeviceFacts& facts);

/// Gives letters to drives that have none yet: "c" to the one mounted at "/", then "d" and up in
/// the given order. Drives beyond "z" are left out.
std::vector<DriveListEntry> withLetters(std::vector<DriveListEntry> drives);

/// Adds folders made drives by letter. They win over drives of the same letter.
std::vector<DriveListEntry> withFolderDrives(std::vector<DriveListEntry> drives,
                                             const std::map<char, DriveListEntry>& folderDrives);

/// The last free letter of the alphabet, so that it stays clear of the mounts; 0 where none is
/// free.
char freeLetter(const std::vector<DriveListEntry>& drives);

/// The last name of a native folder path; "/" itself has none.
std::string folderName(const std::string& folder);

}  // namespace platform
