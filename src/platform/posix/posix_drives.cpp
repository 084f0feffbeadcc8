#include "platform/posix/posix_drives.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "base/failure.h"
#include "platform/mount_rules.h"
#include "platform/path_rules.h"
#include "platform/posix/mount_table.h"
#include "platform/posix/system_failure.h"

namespace platform::posix {

namespace {

CountHalves halvesOf(std::uint64_t count) {
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(count)),
            static_cast<std::int32_t>(static_cast<std::uint32_t>(count >> 32))};
}

CountHalves bytesOf(const struct statvfs& facts, fsblkcnt_t blocks) {
    return halvesOf(static_cast<std::uint64_t>(blocks) * facts.f_frsize);
}

bool isFolder(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// Links resolved; a folder that is not there stays as it is.
std::string resolved(const std::string& folder) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::canonical(folder, error);
    return error ? folder : path.string();
}

class PosixDrive : public Drive {
  public:
    explicit PosixDrive(DriveListEntry drive) : drive_(std::move(drive)) {}

    std::string volumeName() override {
        requireReady();
        // Of a share the list shows the name; the label of the volume behind it nobody tells.
        return drive_.type == static_cast<std::int32_t>(DriveType::Remote) ? "" : drive_.label;
    }
    std::string driveLetter() override {
        return std::string(1, static_cast<char>(drive_.letter - 'a' + 'A'));
    }
    std::int32_t driveType() override { return drive_.type; }

  private:
    void requireReady() const {
        struct statvfs facts {};
        if (::statvfs(drive_.folder.c_str(), &facts) != 0) {
            failWith(drive_.folder, errno);
        }
        if (!isFolder(drive_.folder)) {
            failWith(drive_.folder, ENOTDIR);
        }
    }

    DriveListEntry drive_;
};

class PosixFileSystemObject : public FileSystemObject {
  public:
    explicit PosixFileSystemObject(PosixDrives& drives) : drives_(drives) {}

    std::string getDriveName(const std::string& path) override {
        return driveLetterOf(path) ? path.substr(0, 2) : std::string();
    }
    std::unique_ptr<Drive> getDrive(const std::string& driveName) override {
        const auto letter = driveLetterOf(driveName);
        auto drive = letter ? drives_.find(*letter) : std::nullopt;
        if (!drive) {
            throw base::FileFailure("drive \"" + driveName + "\": there is no such drive");
        }
        return std::make_unique<PosixDrive>(std::move(*drive));
    }

  private:
    PosixDrives& drives_;
};

}  // namespace

PosixDrives::PosixDrives(PrivateProfile& profile, std::string settingsFilePath)
    : folderDrives_(profile, std::move(settingsFilePath)) {}

PosixDrives::Moment PosixDrives::look() {
    Moment moment{readMountTable(), {}, {}};
    for (const auto& [letter, folder] : folderDrives_.read()) {
        moment.folderDrives[letter] = {letter, {}, folder, 0};
    }
    for (const Mount& mount : mediaAmong(moment.mounts)) {
        moment.drives.push_back({'c', {}, mount.folder, 0});
    }
    moment.drives = withFolderDrives(withLetters(std::move(moment.drives)), moment.folderDrives);
    return moment;
}

/// The drive with its label and type, for which its device is asked.
DriveListEntry PosixDrives::described(const Moment& moment, DriveListEntry drive) {
    const bool isFolderDrive = moment.folderDrives.contains(drive.letter);
    const Mount* const mount =
        mountHolding(moment.mounts, isFolderDrive ? resolved(drive.folder) : drive.folder);
    if (mount != nullptr) {
        const DeviceFacts facts = deviceFactsOf(*mount);
        drive.label = driveLabelOf(*mount, facts);
        drive.type = static_cast<std::int32_t>(driveTypeOf(*mount, facts));
    }
    if (isFolderDrive) {
        drive.label = shownName(folderName(drive.folder));
    }
    return drive;
}

const DriveListEntry* PosixDrives::withLetter(const Moment& moment, char letter) {
    const char lower = static_cast<char>(letter | 0x20);
    const auto found = std::ranges::find(moment.drives, lower, &DriveListEntry::letter);
    return found == moment.drives.end() ? nullptr : &*found;
}

std::vector<DriveListEntry> PosixDrives::list() {
    Moment moment = look();
    for (DriveListEntry& drive : moment.drives) {
        drive = described(moment, drive);
    }
    return moment.drives;
}

std::optional<DriveListEntry> PosixDrives::find(char letter) {
    const Moment moment = look();
    const DriveListEntry* const drive = withLetter(moment, letter);
    return drive == nullptr ? std::nullopt : std::optional(described(moment, *drive));
}

std::optional<std::string> PosixDrives::rootOf(char letter) {
    const Moment moment = look();
    const DriveListEntry* const drive = withLetter(moment, letter);
    return drive == nullptr ? std::nullopt : std::optional(drive->folder);
}

std::unique_ptr<FileSystemObject> PosixDrives::createFileSystemObject() {
    return std::make_unique<PosixFileSystemObject>(*this);
}

bool PosixDrives::getDiskFreeSpace(const std::string& root, DiskSpace& space) {
    const auto letter = driveLetterOf(root);
    const auto folder = letter ? rootOf(*letter) : std::nullopt;
    struct statvfs facts {};
    if (!folder || ::statvfs(folder->c_str(), &facts) != 0) {
        return false;
    }
    space = {bytesOf(facts, facts.f_bavail), bytesOf(facts, facts.f_blocks),
             bytesOf(facts, facts.f_bfree)};
    return true;
}

char PosixDrives::makeFolderDrive(const std::string& folder) {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::canonical(folder, error);
    if (error) {
        failWith(folder, error.value());
    }
    if (!isFolder(full.string())) {
        failWith(folder, ENOTDIR);
    }
    const char letter = freeLetter(look().drives);
    if (letter == 0) {
        throw base::FileFailure(folder + ": all drive letters are taken");
    }
    folderDrives_.addForThisRun(letter, full.string());
    return letter;
}

}  // namespace platform::posix
