#include "platform/folder_drives.h"

#include <string_view>
#include <utility>

#include "platform/private_profile.h"

namespace platform {

namespace {

constexpr const char* drivesSection = "drives";
constexpr std::size_t longestFolder = 4096 + 1;

}  // namespace

FolderDrives::FolderDrives(PrivateProfile& profile, std::string settingsFilePath)
    : profile_(profile), settingsFilePath_(std::move(settingsFilePath)) {}

std::map<char, std::string> FolderDrives::read() const {
    std::map<char, std::string> folders = madeForThisRun_;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        std::string folder = profile_.getString(drivesSection, std::string_view(&letter, 1), "",
                                                longestFolder, settingsFilePath_);
        if (!folder.empty()) {
            folders.emplace(letter, std::move(folder));
        }
    }
    return folders;
}

void FolderDrives::addForThisRun(char letter, const std::string& folder) {
    madeForThisRun_[letter] = folder;
}

}  // namespace platform
