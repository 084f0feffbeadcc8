#pragma once

#include <cstdint>

#include "jet/bytes.h"
#include "jet/format.h"
#include "jet/page_file.h"

namespace jet {

/// A view of a data page, and the changes that can be made to it. Offsets in bytes from the page's
/// start, numbers little-endian.
///
///     Jet 3  Jet 4
///     0      0      2   01 01
///     2      2      2   free bytes between the slots and the rows
///     4      4      4   owner: page of the table's definition, "LVAL", or 0 for usage maps
///     8      12     2   number of slots, counted from 0
///     10     14     2n  slots: start of the row in bits 0 to 12, flags above
///
/// Rows are stored downward from the end of the page in the order of the slots; row r ends where
/// row r - 1 starts. Slots are never reused, as row numbers are identities.
///
/// The view trusts nothing on the page: row() is the bounded way to a row's bytes. The changing
/// operations are for pages that wellFormed() has passed.
class DataPage {
  public:
    enum class RowKind : std::uint8_t {
        Live,     ///< a row in its home place
        Pointer,  ///< its first four bytes name the place that the row moved to
        Moved,    ///< such a place
        Deleted,
    };
    static constexpr std::uint32_t maximumSlots = 255;

    DataPage(const Format& format, Page& page)
        : format_(&format), page_(&page), bytes_(page.bytes.get()) {}

    /// Writes the header of an empty page.
    void initialise(std::uint32_t owner);

    bool isDataPage() const { return get16(bytes_) == 0x0101; }
    std::uint32_t owner() const { return get32(bytes_ + 4); }
    std::uint32_t slotCount() const { return get16(bytes_ + format_->slotCountOffset); }
    std::uint32_t freeBytes() const { return get16(bytes_ + 2); }
    /// True when slots and starts lie within the page and never increase.
    bool wellFormed() const;
    /// True when the free bytes of a wellFormed() page are all those between slots and rows, which
    /// is so on every page that no writer has treated carelessly.
    bool hasExactFreeBytes() const {
        return freeBytes() == lowestStart() - format_->dataHeader - 2 * slotCount();
    }

    RowKind kind(std::uint32_t slot) const { return kindOf(stored(slot)); }
    /// The bytes of a row, whatever its kind; empty and data() == nullptr when the slot's bounds
    /// make no sense.
    ByteSpan row(std::uint32_t slot) const;
    MutableByteSpan mutableRow(std::uint32_t slot);

    bool fits(std::size_t length) const {
        return slotCount() < maximumSlots && length + 2 <= freeBytes();
    }
    /// Adds a row that fits() and returns its slot.
    std::uint32_t insert(ByteSpan row, RowKind kind = RowKind::Live);
    /// True when replace() with a row of that length would find the room.
    bool canReplace(std::uint32_t slot, std::size_t length) const;
    void replace(std::uint32_t slot, ByteSpan row, RowKind kind);
    /// Marks the row deleted; its bytes are given back by squeeze().
    void erase(std::uint32_t slot);
    /// Gives the space of deleted rows back to the free bytes.
    void squeeze();
    /// Rows that are not deleted.
    std::uint32_t liveSlots() const;

  private:
    static constexpr std::uint32_t offsetMask = 0x1FFF;
    static constexpr std::uint32_t flagMask = 0xC000;

    static RowKind kindOf(std::uint32_t stored) {
        return static_cast<RowKind>((stored & 0x8000) != 0 ? ((stored & 0x4000) != 0 ? 3 : 2)
                                                           : ((stored & 0x4000) != 0 ? 1 : 0));
    }
    static std::uint32_t flagsOf(RowKind kind) { return static_cast<std::uint32_t>(kind) << 14; }

    std::uint32_t stored(std::uint32_t slot) const {
        return get16(bytes_ + format_->dataHeader + 2 * slot);
    }
    std::uint32_t start(std::uint32_t slot) const { return stored(slot) & offsetMask; }
    std::uint32_t end(std::uint32_t slot) const {
        return slot == 0 ? format_->pageSize : start(slot - 1);
    }
    void putSlot(std::uint32_t slot, std::uint32_t startOffset, RowKind kind) {
        put16(bytes_ + format_->dataHeader + 2 * slot, startOffset | flagsOf(kind));
    }
    std::uint32_t lowestStart() const {
        const std::uint32_t count = slotCount();
        return count == 0 ? format_->pageSize : start(count - 1);
    }
    void updateFreeBytes();

    const Format* format_;
    Page* page_;
    std::uint8_t* bytes_;
};

}  // namespace jet
