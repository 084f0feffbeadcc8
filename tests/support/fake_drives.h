#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/drives.h"

namespace support {

/// A drive of the fake machine.
struct FakeDrive {
    char letter = 'd';
    std::string label;
    std::int32_t type = 2;  ///< any number, also one that is no platform::DriveType
    std::uint64_t totalBytes = 0;
    std::uint64_t totalFree = 0;
    std::uint64_t freeToCaller = 0;
    bool ready = true;       ///< false: no medium; every question but the letter's existence fails
    bool spaceKnown = true;  ///< false: only the disk-space query fails
    std::string folder;      ///< where a folder made a drive lies; else empty
};

/// The drives of the fake machine, in a list that the test fills. Counts how often the information
/// service was made, since every reading has to make its own.
class FakeDrives : public platform::Drives {
  public:
    FakeDrive& add(char letter, const std::string& label = {}, std::int32_t type = 2);
    /// The drive of that letter; the test fails by std::out_of_range where there is none.
    FakeDrive& at(char letter);
    void remove(char letter);

    std::vector<platform::DriveListEntry> list() override;
    std::unique_ptr<platform::FileSystemObject> createFileSystemObject() override;
    bool getDiskFreeSpace(const std::string& root, platform::DiskSpace& space) override;
    char makeFolderDrive(const std::string& folder) override;

    const FakeDrive* find(char letter) const;

    std::vector<std::unique_ptr<FakeDrive>> drives;
    /// Folders that makeFolderDrive() accepts; empty: any.
    std::set<std::string> knownFolders;
    bool fileSystemObjectFails = false;  ///< making one is a base::FileFailure
    int fileSystemObjectsMade = 0;
};

/// An unsigned 64-bit count as the disk-space query gives it.
platform::CountHalves halvesOf(std::uint64_t count);

}  // namespace support
