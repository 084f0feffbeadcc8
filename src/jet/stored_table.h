#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/format.h"
#include "jet/page_file.h"
#include "jet/table_definition.h"

namespace jet {

/// One column as its table definition stores it.
struct StoredColumn {
    Field field;
    std::uint16_t number = 0;         ///< bit of the null mask; never reused
    std::uint16_t variableIndex = 0;  ///< place in the row's offset table; variable columns only
    std::uint16_t fixedOffset = 0;    ///< place after the row's column count; fixed columns only
    std::uint16_t length = 0;         ///< bytes; 0 for long values
    bool fixed = false;               ///< the data lies in the fixed area (whatever the type)
    bool compressed = false;          ///< Jet 4: texts are stored compressed where possible
    std::uint8_t flags = 0;
    RowPointer ownedMap;  ///< long values: map of their pages; page 0: none
    RowPointer freeMap;
};

/// A real index: a tree of pages.
struct StoredIndex {
    std::uint32_t entriesEver = 0;                        ///< different keys ever entered
    std::vector<std::pair<std::uint16_t, bool>> columns;  ///< column number, ascending
    RowPointer map;
    std::uint32_t rootPage = 0;
    std::uint8_t flags = 0;  ///< 1 unique, 2 all-null rows left out, 8 null not allowed
};

/// A logical index: a name for a real one, or a relation's side.
struct StoredIndexName {
    std::string name;
    std::uint32_t number = 0;
    std::uint32_t realIndex = 0;
    std::uint8_t kind = 0;  ///< 0 plain, 1 primary key, 2 foreign key
};

/// A table definition as it stands in the file: a byte string on one or more linked pages of
/// kind 2.
///
///     8     total length; row count, last autonumber, type, numbers of columns and indexes, maps
///     then  index counters, column descriptors, column names, real indexes, logical indexes and
///     their
///           names, maps of the long-value columns, FF FF
///
/// Each further page of the chain continues the string after its own 8 header bytes.
struct StoredTable {
    static constexpr std::uint8_t userTable = 0x4E;
    static constexpr std::uint8_t systemTable = 0x53;
    /// Bytes of the pages of a definition that this engine is willing to read.
    static constexpr std::uint32_t maximumBytes = 1u << 20;

    std::string name;                  ///< from the catalog
    std::vector<std::uint32_t> pages;  ///< the chain; the first number is the table's identity
    std::uint32_t rowCount = 0;
    std::uint32_t lastAutoNumber = 0;
    std::uint8_t type = userTable;
    std::uint16_t columnsEver = 0;
    std::uint16_t variableEver = 0;
    RowPointer ownedMap;
    RowPointer freeMap;
    std::vector<StoredColumn> columns;  ///< in the order of their numbers
    std::vector<StoredIndex> indexes;
    std::vector<StoredIndexName> indexNames;

    std::uint32_t page() const { return pages.front(); }
    /// Bytes of the fixed area of a row.
    std::uint32_t fixedAreaSize() const;
    TableDefinition definition() const;

    /// Reads and checks the definition that starts on `page`; a Damaged failure says what
    /// contradicts the format.
    static StoredTable read(PageFile& pages, std::uint32_t page, const std::string& name);
    /// The byte string of this definition, without the headers of continuation pages. Columns stand
    /// in the order `order` (positions in `columns`).
    std::string build(const Format& format, const std::vector<std::size_t>& order) const;
    /// Writes one page of a definition: the part of the byte string that goes there (with the
    /// string's own eight header bytes when it is the first page) and the number of the next page.
    static void fillPage(const Format& format, std::uint8_t* page, std::string_view part,
                         bool first, std::uint32_t next);
    /// Writes a byte string of build() over the pages of the chain, in memory.
    void place(PageFile& pages, const std::string& bytes) const;
};

}  // namespace jet
