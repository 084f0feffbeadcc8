#include "jet/index_page.h"

#include <algorithm>
#include <cstring>

namespace jet {

namespace {

struct Offsets {
    std::uint32_t previous;
    std::uint32_t prefix;
    std::uint32_t level;
};

Offsets offsetsOf(const Format& format) {
    return format.isJet4() ? Offsets{12, 24, 26} : Offsets{8, 20, 21};
}

std::size_t totalSize(const std::vector<std::string>& entries) {
    std::size_t size = 0;
    for (const std::string& entry : entries) {
        size += entry.size();
    }
    return size;
}

}  // namespace

bool IndexPage::read(const Format& format, const std::uint8_t* page, IndexPage& result) {
    const Offsets at = offsetsOf(format);
    const auto kind = static_cast<PageKind>(page[0]);
    if (page[1] != 1 || (kind != PageKind::IndexLeaf && kind != PageKind::IndexNode)) {
        return false;
    }
    result = {};
    result.leaf = kind == PageKind::IndexLeaf;
    result.table = get32(page + 4);
    result.previous = get32(page + at.previous);
    result.next = get32(page + at.previous + 4);
    result.tail = get32(page + at.previous + 8);
    result.level = page[at.level];
    result.freeBytes = get16(page + 2);
    const std::size_t prefixLength = format.isJet4() ? get16(page + at.prefix) : page[at.prefix];
    const std::size_t maskBits = std::size_t{format.indexEntries - format.indexMask} * 8;
    const std::uint8_t* const entryBytes = page + format.indexEntries;
    std::string prefix;
    std::size_t start = 0;
    for (std::size_t bit = 1; bit < maskBits; ++bit) {
        if ((page[format.indexMask + bit / 8] >> (bit % 8) & 1) == 0) {
            continue;
        }
        if (format.indexEntries + bit > format.pageSize) {
            return false;
        }
        std::string entry = prefix + std::string(asText({entryBytes + start, bit - start}));
        if (entry.size() < 4) {
            return false;
        }
        if (result.entries.empty()) {
            prefix = entry.substr(0, std::min(prefixLength, entry.size()));
        }
        result.entries.push_back(std::move(entry));
        start = bit;
        result.storedBytes = static_cast<std::uint32_t>(bit);
    }
    return true;
}

bool IndexPage::fits(const Format& format) const {
    return totalSize(entries) <= format.pageSize - format.indexEntries;
}

void IndexPage::write(const Format& format, std::uint8_t* page) const {
    const Offsets at = offsetsOf(format);
    std::memset(page, 0, format.pageSize);
    page[0] = static_cast<std::uint8_t>(leaf ? PageKind::IndexLeaf : PageKind::IndexNode);
    page[1] = 1;
    put16(page + 2,
          static_cast<std::uint32_t>(format.pageSize - format.indexEntries - totalSize(entries)));
    put32(page + 4, table);
    put32(page + at.previous, previous);
    put32(page + at.previous + 4, next);
    put32(page + at.previous + 8, tail);
    page[at.level] = level;
    std::size_t end = 0;
    for (const std::string& entry : entries) {
        std::copy(entry.begin(), entry.end(), page + format.indexEntries + end);
        end += entry.size();
        page[format.indexMask + end / 8] |= static_cast<std::uint8_t>(1u << end % 8);
    }
}

std::string IndexPage::leafEntry(std::string_view key, RowPointer row) {
    ByteWriter out;
    out.raw(key).u24BigEndian(row.page).u8(row.slot);
    return std::move(out.bytes());
}

}  // namespace jet
