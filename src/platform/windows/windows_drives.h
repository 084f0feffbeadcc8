#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/drives.h"
#include "platform/folder_drives.h"

namespace platform::windows {

/// The drives that the system has letters for, and folders that were made drives on top of them.
/// The machine is asked anew at every call. The five answers of the file-system object come from
/// the system's questions about volumes.
class WindowsDrives : public Drives {
  public:
    /// `profile` outlives this object; the settings file need not exist.
    WindowsDrives(PrivateProfile& profile, std::string settingsFilePath);

    std::vector<DriveListEntry> list() override;
    std::unique_ptr<FileSystemObject> createFileSystemObject() override;
    bool getDiskFreeSpace(const std::string& root, DiskSpace& space) override;
    char makeFolderDrive(const std::string& folder) override;

    /// Where the root of the drive of a letter, in any case, lies: "D:\" or a folder. None where
    /// there is no such drive.
    std::optional<std::string> rootOf(char letter) const;
    bool isFolderDrive(char letter) const;

  private:
    FolderDrives folderDrives_;
};

}  // namespace platform::windows
