#include "jet/data_page.h"

#include <cassert>
#include <cstring>

namespace jet {

// The kinds are numbered as the two flag bits of a slot: 0x4000 pointer, 0x8000 moved, both
// deleted.
static_assert(static_cast<int>(DataPage::RowKind::Pointer) == 1);
static_assert(static_cast<int>(DataPage::RowKind::Moved) == 2);
static_assert(static_cast<int>(DataPage::RowKind::Deleted) == 3);

void DataPage::initialise(std::uint32_t owner) {
    put16(bytes_, 0x0101);
    put32(bytes_ + 4, owner);
    put16(bytes_ + format_->slotCountOffset, 0);
    updateFreeBytes();
}

bool DataPage::wellFormed() const {
    const std::uint32_t count = slotCount();
    const std::uint32_t slotsEnd = format_->dataHeader + 2 * count;
    if (!isDataPage() || slotsEnd > format_->pageSize) {
        return false;
    }
    std::uint32_t previous = format_->pageSize;
    for (std::uint32_t slot = 0; slot < count; ++slot) {
        const std::uint32_t offset = start(slot);
        if (offset > previous || offset < slotsEnd) {
            return false;
        }
        previous = offset;
    }
    return freeBytes() <= previous - slotsEnd;
}

ByteSpan DataPage::row(std::uint32_t slot) const {
    const std::uint32_t count = slotCount();
    const std::uint32_t slotsEnd = format_->dataHeader + 2 * count;
    if (slot >= count || slotsEnd > format_->pageSize) {
        return {};
    }
    const std::uint32_t first = start(slot);
    const std::uint32_t last = end(slot);
    if (first > last || last > format_->pageSize || first < slotsEnd) {
        return {};
    }
    return {bytes_ + first, last - first};
}

MutableByteSpan DataPage::mutableRow(std::uint32_t slot) {
    const ByteSpan bytes = row(slot);
    return {const_cast<std::uint8_t*>(bytes.data()), bytes.size()};
}

std::uint32_t DataPage::insert(ByteSpan row, RowKind kind) {
    assert(fits(row.size()));
    const std::uint32_t slot = slotCount();
    const auto begin = static_cast<std::uint32_t>(lowestStart() - row.size());
    std::memcpy(bytes_ + begin, row.data(), row.size());
    putSlot(slot, begin, kind);
    put16(bytes_ + format_->slotCountOffset, slot + 1);
    put16(bytes_ + 2, static_cast<std::uint32_t>(freeBytes() - row.size() - 2));
    if (page_->liveRows >= 0) {
        ++page_->liveRows;
    }
    return slot;
}

bool DataPage::canReplace(std::uint32_t slot, std::size_t length) const {
    return length <= end(slot) - start(slot) + freeBytes();
}

void DataPage::replace(std::uint32_t slot, ByteSpan row, RowKind kind) {
    assert(canReplace(slot, row.size()));
    const std::uint32_t count = slotCount();
    const std::uint32_t rowEnd = end(slot);
    const std::uint32_t oldStart = start(slot);
    const auto newStart = static_cast<std::uint32_t>(rowEnd - row.size());
    const std::uint32_t lowest = lowestStart();
    // The rows stored below move by the difference, and their slots with them.
    std::memmove(bytes_ + lowest + newStart - oldStart, bytes_ + lowest, oldStart - lowest);
    for (std::uint32_t later = slot + 1; later < count; ++later) {
        putSlot(later, start(later) + newStart - oldStart, this->kind(later));
    }
    putSlot(slot, newStart, kind);
    std::memcpy(bytes_ + newStart, row.data(), row.size());
    updateFreeBytes();
}

void DataPage::erase(std::uint32_t slot) {
    if (page_->liveRows > 0 && kind(slot) != RowKind::Deleted) {
        --page_->liveRows;
    }
    putSlot(slot, start(slot), RowKind::Deleted);
    page_->squeezePending = true;
}

void DataPage::squeeze() {
    page_->squeezePending = false;
    const std::uint32_t count = slotCount();
    std::uint32_t oldEnd = format_->pageSize;
    std::uint32_t newEnd = format_->pageSize;
    for (std::uint32_t slot = 0; slot < count; ++slot) {
        const std::uint32_t oldStart = start(slot);
        const RowKind rowKind = kind(slot);
        const std::uint32_t length = rowKind == RowKind::Deleted ? 0 : oldEnd - oldStart;
        const std::uint32_t newStart = newEnd - length;
        if (length != 0 && newStart != oldStart) {
            std::memmove(bytes_ + newStart, bytes_ + oldStart, length);
        }
        putSlot(slot, newStart, rowKind);
        oldEnd = oldStart;
        newEnd = newStart;
    }
    updateFreeBytes();
}

std::uint32_t DataPage::liveSlots() const {
    std::uint32_t live = 0;
    const std::uint32_t count = slotCount();
    for (std::uint32_t slot = 0; slot < count; ++slot) {
        live += kind(slot) != RowKind::Deleted ? 1 : 0;
    }
    return live;
}

void DataPage::updateFreeBytes() {
    put16(bytes_ + 2, lowestStart() - format_->dataHeader - 2 * slotCount());
}

}  // namespace jet
