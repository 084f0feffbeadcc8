#include "scan/scandriveapi.h"

#include <limits>
#include <memory>
#include <utility>

#include "base/failure.h"
#include "scan/adjustpaths.h"
#include "scan/date_text.h"

namespace scan {
namespace {

/// The halves of a size, read as signed numbers; the size rule counts the high one with the factor
/// -1.
std::int32_t lowHalf(const platform::FindData& found) {
    return static_cast<std::int32_t>(found.nFileSizeLow);
}
std::int32_t highHalf(const platform::FindData& found) {
    return static_cast<std::int32_t>(found.nFileSizeHigh);
}

}  // namespace

void Walker::scanDrive(std::string_view drive) {
    base::Int32 fileCount;
    base::Int32 folderCount;
    walkFolder(std::string(drive), matchAll, fileCount, folderCount);
}

WideningTotal Walker::walkFolder(std::string path, std::string_view pattern, base::Int32& fileCount,
                                 base::Int32& folderCount) {
    if (!path.ends_with(pathSeparator)) {
        path.push_back(pathSeparator);
    }
    const NameList subfolders = visitFolders(path, folderCount);
    WideningTotal total = visitFiles(path, pattern, fileCount);
    subfolders.forEach([&](std::string_view name) {
        std::string subfolder;
        subfolder.reserve(path.size() + name.size() + 1);
        subfolder.append(path).append(name).push_back(pathSeparator);
        total += walkFolder(std::move(subfolder), pattern, fileCount, folderCount);
    });
    return total;
}

NameList Walker::visitFolders(const std::string& folder, base::Int32& folderCount) {
    NameList subfolders;
    const auto listing = findFirst(folder, matchAll);
    if (listing == nullptr) {
        return subfolders;
    }
    EntryPath entryPath(folder, toEntryPathForFolder);
    std::int64_t count = 0;
    while (listing->next(found_)) {
        const std::string_view name = stripNulls(found_.cFileName);
        if (isDotName(name)) {
            continue;
        }
        itemPath_.assign(folder).append(name);
        if (!isDirectory()) {
            continue;
        }
        subfolders.append(name);
        ++folderCount;
        countSubfolder(folder, count);
        storeEntry(name, Kind::Folder, entryPath);
    }
    return subfolders;
}

WideningTotal Walker::visitFiles(const std::string& folder, std::string_view pattern,
                                 base::Int32& fileCount) {
    WideningTotal total;
    const auto listing = findFirst(folder, pattern);
    if (listing == nullptr) {
        return total;
    }
    EntryPath entryPath(folder, toEntryPathForFile);
    while (listing->next(found_)) {
        const std::string_view name = stripNulls(found_.cFileName);
        itemPath_.assign(folder).append(name);
        const bool directory = isDirectory();
        if (directory || isDotName(name)) {
            continue;
        }
        addSize(total);
        ++fileCount;
        storeEntry(name, Kind::File, entryPath);
    }
    return total;
}

std::unique_ptr<platform::Listing> Walker::findFirst(const std::string& folder,
                                                     std::string_view pattern) {
    itemPath_.assign(folder).append(pattern);
    return lister_.findFirst(itemPath_);
}

/// Also of a name whose attributes cannot be asked: all bits are set then.
bool Walker::isDirectory() const {
    return (lister_.attributes(itemPath_) & platform::fileAttributeDirectory) != 0;
}

void Walker::countSubfolder(const std::string& folder, std::int64_t& count) const {
    ++count;
    if (limits_ == WalkLimits::Checked && count > std::numeric_limits<std::int16_t>::max()) {
        throw base::OverflowFailure(folder + ": the folder has more than 32,767 subfolders");
    }
}

void Walker::addSize(WideningTotal& total) const {
    const std::int32_t high = highHalf(found_);
    if (high == std::numeric_limits<std::int32_t>::min()) {
        if (limits_ == WalkLimits::Checked) {
            failSize();
        }
        total += -static_cast<double>(high);
    } else {
        total += -high;
    }
    total += lowHalf(found_);
}

void Walker::failSize() const {
    throw base::OverflowFailure(itemPath_ + ": the size of the file does not fit 32 bits");
}

void Walker::storeEntry(std::string_view name, Kind kind, EntryPath& path) {
    SizeFit fit = SizeFit::Exact;
    try {
        fit = fillEntry(name, kind, path);
    } catch (const base::Failure&) {
        // The scan list has grown before its new element is filled, so it keeps what was set.
        if (limits_ == WalkLimits::Checked) {
            destination_.store(entry_, SizeFit::Exact);
        }
        throw;
    }
    progress_.showScanProgress(destination_.store(entry_, fit));
}

SizeFit Walker::fillEntry(std::string_view name, Kind kind, EntryPath& path) {
    entry_.path.clear();
    entry_.DateCreated.clear();
    entry_.DateModified.clear();
    entry_.Size = 0;
    entry_.Type.clear();
    // Keywords, notes and level are never set; they stay empty.
    entry_.FileName = name;
    entry_.Folder = kind == Kind::File ? "file" : "folder";
    entry_.mediaId = currentMedia_.mediaId;
    entry_.path = path.of(currentMedia_);
    setLocalDateText(entry_.DateCreated, found_.ftCreationTime);
    setLocalDateText(entry_.DateModified, found_.ftLastWriteTime);
    const SizeFit fit = kind == Kind::File ? fillSize() : SizeFit::Exact;
    // With the NULs that the system may have padded it with.
    entry_.Type = lister_.typeName(itemPath_);
    return fit;
}

SizeFit Walker::fillSize() {
    const std::int64_t size =
        static_cast<std::int64_t>(lowHalf(found_)) - static_cast<std::int64_t>(highHalf(found_));
    const bool fits = std::in_range<std::int32_t>(size);
    if (!fits && limits_ == WalkLimits::Checked) {
        failSize();
    }
    entry_.Size = static_cast<std::int32_t>(static_cast<std::uint32_t>(size));
    // With a high half the number is not the file's size, even where it happens to fit.
    return fits && highHalf(found_) == 0 ? SizeFit::Exact : SizeFit::Cut;
}

void Walker::setLocalDateText(std::string& text, platform::FileTime time) const {
    setDateText(text, platform::fileTimeToSystemTime(lister_.fileTimeToLocalFileTime(time)));
}

const std::string& Walker::EntryPath::of(const base::MediaInfo& media) {
    if (!known_ || media.mediaId != mediaId_ || media.driveLetter != driveLetter_) {
        text_ = convert_(folder_, media);
        mediaId_ = media.mediaId;
        driveLetter_ = media.driveLetter;
        known_ = true;
    }
    return text_;
}

}  // namespace scan
