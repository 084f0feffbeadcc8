#include "search/folder_tree.h"

#include <algorithm>
#include <functional>

namespace search {
namespace {

constexpr Row rowsAtOnce = 16384;

}  // namespace

bool FolderTree::advance() {
    if (table_.empty()) {
        begin();
        return index_.size() == 0;
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
    std::size_t slots = 64;
    while (slots < 2 * std::size_t{index_.pathCount()}) {
        slots *= 2;
    }
    table_.assign(slots, 0);
    for (Index::PathId path = 0; path < index_.pathCount(); ++path) {
        std::size_t slot = std::hash<std::string_view>{}(index_.pathText(path)) & (slots - 1);
        while (table_[slot] != 0) {
            slot = (slot + 1) & (slots - 1);
        }
        table_[slot] = path + 1;
    }
    paths_.assign(index_.size(), none);
    folders_.assign(index_.pathCount(), none);
}

Index::PathId FolderTree::find(std::string_view path) const {
    const std::size_t mask = table_.size() - 1;
    for (std::size_t slot = std::hash<std::string_view>{}(path)&mask; table_[slot] != 0;
         slot = (slot + 1) & mask) {
        if (index_.pathText(table_[slot] - 1) == path) {
            return table_[slot] - 1;
        }
    }
    return none;
}

}  // namespace search
