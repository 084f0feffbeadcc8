#pragma once

#include <cstddef>
#include <cstdint>

#include "jet/database.h"

namespace jet {

/// The sizes and offsets in which Jet 3 and Jet 4 files differ, all in bytes. Everything else about
/// the two formats is the same, so the engine is written once and handed one of these.
struct Format {
    FileFormat kind;
    std::uint32_t pageSize;
    std::uint32_t maximumPages;  ///< the format's size limit: 1 GiB or 2 GiB
    std::uint32_t maximumRow;    ///< largest row on a data page

    // Header page: the masked block from 0x18 on and the commit bytes.
    std::uint32_t maskedLength;
    std::uint32_t passwordLength;
    std::uint32_t commitOffset;

    // Data page.
    std::uint32_t dataHeader;       ///< where the slots begin
    std::uint32_t slotCountOffset;  ///< number of slots, 16 bits

    // Usage map rows as created.
    std::uint32_t mapRow;

    // Table definition.
    std::uint32_t rowCountOffset;
    std::uint32_t autoNumberOffset;
    std::uint32_t tableTypeOffset;  ///< followed by the column and index counts
    std::uint32_t mapPointersOffset;
    std::uint32_t definitionHeader;  ///< where the variable part begins
    std::uint32_t indexCounter;
    std::uint32_t columnDescriptor;
    std::uint32_t realIndex;
    std::uint32_t logicalIndex;

    // Rows.
    std::uint32_t rowCountField;    ///< width of the column count at the head of a row
    std::uint32_t inlineLongValue;  ///< largest long value that is kept in its row
    std::uint32_t textUnit;         ///< bytes that a character of a Text column counts for

    // Index page.
    std::uint32_t indexMask;
    std::uint32_t indexEntries;

    bool isJet4() const { return kind == FileFormat::Jet4; }
    /// Pages that one page of an indirect usage map covers.
    std::uint32_t pagesPerMapPage() const { return (pageSize - 4) * 8; }
    /// Largest piece of a long value that one row of its own can hold.
    std::uint32_t maximumLongValueRow() const { return pageSize - dataHeader - 2; }
};

inline constexpr Format jet3Format{
    .kind = FileFormat::Jet3,
    .pageSize = 2048,
    .maximumPages = 524288,
    .maximumRow = 2012,
    .maskedLength = 126,
    .passwordLength = 20,
    .commitOffset = 0x600,
    .dataHeader = 10,
    .slotCountOffset = 8,
    .mapRow = 133,
    .rowCountOffset = 12,
    .autoNumberOffset = 16,
    .tableTypeOffset = 20,
    .mapPointersOffset = 35,
    .definitionHeader = 43,
    .indexCounter = 8,
    .columnDescriptor = 18,
    .realIndex = 39,
    .logicalIndex = 20,
    .rowCountField = 1,
    .inlineLongValue = 32,
    .textUnit = 1,
    .indexMask = 22,
    .indexEntries = 0xF8,
};

inline constexpr Format jet4Format{
    .kind = FileFormat::Jet4,
    .pageSize = 4096,
    .maximumPages = 524288,
    .maximumRow = 4060,
    .maskedLength = 128,
    .passwordLength = 40,
    .commitOffset = 0xE00,
    .dataHeader = 14,
    .slotCountOffset = 12,
    .mapRow = 69,
    .rowCountOffset = 16,
    .autoNumberOffset = 20,
    .tableTypeOffset = 40,
    .mapPointersOffset = 55,
    .definitionHeader = 63,
    .indexCounter = 12,
    .columnDescriptor = 25,
    .realIndex = 52,
    .logicalIndex = 28,
    .rowCountField = 2,
    .inlineLongValue = 64,
    .textUnit = 2,
    .indexMask = 27,
    .indexEntries = 0x1E0,
};

/// First byte of a page; the second is always 1.
enum class PageKind : std::uint8_t {
    Header = 0x00,
    Data = 0x01,
    TableDefinition = 0x02,
    IndexNode = 0x03,
    IndexLeaf = 0x04,
    UsageMap = 0x05,
};

/// Names a row by page and slot. In table definitions, long values and pointer rows it is stored as
/// one number: page << 8 | slot.
struct RowPointer {
    std::uint32_t page = 0;
    std::uint8_t slot = 0;

    static RowPointer fromStored(std::uint32_t stored) {
        return {stored >> 8, static_cast<std::uint8_t>(stored)};
    }
    std::uint32_t stored() const { return page << 8 | slot; }

    friend bool operator==(const RowPointer&, const RowPointer&) = default;
};

/// Owner field of pages that hold long values: "LVAL".
constexpr std::uint32_t longValueOwner = 0x4C41564C;

}  // namespace jet
