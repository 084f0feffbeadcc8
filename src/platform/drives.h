#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// An unsigned 64-bit count as two signed halves, the form in which the disk-space query gives it.
struct CountHalves {
    std::int32_t low = 0;
    std::int32_t high = 0;
};

struct DiskSpace {
    CountHalves freeToCaller;
    CountHalves totalBytes;
    CountHalves totalFree;
};

/// Type codes that a drive reports.
enum class DriveType : std::int32_t {
    Unknown = 0,
    Removable = 1,
    Fixed = 2,
    Remote = 3,
    CdRom = 4,
    RamDisk = 5,
};

/// A drive that was found by its name. Each answer may fail (base::FileFailure), for example when
/// no medium is in the drive.
class Drive {
  public:
    virtual ~Drive() = default;
    virtual std::string volumeName() = 0;
    virtual std::string driveLetter() = 0;  ///< upper case, no colon
    virtual std::int32_t driveType() = 0;   ///< a DriveType, or another number on odd machines
};

/// The file-system information service; a new one is made for each reading of a drive.
class FileSystemObject {
  public:
    virtual ~FileSystemObject() = default;
    /// The drive designator (letter and colon) at the head of `path`, which may be an entry of the
    /// drive list; empty when there is none.
    virtual std::string getDriveName(const std::string& path) = 0;
    /// The drive of that name; base::FileFailure when the machine has none.
    virtual std::unique_ptr<Drive> getDrive(const std::string& driveName) = 0;
};

/// One line of the drive list.
struct DriveListEntry {
    char letter = 'c';      ///< lower case
    std::string label;      ///< volume label, for network drives the share; may be empty
    std::string folder;     ///< where the drive's root lies on this machine, in its own path form
    std::int32_t type = 0;  ///< a DriveType

    /// "d: [LABEL]", the text of a drive-list entry.
    std::string text() const;
};

/// What the program asks of the machine about its drives.
class Drives {
  public:
    virtual ~Drives() = default;
    /// The drives of this moment in the order of their letters.
    virtual std::vector<DriveListEntry> list() = 0;
    virtual std::unique_ptr<FileSystemObject> createFileSystemObject() = 0;
    /// Space of the drive that `root` (letter and colon, or a path) names; false when it failed.
    virtual bool getDiskFreeSpace(const std::string& root, DiskSpace& space) = 0;
    /// Makes a folder (in the machine's own path form) a drive for the rest of this run and returns
    /// its letter, one that no drive had. Its label is the folder's name, its space and type those
    /// of the file system that holds it. base::FileFailure when it is no folder or all letters are
    /// taken.
    virtual char makeFolderDrive(const std::string& folder) = 0;
};

}  // namespace platform
