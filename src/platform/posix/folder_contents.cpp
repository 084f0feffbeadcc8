#include "platform/posix/folder_contents.h"

#include <algorithm>
#include <numeric>

#include "platform/path_rules.h"

namespace platform::posix {

void FolderContents::startFolder(std::string_view folder) {
    folder_.assign(folder);
    complete = false;
    repeated = false;
    clearNames();
}

void FolderContents::clearNames() {
    names_.clear();
    entries_.clear();
    oddNames_.clear();
    byName_.clear();
    anyOdd = false;
    lastDelivered_ = 0;
}

void FolderContents::add(std::string_view nativeName, FolderEntry entry) {
    entry.nameStart = static_cast<std::uint32_t>(names_.size());
    if (isPlainName(nativeName)) {
        names_ += nativeName;
    } else {
        names_ += platform::shownName(nativeName);
        oddNames_.push_back({entry.nameStart, std::string(nativeName)});
        entry.odd = true;
        anyOdd = true;
    }
    entry.nameLength = static_cast<std::uint16_t>(names_.size() - entry.nameStart);
    entries_.push_back(entry);
}

const FolderEntry* FolderContents::find(std::string_view shown) {
    if (lastDelivered_ < entries_.size() && shownName(entries_[lastDelivered_]) == shown) {
        return &entries_[lastDelivered_];
    }
    sortIndex();
    const auto nameOf = [this](std::uint32_t index) { return shownName(entries_[index]); };
    const auto found = std::ranges::lower_bound(byName_, shown, {}, nameOf);
    if (found == byName_.end() || nameOf(*found) != shown) {
        return nullptr;
    }
    return &entries_[*found];
}

void FolderContents::sortIndex() {
    if (byName_.size() == entries_.size()) {
        return;
    }
    byName_.resize(entries_.size());
    std::iota(byName_.begin(), byName_.end(), 0U);
    std::ranges::sort(byName_, {},
                      [this](std::uint32_t index) { return shownName(entries_[index]); });
}

const std::string& FolderContents::nativeName(const FolderEntry& entry) const {
    return std::ranges::lower_bound(oddNames_, entry.nameStart, {}, &OddName::nameStart)->native;
}

}  // namespace platform::posix
