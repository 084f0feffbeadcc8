#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "search/index.h"
#include "search/zeroed_numbers.h"

namespace search {

/// Which path belongs to which folder of an index: the entries of a folder have the path that is
/// the folder's own path, "\" and its name. Made in steps.
class FolderTree {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// `index` must outlive this.
    explicit FolderTree(const Index& index) : index_(index) {}

    /// Goes on for some thousand folders; true when all are known.
    bool advance();

    // Once that is so:
    /// The path that the entries in this folder have; none for a file and for an empty folder.
    Index::PathId pathOf(Row folder) const { return paths_[folder]; }
    /// The folder whose entries have this path; none where the archive does not hold it.
    Row folderOf(Index::PathId path) const { return folders_[path]; }
    /// The folder that holds the entry.
    Row parentOf(Row row) const { return folders_[index_.pathId(row)]; }

  private:
    void begin();
    void placePaths();
    Index::PathId find(std::string_view path) const;

    const Index& index_;
    ZeroedNumbers table_;               ///< open addressing; the path plus one, 0 where free
    std::vector<Index::PathId> paths_;  ///< by row
    std::vector<Row> folders_;          ///< by path
    Index::PathId nextPath_ = 0;
    Row next_ = 0;
    std::string buffer_;
};

}  // namespace search
