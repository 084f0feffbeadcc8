#include "jet/usage_map.h"

#include <algorithm>
#include <cstring>

#include "jet/damage.h"
#include "jet/data_page.h"

namespace jet {

namespace {

constexpr std::size_t inlineHeader = 5;
constexpr std::uint8_t inlineKind = 0;
constexpr std::uint8_t indirectKind = 1;

}  // namespace

UsageMap UsageMap::read(PageFile& pages, RowPointer place, Meaning meaning) {
    UsageMap map;
    map.place_ = place;
    map.meaning_ = meaning;
    const PageHandle page = pages.read(place.page);
    const DataPage view(pages.format(), *page);
    const ByteSpan row = view.isDataPage() ? view.row(place.slot) : ByteSpan{};
    if (row.empty() || row[0] > indirectKind ||
        (row[0] == inlineKind && row.size() < inlineHeader)) {
        failDamaged(place.page, "row " + std::to_string(place.slot) + " is no usage map");
    }
    map.rowLength_ = row.size();
    map.indirect_ = row[0] == indirectKind;
    if (map.indirect_) {
        // Reading the map pages may evict the page that the row stands on.
        const std::vector<std::uint8_t> copy(row.begin(), row.end());
        map.readIndirect(pages, copy);
    } else {
        map.readInline(row, pages.pageCount());
    }
    map.changed_ = false;
    return map;
}

void UsageMap::readInline(ByteSpan row, std::uint32_t pageCount) {
    start_ = get32(row.data() + 1);
    // What lies before the bitmap of free pages is never handed out.
    for (std::uint32_t page = 0;
         meaning_ == Meaning::FreePages && page < std::min(start_, pageCount); ++page) {
        set_.insert(page);
    }
    addBits(row.subspan(inlineHeader), start_, pageCount);
}

void UsageMap::readIndirect(PageFile& pages, ByteSpan row) {
    const std::uint32_t covered = pages.format().pagesPerMapPage();
    for (std::uint32_t entry = 0; 1 + 4 * (entry + 1) <= row.size(); ++entry) {
        const std::uint32_t number = get32(row.data() + 1 + 4 * entry);
        mapPages_.push_back(number);
        if (number == 0) {
            // In the map of free pages a stretch without a bitmap has no free page.
            const std::vector<std::uint8_t> none(pages.format().pageSize - 4, 0);
            addBits(none, entry * covered, pages.pageCount());
            continue;
        }
        const PageHandle page = pages.read(number);
        if (page.bytes()[0] != static_cast<std::uint8_t>(PageKind::UsageMap)) {
            failDamaged(number, "it should be a page of a usage map");
        }
        addBits(ByteSpan(page.bytes() + 4, pages.format().pageSize - 4), entry * covered,
                pages.pageCount());
    }
}

/// Adds the pages of a stretch of bitmap that lie in the file: the set bits, or in the map of free
/// pages the clear ones.
void UsageMap::addBits(ByteSpan bitmap, std::uint32_t firstPage, std::uint32_t pageCount) {
    const std::uint8_t flip = meaning_ == Meaning::FreePages ? 0xFF : 0x00;
    for (std::size_t i = 0; i < bitmap.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>(bitmap[i] ^ flip);
        const std::uint64_t base = std::uint64_t{firstPage} + 8 * i;
        if (base >= pageCount) {
            break;
        }
        for (unsigned bit = 0; byte >> bit != 0 && base + bit < pageCount; ++bit) {
            if ((byte >> bit & 1) != 0) {
                set_.insert(static_cast<std::uint32_t>(base + bit));
            }
        }
    }
}

bool UsageMap::fitsInline(std::size_t rowLength, std::uint32_t& start) const {
    const std::uint64_t capacity = (rowLength - inlineHeader) * 8;
    start = set_.empty() ? 0 : set_.first() & ~std::uint32_t{7};
    return set_.empty() || set_.last() < start + capacity;
}

void UsageMap::prepare(PageFile& pages, const AllocatePage& allocate) {
    if (!changed_) {
        return;
    }
    if (meaning_ == Meaning::FreePages) {
        prepareFreePages(pages, allocate);
        return;
    }
    if (!indirect_) {
        const std::uint64_t capacity = (rowLength_ - inlineHeader) * 8;
        const bool inside =
            set_.empty() || (set_.first() >= start_ && set_.last() < start_ + capacity);
        if (inside || fitsInline(rowLength_, start_)) {
            return;
        }
        becomeIndirect();
    }
    allocateMapPages(pages, allocate);
}

/// The map of free pages must reach to the last page of the file. As long as page 1 has room its
/// row is lengthened, four bytes at a time; then the map becomes indirect.
void UsageMap::prepareFreePages(PageFile& pages, const AllocatePage& allocate) {
    if (!indirect_) {
        const std::size_t bytes = (std::size_t{pages.pageCount() - start_} + 7) / 8;
        const std::size_t missing =
            inlineHeader + bytes > rowLength_ ? inlineHeader + bytes - rowLength_ : 0;
        const std::size_t wanted = rowLength_ + (missing + 3) / 4 * 4;
        const PageHandle page = pages.read(place_.page);
        DataPage view(pages.format(), *page);
        if (view.canReplace(place_.slot, wanted)) {
            rowLength_ = wanted;
            return;
        }
        rowLength_ = pages.format().mapRow;
        becomeIndirect();
    }
    allocateMapPages(pages, allocate);
}

void UsageMap::becomeIndirect() {
    indirect_ = true;
    mapPages_.assign((rowLength_ - 1) / 4, 0);
}

void UsageMap::allocateMapPages(PageFile& pages, const AllocatePage& allocate) {
    const std::uint32_t covered = pages.format().pagesPerMapPage();
    // Allocating a page may lengthen the file and so the map of free pages itself: look again each
    // time.
    for (std::uint32_t entry = 0;; ++entry) {
        const bool ofFreePages = meaning_ == Meaning::FreePages;
        const std::uint32_t end =
            ofFreePages ? pages.pageCount() : (set_.empty() ? 0 : set_.last() + 1);
        if (std::uint64_t{entry} * covered >= end) {
            return;
        }
        if (entry >= mapPages_.size()) {
            throw base::EngineFailure(base::EngineFault::Full,
                                      pages.path() + ": a usage map has no room for another page");
        }
        const bool needed =
            ofFreePages || set_.next(entry * covered) < (std::uint64_t{entry} + 1) * covered;
        if (mapPages_[entry] == 0 && needed) {
            mapPages_[entry] = allocate();
            pages.create(mapPages_[entry]);
        }
    }
}

void UsageMap::fill(PageFile& pages) {
    if (!changed_) {
        return;
    }
    std::vector<std::uint8_t> row(rowLength_, 0);
    row[0] = indirect_ ? indirectKind : inlineKind;
    if (indirect_) {
        fillMapPages(pages);
        for (std::size_t entry = 0; entry < mapPages_.size(); ++entry) {
            put32(row.data() + 1 + 4 * entry, mapPages_[entry]);
        }
    } else {
        put32(row.data() + 1, start_);
        fillBitmap(row.data() + inlineHeader, row.size() - inlineHeader, start_);
    }
    fillRow(pages, row);
    changed_ = false;
    filled_ = true;
}

void UsageMap::fillBitmap(std::uint8_t* bitmap, std::size_t bytes, std::uint32_t firstPage) const {
    std::memset(bitmap, 0, bytes);
    const std::uint64_t end = std::uint64_t{firstPage} + 8 * bytes;
    for (std::uint32_t page = set_.next(firstPage); page != PageSet::none && page < end;
         page = set_.next(page + 1)) {
        bitmap[(page - firstPage) / 8] |= static_cast<std::uint8_t>(1u << (page - firstPage) % 8);
    }
    if (meaning_ == Meaning::FreePages) {
        for (std::size_t i = 0; i < bytes; ++i) {
            bitmap[i] = static_cast<std::uint8_t>(~bitmap[i]);
        }
    }
}

void UsageMap::fillMapPages(PageFile& pages) {
    const std::uint32_t covered = pages.format().pagesPerMapPage();
    for (std::uint32_t entry = 0; entry < mapPages_.size(); ++entry) {
        if (mapPages_[entry] == 0) {
            continue;
        }
        std::vector<std::uint8_t> bytes(pages.format().pageSize, 0);
        put32(bytes.data(), 0x0105);
        fillBitmap(bytes.data() + 4, bytes.size() - 4, entry * covered);
        const PageHandle page = pages.read(mapPages_[entry]);
        if (!std::equal(bytes.begin(), bytes.end(), page.bytes())) {
            std::copy(bytes.begin(), bytes.end(), page.bytes());
            pages.changed(*page);
        }
    }
}

void UsageMap::fillRow(PageFile& pages, ByteSpan row) const {
    const PageHandle page = pages.read(place_.page);
    DataPage view(pages.format(), *page);
    if (!view.wellFormed() || !view.canReplace(place_.slot, row.size())) {
        failDamaged(place_.page, "its rows do not lie in order");
    }
    view.replace(place_.slot, row, DataPage::RowKind::Live);
    pages.changed(*page);
}

void UsageMap::write(PageFile& pages) {
    if (!filled_) {
        return;
    }
    for (const std::uint32_t number : mapPages_) {
        if (number != 0) {
            if (const PageHandle page = pages.read(number); page->dirty) {
                pages.writePage(*page);
            }
        }
    }
    if (const PageHandle page = pages.read(place_.page); page->dirty) {
        pages.writePage(*page);
    }
    filled_ = false;
}

}  // namespace jet
