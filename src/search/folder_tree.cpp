#include "search/folder_tree.h"

#include <algorithm>
#include <functional>

namespace search {
namespace {

constexpr Row rowsAtOnce = 16384;
constexpr Index::PathId pathsAtOnce = 8192;

}  // namespace

bool FolderTree::advance() {
    if (!table_.isMade()) {
        begin();
        return index_.size() == 0;
    }
    if (nextPath_ < index_.pathCount()) {
        placePaths();
        return false;
    }
    const Row end = std::min<Row>(index_.size(), next_ + rowsAtOnce);
    for (; next_ < end; ++next_) {
        if (!index_.isFolder(next_)) {
            continue;
        }
        buffer_.assign(index_.path(next_));
        buffer_ += '\\';
        buffer_ += index_.name(next_);
        const Index::PathId path = find(buffer_);
        if (path != none) {
            paths_[next_] = path;
            // Of two folders of the same path the first has the entries.
            folders_[path] = std::min(folders_[path], next_);
        }
    }
    return next_ == index_.size();
}

void FolderTree::begin() {
    table_ = ZeroedNumbers::slotsFor(index_.pathCount());
    paths_.assign(index_.size(), none);
    folders_.assign(index_.pathCount(), none);
}

void FolderTree::placePaths() {
    const Index::PathId end = std::min<Index::PathId>(index_.pathCount(), nextPath_ + pathsAtOnce);
    for (; nextPath_ < end; ++nextPath_) {
        std::size_t slot =
            std::hash<std::string_view>{}(index_.pathText(nextPath_)) & table_.mask();
        while (table_[slot] != 0) {
            slot = (slot + 1) & table_.mask();
        }
        table_[slot] = nextPath_ + 1;
    }
}

Index::PathId FolderTree::find(std::string_view path) const {
    const std::size_t mask = table_.mask();
    for (std::size_t slot = std::hash<std::string_view>{}(path)&mask; table_[slot] != 0;
         slot = (slot + 1) & mask) {
        if (index_.pathText(table_[slot] - 1) == path) {
            return table_[slot] - 1;
        }
    }
    return none;
}

}  // namespace search
