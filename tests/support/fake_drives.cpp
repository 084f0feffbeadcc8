#include "tests/support/fake_drives.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include "base/failure.h"

namespace support {

namespace {

char lowerLetter(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

bool startsWithDrive(const std::string& path) {
    return path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) != 0 &&
           path[1] == ':';
}

class FakeDriveObject : public platform::Drive {
  public:
    FakeDriveObject(const FakeDrives& drives, char letter) : drives_(drives), letter_(letter) {}

    std::string volumeName() override { return ready().label; }
    std::string driveLetter() override {
        ready();
        return {static_cast<char>(std::toupper(static_cast<unsigned char>(letter_)))};
    }
    std::int32_t driveType() override { return ready().type; }

  private:
    const FakeDrive& ready() const {
        const FakeDrive* const drive = drives_.find(letter_);
        if (drive == nullptr || !drive->ready) {
            throw base::FileFailure(std::string("drive ") + letter_ + ": the drive is not ready");
        }
        return *drive;
    }

    const FakeDrives& drives_;
    char letter_;
};

class FakeFileSystemObject : public platform::FileSystemObject {
  public:
    explicit FakeFileSystemObject(const FakeDrives& drives) : drives_(drives) {}

    std::string getDriveName(const std::string& path) override {
        return startsWithDrive(path) ? path.substr(0, 2) : std::string();
    }
    std::unique_ptr<platform::Drive> getDrive(const std::string& driveName) override {
        if (driveName.empty() || drives_.find(driveName[0]) == nullptr) {
            throw base::FileFailure("drive \"" + driveName + "\": there is no such drive");
        }
        return std::make_unique<FakeDriveObject>(drives_, lowerLetter(driveName[0]));
    }

  private:
    const FakeDrives& drives_;
};

}  // namespace

platform::CountHalves halvesOf(std::uint64_t count) {
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(count)),
            static_cast<std::int32_t>(static_cast<std::uint32_t>(count >> 32))};
}

FakeDrive& FakeDrives::add(char letter, const std::string& label, std::int32_t type) {
    auto drive = std::make_unique<FakeDrive>();
    drive->letter = letter;
    drive->label = label;
    drive->type = type;
    drives.push_back(std::move(drive));
    return *drives.back();
}

FakeDrive& FakeDrives::at(char letter) {
    for (const auto& drive : drives) {
        if (drive->letter == lowerLetter(letter)) {
            return *drive;
        }
    }
    throw std::out_of_range("the fake machine has no such drive");
}

void FakeDrives::remove(char letter) {
    std::erase_if(drives, [&](const auto& drive) { return drive->letter == lowerLetter(letter); });
}

const FakeDrive* FakeDrives::find(char letter) const {
    for (const auto& drive : drives) {
        if (drive->letter == lowerLetter(letter)) {
            return drive.get();
        }
    }
    return nullptr;
}

std::vector<platform::DriveListEntry> FakeDrives::list() {
    std::vector<platform::DriveListEntry> entries;
    for (const auto& drive : drives) {
        entries.push_back({drive->letter, drive->label, drive->folder, drive->type});
    }
    std::ranges::sort(entries, {}, &platform::DriveListEntry::letter);
    return entries;
}

std::unique_ptr<platform::FileSystemObject> FakeDrives::createFileSystemObject() {
    if (fileSystemObjectFails) {
        throw base::FileFailure("file-system information: the service is not there");
    }
    ++fileSystemObjectsMade;
    return std::make_unique<FakeFileSystemObject>(*this);
}

bool FakeDrives::getDiskFreeSpace(const std::string& root, platform::DiskSpace& space) {
    const FakeDrive* const drive = root.empty() ? nullptr : find(root[0]);
    if (drive == nullptr || !drive->ready || !drive->spaceKnown) {
        return false;
    }
    space = {halvesOf(drive->freeToCaller), halvesOf(drive->totalBytes),
             halvesOf(drive->totalFree)};
    return true;
}

char FakeDrives::makeFolderDrive(const std::string& folder) {
    if (!knownFolders.empty() && !knownFolders.contains(folder)) {
        throw base::FileFailure(folder + ": there is no such folder");
    }
    for (char letter = 'z'; letter >= 'a'; --letter) {
        if (find(letter) == nullptr) {
            FakeDrive& drive = add(letter, folder.substr(folder.find_last_of("\\/") + 1));
            drive.folder = folder;
            return letter;
        }
    }
    throw base::FileFailure(folder + ": all drive letters are taken");
}

}  // namespace support
