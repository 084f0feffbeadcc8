#include "scan/adjustpaths.h"

#include <limits>

#include "base/checked.h"
#include "base/failure.h"
#include "base/text.h"
#include "scan/scan_limit_failure.h"

namespace scan {
namespace {

/// `text` without its first `count` characters.
std::string_view withoutFront(std::string_view text, std::size_t count) {
    std::size_t position = 0;
    for (; count > 0; --count) {
        if (position == text.size()) {
            throw base::InvalidArgumentFailure("the folder path \"" + std::string(text) +
                                               "\" has no drive to take off");
        }
        base::nextCodePoint(text, position);
    }
    return text.substr(position);
}

std::string_view withoutDrive(std::string_view folderPath, const std::string& driveLetter) {
    const std::string drive = driveLetter + ":";
    const std::size_t found = folderPath.find(drive);
    if (found == std::string_view::npos) {
        return withoutFront(folderPath, drive.size());
    }
    return withoutFront(folderPath.substr(found + drive.size()), 1);
}

std::string storedForm(std::string_view folderPath, const base::MediaInfo& currentMedia) {
    std::string path = std::to_string(currentMedia.mediaId) + ":";
    path.append(withoutDrive(folderPath, currentMedia.driveLetter));
    return path;
}

void dropFinalSeparator(std::string& path) {
    if (path.ends_with('\\')) {
        path.pop_back();
    }
}

base::Int16 shownCount(std::int64_t count) {
    if (count > std::numeric_limits<std::int16_t>::max()) {
        throw ScanLimitFailure(
            "the scan was ended: a scan in this window holds 32,767 entries; the companion \"vdln "
            "scan\" has no such limit");
    }
    return {count};
}

}  // namespace

std::string toEntryPathForFile(std::string_view folderPath, const base::MediaInfo& currentMedia) {
    std::string path = storedForm(folderPath, currentMedia);
    dropFinalSeparator(path);
    return path;
}

std::string toEntryPathForFolder(std::string_view folderPath, const base::MediaInfo& currentMedia) {
    std::string path = storedForm(folderPath, currentMedia);
    const std::size_t last = path.rfind('\\');
    if (last == std::string::npos) {
        throw base::InvalidArgumentFailure("the folder path \"" + std::string(folderPath) +
                                           "\" is left without a separator behind its drive");
    }
    path.resize(last);
    dropFinalSeparator(path);
    return path;
}

void WindowProgress::showScanProgress(std::int64_t count) {
    display_.setDisplayProgress("Scanning:  File " + std::to_string(shownCount(count).value()));
    events_.runPendingEvents();
}

}  // namespace scan
