#pragma once

#include <cstdint>
#include <string_view>

#include "jet/index_page.h"
#include "jet/page_file.h"
#include "jet/page_set.h"
#include "jet/row_set.h"
#include "jet/table.h"

namespace jet {

/// Adds entries to one index of an engine's own table. The trees of these tables are small: a leaf
/// that is full is not split but refused.
class IndexWriter {
  public:
    IndexWriter(PageFile& pages, const Table& table, std::size_t index);

    /// True when the leaf that a key belongs to can take it and `more` keys as long beside it.
    bool hasRoom(std::string_view key, std::size_t more = 0) const;
    /// Puts an entry into its leaf; Full when that has no room.
    void add(std::string_view key, RowPointer row);
    /// The rows that the index names.
    RowSet rows() const;

  private:
    std::uint32_t findLeaf(std::string_view entry, IndexPage& leaf) const;
    void readPage(std::uint32_t number, IndexPage& page) const;
    void collect(std::uint32_t number, PageSet& visited, RowSet& rows) const;

    PageFile& pages_;
    const Table& table_;
    std::uint32_t root_;
};

}  // namespace jet
