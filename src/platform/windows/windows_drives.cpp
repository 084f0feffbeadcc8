#include "platform/windows/windows_drives.h"

#include <array>
#include <map>
#include <utility>

#include "base/failure.h"
#include "platform/mount_rules.h"
#include "platform/path_rules.h"
#include "platform/windows/native_path.h"
#include "platform/windows/system_failure.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

namespace {

char lower(char letter) { return static_cast<char>(letter | 0x20); }
char upper(char letter) { return static_cast<char>(letter & ~0x20); }

std::string rootFolder(char letter) { return std::string(1, upper(letter)) + ":\\"; }

bool hasLetter(char letter) {
    return (::GetLogicalDrives() >> static_cast<unsigned>(lower(letter) - 'a') & 1U) != 0;
}

/// The name of the folder itself; that of a root is its drive.
std::string nameOf(std::wstring_view folder) {
    const std::size_t separator = folder.find_last_of(L'\\');
    const std::wstring_view name = folder.substr(separator + 1);
    return utf8Text(name.empty() ? folder : name);
}

std::wstring withFinalSeparator(std::wstring folder) {
    if (!folder.ends_with(L'\\')) {
        folder += L'\\';
    }
    return folder;
}

/// The root of the volume that holds a folder; the folder itself where the system does not tell.
std::wstring volumeRootOf(const std::wstring& folder) {
    std::array<wchar_t, MAX_PATH> root{};
    const bool known =
        ::GetVolumePathNameW(folder.c_str(), root.data(), static_cast<DWORD>(root.size())) != 0;
    return known ? root.data() : withFinalSeparator(folder);
}

/// A base::FileFailure where that is no folder.
void requireFolder(const std::string& folder, const std::wstring& full) {
    const DWORD attributes = ::GetFileAttributesW(verbatimPath(full).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        failWith(folder, ::GetLastError());
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        failWith(folder, ERROR_DIRECTORY);
    }
}

DriveType driveTypeOf(const std::wstring& root) {
    switch (::GetDriveTypeW(root.c_str())) {
        case DRIVE_REMOVABLE:
            return DriveType::Removable;
        case DRIVE_FIXED:
            return DriveType::Fixed;
        case DRIVE_REMOTE:
            return DriveType::Remote;
        case DRIVE_CDROM:
            return DriveType::CdRom;
        case DRIVE_RAMDISK:
            return DriveType::RamDisk;
        default:
            return DriveType::Unknown;
    }
}

/// The label of the volume with that root; none where no medium is in the drive.
std::optional<std::string> volumeLabelOf(const std::wstring& root) {
    std::array<wchar_t, MAX_PATH + 1> label{};
    if (::GetVolumeInformationW(root.c_str(), label.data(), static_cast<DWORD>(label.size()),
                                nullptr, nullptr, nullptr, nullptr, 0) == FALSE) {
        return std::nullopt;
    }
    return utf8Text(label.data());
}

/// The share behind a network drive; empty where the system does not tell.
std::string shareOf(char letter) {
    const wchar_t drive[] = {static_cast<wchar_t>(upper(letter)), L':', L'\0'};
    std::array<wchar_t, 1024> share{};
    auto room = static_cast<DWORD>(share.size());
    const bool known = ::WNetGetConnectionW(drive, share.data(), &room) == NO_ERROR;
    return known ? utf8Text(share.data()) : std::string();
}

DriveListEntry systemDrive(char letter) {
    const std::string folder = rootFolder(letter);
    const std::wstring root = wideText(folder);
    const DriveType type = driveTypeOf(root);
    std::string label =
        type == DriveType::Remote ? shareOf(letter) : volumeLabelOf(root).value_or("");
    return {letter, std::move(label), folder, static_cast<std::int32_t>(type)};
}

DriveListEntry folderDrive(char letter, const std::string& folder) {
    const std::wstring full = fullFolderPath(folder);
    return {letter, nameOf(full), folder,
            static_cast<std::int32_t>(driveTypeOf(volumeRootOf(full)))};
}

CountHalves halvesOf(const ULARGE_INTEGER& count) {
    return {static_cast<std::int32_t>(count.LowPart), static_cast<std::int32_t>(count.HighPart)};
}

class WindowsDrive : public Drive {
  public:
    WindowsDrive(char letter, std::string folder, bool isFolderDrive)
        : letter_(lower(letter)), folder_(std::move(folder)), isFolderDrive_(isFolderDrive) {}

