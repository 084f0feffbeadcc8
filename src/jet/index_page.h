#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/bytes.h"
#include "jet/format.h"

namespace jet {

/// A page of an index tree, leaf or node. Offsets in bytes; numbers little-endian unless said.
///
///     Jet 3  Jet 4
///     0      0      2   04 01 leaf, 03 01 node
///     2      2      2   free bytes
///     4      4      4   page of the table's definition
///     8      12     4   previous page of the level
///     12     16     4   next page of the level
///     16     20     4   node: the child after the last entry
///     20     24     1   bytes that all entries begin with; stored in the first one only
///     21     26     1   level, 0 for a leaf
///     22     27         mask: bit i says that an entry ends i bytes into the entries
///     0xF8   0x1E0      entries: key, u24 page and u8 slot of the row, big-endian; in a node
///     followed
///                       by the child's page, u32 big-endian
class IndexPage {
  public:
    bool leaf = true;
    std::uint32_t table = 0;
    std::uint32_t previous = 0;
    std::uint32_t next = 0;
    std::uint32_t tail = 0;
    std::uint8_t level = 0;
    std::vector<std::string> entries;  ///< whole, in order
    // Of a page that was read:
    std::uint32_t freeBytes = 0;
    std::uint32_t storedBytes = 0;  ///< of all entries, as stored

    /// Reads a page; false when it is no index page or makes no sense.
    static bool read(const Format& format, const std::uint8_t* page, IndexPage& result);
    /// Writes it over a page; the entries must fit.
    void write(const Format& format, std::uint8_t* page) const;
    bool fits(const Format& format) const;

    static std::string leafEntry(std::string_view key, RowPointer row);
};

}  // namespace jet
