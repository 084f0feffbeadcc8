#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/drives.h"
#include "platform/folder_drives.h"
#include "platform/mount_rules.h"

namespace platform {
class PrivateProfile;
}

namespace platform::posix {

/// The mounted file systems as drives, and folders that were made drives: by section "drives" of
/// the settings file (key = letter, value = folder) or for this run. The machine is asked anew at
/// every call.
class PosixDrives : public Drives {
  public:
    /// `profile` outlives this object; the settings file need not exist.
    PosixDrives(PrivateProfile& profile, std::string settingsFilePath);

    std::vector<DriveListEntry> list() override;
    std::unique_ptr<FileSystemObject> createFileSystemObject() override;
    bool getDiskFreeSpace(const std::string& root, DiskSpace& space) override;
    char makeFolderDrive(const std::string& folder) override;

    /// The drive of a letter, in any case; none where there is no such drive.
    std::optional<DriveListEntry> find(char letter);
    /// Where the root of that drive lies; asks no device.
    std::optional<std::string> rootOf(char letter);

  private:
    /// The machine at one moment.
    struct Moment {
        std::vector<Mount> mounts;
        std::map<char, DriveListEntry> folderDrives;
        std::vector<DriveListEntry> drives;  ///< with letters and folders only
    };

    Moment look();
    static DriveListEntry described(const Moment& moment, DriveListEntry drive);
    static const DriveListEntry* withLetter(const Moment& moment, char letter);

    FolderDrives folderDrives_;
};

}  // namespace platform::posix
