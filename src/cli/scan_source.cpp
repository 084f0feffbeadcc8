#include "cli/scan_source.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <vector>

#include "base/failure.h"
#include "platform/directory_lister.h"
#include "platform/platform.h"
#include "platform/shell_services.h"

namespace cli {
namespace {

/// The lower-case letter of "d:", "D:\" and "d:/"; 0 for anything else.
char letterOf(std::string_view what) {
    const bool isDrive = what.size() >= 2 && what.size() <= 3 && what[1] == ':' &&
                         std::isalpha(static_cast<unsigned char>(what[0])) != 0 &&
                         (what.size() == 2 || what[2] == '\\' || what[2] == '/');
    return isDrive ? static_cast<char>(std::tolower(static_cast<unsigned char>(what[0]))) : '\0';
}

std::optional<std::string> rootOf(platform::Drives& drives, char letter) {
    for (const platform::DriveListEntry& drive : drives.list()) {
        if (drive.letter == letter) {
            return drive.folder;
        }
    }
    return std::nullopt;
}

}  // namespace

ScanSource::ScanSource(platform::Platform& platform, std::string what)
    : platform_(platform), what_(std::move(what)), letter_(letterOf(what_)) {
    platform::Drives& drives = platform_.drives();
    if (letter_ == 0) {
        letter_ = drives.makeFolderDrive(what_);
    }
    const auto root = rootOf(drives, letter_);
    if (!root) {
        throw base::FileFailure(what_ + ": there is no such drive; \"vdln drives\" lists them");
    }
    root_ = *root;
    while (what_.size() > 1 && (what_.back() == '\\' || what_.back() == '/')) {
        what_.pop_back();
    }
}

std::string ScanSource::drive() const { return std::string(1, letter_) + ":"; }

void ScanSource::requireReadable() const {
    if (rootOf(platform_.drives(), letter_) != root_) {
        throw base::FileFailure(what_ + ": the drive is no longer there");
    }
    // Fails with the reason where the drive holds no medium.
    const auto fileSystem = platform_.drives().createFileSystemObject();
    fileSystem->getDrive(drive())->volumeName();
    // A lister of its own: the one of the walk would lose its place.
    const auto lister = platform_.createDirectoryLister();
    if (lister->findFirst(drive() + "\\*") == nullptr) {
        throw base::FileFailure(what_ + ": it cannot be read: " + lister->whyNotListed());
    }
}

std::string ScanSource::shownPath(std::string_view walkPath) const {
    const char separator = platform_.shell().pathSeparator();
    std::string path(walkPath.substr(std::min<std::size_t>(walkPath.size(), 2)));
    std::ranges::replace(path, '\\', separator);
    if (path.size() > 1 && path.back() == separator) {
        path.pop_back();
    }
    const bool endsInSeparator = !what_.empty() && what_.back() == separator;
    return what_ + (endsInSeparator && !path.empty() ? path.substr(1) : path);
}

}  // namespace cli
