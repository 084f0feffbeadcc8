#include "jet/long_value_check.h"

#include <algorithm>

#include "jet/data_page.h"

namespace jet {

namespace {

constexpr std::uint32_t inlineFlag = 0x80000000;
constexpr std::uint32_t singleFlag = 0x40000000;
constexpr std::uint32_t lengthMask = 0x3FFFFFFF;
constexpr std::size_t definitionBytes = 12;
constexpr std::size_t pointerBytes = 4;

}  // namespace

LongValueCheck::LongValueCheck(PageFile& pages, PageCensus& census, CheckReport& report,
                               std::uint32_t table, const StoredColumn& column)
    : pages_(pages), census_(census), report_(report), table_(table), column_(column) {}

void LongValueCheck::fail(RowPointer home, const std::string& why) {
    report_.damage(home.page, "row " + std::to_string(home.slot) + ": the value of " +
                                  column_.field.name + " " + why);
}

void LongValueCheck::checkMaps() {
    if (column_.ownedMap.page == 0) {
        return;
    }
    owned_ =
        census_.readMap(column_.ownedMap, table_, "the map of the pages of " + column_.field.name);
    for (std::uint32_t page = owned_.first(); page != PageSet::none; page = owned_.next(page + 1)) {
        census_.claim(page, PageCensus::Use::LongValues, table_);
    }
    if (column_.freeMap.page == 0) {
        return;
    }
    const PageSet free = census_.readMap(column_.freeMap, table_,
                                         "the map of the pages with room of " + column_.field.name);
    for (std::uint32_t page = free.first(); page != PageSet::none; page = free.next(page + 1)) {
        if (!owned_.contains(page)) {
            report_.damage(page, "it is said to have room for " + column_.field.name +
                                     " but is no page of it");
        }
    }
}

void LongValueCheck::checkValue(RowPointer home, std::string_view definition) {
    if (definition.size() < definitionBytes) {
        fail(home, "has a definition of " + std::to_string(definition.size()) + " bytes");
        return;
    }
    const std::uint32_t head = get32(asBytes(definition).data());
    const std::uint32_t length = head & lengthMask;
    start_.clear();
    if ((head & inlineFlag) != 0) {
        if (length > definition.size() - definitionBytes) {
            fail(home, "is longer than its row");
        }
        start_ = definition.substr(definitionBytes, 2);
    } else {
        RowPointer place = RowPointer::fromStored(get32(asBytes(definition).data() + 4));
        const bool single = (head & singleFlag) != 0;
        for (std::uint32_t left = length; left > 0;) {
            std::uint32_t piece = 0;
            const RowPointer here = place;
            if (!takePiece(home, here, single, piece, place)) {
                return;
            }
            if ((single && piece < left) || piece == 0) {
                fail(home, "is shorter than its definition says");
                return;
            }
            left -= std::min(left, piece);
        }
    }
    checkText(home, length, asBytes(start_));
}

bool LongValueCheck::takePiece(RowPointer home, RowPointer place, bool single,
                               std::uint32_t& length, RowPointer& next) {
    if (!owned_.contains(place.page)) {
        fail(home,
             "leads to page " + std::to_string(place.page) + ", which is no page of this column");
        return false;
    }
    if (!pieces_.insert(place)) {
        fail(home, "leads to row " + std::to_string(place.slot) + " of page " +
                       std::to_string(place.page) + ", which belongs to a value already");
        return false;
    }
    const PageHandle page = pages_.read(place.page);
    const DataPage view(pages_.format(), *page);
    const ByteSpan row = view.isDataPage() ? view.row(place.slot) : ByteSpan{};
    const std::size_t skip = single ? 0 : pointerBytes;
    if (row.data() == nullptr || view.kind(place.slot) != DataPage::RowKind::Live ||
        row.size() < skip) {
        fail(home, "leads to row " + std::to_string(place.slot) + " of page " +
                       std::to_string(place.page) + ", where there is none");
        return false;
    }
    length = static_cast<std::uint32_t>(row.size() - skip);
    if (start_.empty()) {
        start_ = asText(row.subspan(skip, std::min<std::size_t>(2, length)));
    }
    next = single ? RowPointer{} : RowPointer::fromStored(get32(row.data()));
    return true;
}

/// Plain Jet 4 text consists of units of two bytes.
void LongValueCheck::checkText(RowPointer home, std::uint32_t length, ByteSpan start) {
    const bool compressed = start.size() == 2 && get16(start.data()) == 0xFEFF;
    if (column_.field.type == DataType::Memo && pages_.format().isJet4() && !compressed &&
        length % 2 != 0) {
        fail(home, "is a text of " + std::to_string(length) + " bytes, half a character");
    }
}

void LongValueCheck::checkPages() {
    for (std::uint32_t number = owned_.first(); number != PageSet::none;
         number = owned_.next(number + 1)) {
        const PageHandle page = pages_.read(number);
        const DataPage view(pages_.format(), *page);
        if (!view.wellFormed() || view.owner() != longValueOwner) {
            report_.damage(number, "it should hold values of " + column_.field.name);
            continue;
        }
        if (!view.hasExactFreeBytes()) {
            report_.damage(number, "its free bytes are counted wrong");
        }
        std::uint32_t lost = 0;
        for (std::uint32_t slot = 0; slot < std::min(view.slotCount(), DataPage::maximumSlots + 1);
             ++slot) {
            const RowPointer place{number, static_cast<std::uint8_t>(slot)};
            lost += view.kind(slot) != DataPage::RowKind::Deleted && !pieces_.contains(place);
        }
        if (lost != 0) {
            report_.lostSpace(number, std::to_string(lost) + " piece(s) of values of " +
                                          column_.field.name + " belong to no row");
        }
    }
}

}  // namespace jet