    std::string volumeName() override { return isFolderDrive_ ? folderName() : label(); }
    std::string driveLetter() override { return std::string(1, upper(letter_)); }
    std::int32_t driveType() override {
        return static_cast<std::int32_t>(driveTypeOf(
            isFolderDrive_ ? volumeRootOf(fullFolderPath(folder_)) : wideText(folder_)));
    }

  private:
    std::string label() const {
        const auto label = volumeLabelOf(wideText(folder_));
        if (!label) {
            failWith(folder_, ::GetLastError());
        }
        return *label;
    }
    std::string folderName() const {
        const std::wstring full = fullFolderPath(folder_);
        requireFolder(folder_, full);
        return nameOf(full);
    }

    char letter_;
    std::string folder_;
    bool isFolderDrive_;
};

class WindowsFileSystemObject : public FileSystemObject {
  public:
    explicit WindowsFileSystemObject(const WindowsDrives& drives) : drives_(drives) {}

    std::string getDriveName(const std::string& path) override {
        return driveLetterOf(path) ? path.substr(0, 2) : std::string();
    }
    std::unique_ptr<Drive> getDrive(const std::string& driveName) override {
        const auto letter = driveLetterOf(driveName);
        auto root = letter ? drives_.rootOf(*letter) : std::nullopt;
        if (!root) {
            throw base::FileFailure("drive \"" + driveName + "\": there is no such drive");
        }
        return std::make_unique<WindowsDrive>(*letter, std::move(*root),
                                              drives_.isFolderDrive(*letter));
    }

  private:
    const WindowsDrives& drives_;
};

}  // namespace

WindowsDrives::WindowsDrives(PrivateProfile& profile, std::string settingsFilePath)
    : folderDrives_(profile, std::move(settingsFilePath)) {}

std::vector<DriveListEntry> WindowsDrives::list() {
    std::map<char, DriveListEntry> folderDrives;
    for (const auto& [letter, folder] : folderDrives_.read()) {
        folderDrives[letter] = folderDrive(letter, folder);
    }
    std::vector<DriveListEntry> drives;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        if (hasLetter(letter) && !folderDrives.contains(letter)) {
            drives.push_back(systemDrive(letter));
        }
    }
    return withFolderDrives(std::move(drives), folderDrives);
}

bool WindowsDrives::isFolderDrive(char letter) const {
    return folderDrives_.read().contains(lower(letter));
}

std::optional<std::string> WindowsDrives::rootOf(char letter) const {
    const auto folders = folderDrives_.read();
    const auto folder = folders.find(lower(letter));
    if (folder != folders.end()) {
        return folder->second;
    }
    return hasLetter(letter) ? std::optional(rootFolder(letter)) : std::nullopt;
}

std::unique_ptr<FileSystemObject> WindowsDrives::createFileSystemObject() {
    return std::make_unique<WindowsFileSystemObject>(*this);
}

bool WindowsDrives::getDiskFreeSpace(const std::string& root, DiskSpace& space) {
    const auto letter = driveLetterOf(root);
    const auto folder = letter ? rootOf(*letter) : std::nullopt;
    ULARGE_INTEGER freeToCaller{};
    ULARGE_INTEGER total{};
    ULARGE_INTEGER free{};
    if (!folder || ::GetDiskFreeSpaceExW(withFinalSeparator(fullFolderPath(*folder)).c_str(),
                                         &freeToCaller, &total, &free) == FALSE) {
        return false;
    }
    space = {halvesOf(freeToCaller), halvesOf(total), halvesOf(free)};
    return true;
}

char WindowsDrives::makeFolderDrive(const std::string& folder) {
    const std::wstring full = fullFolderPath(folder);
    requireFolder(folder, full);
    const char letter = freeLetter(list());
    if (letter == 0) {
        throw base::FileFailure(folder + ": all drive letters are taken");
    }
    folderDrives_.addForThisRun(letter, utf8Text(full));
    return letter;
}

}  // namespace platform::windows
