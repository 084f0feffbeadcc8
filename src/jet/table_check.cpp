#include "jet/table_check.h"

#include <algorithm>

#include "jet/bytes.h"
#include "jet/table.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

using RowKind = DataPage::RowKind;

constexpr std::uint32_t chainHeader = 8;
constexpr std::size_t pointerBytes = 4;

}  // namespace

TableCheck::TableCheck(PageFile& pages, PageCensus& census, CheckReport& report,
                       const StoredTable& table)
    : pages_(pages),
      census_(census),
      report_(report),
      table_(table),
      longValueOf_(table.columns.size(), -1) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (isLongValue(table.columns[i].field.type)) {
            longValueOf_[i] = static_cast<int>(longValues_.size());
            longValues_.emplace_back(pages, census, report, table.page(), table.columns[i]);
        }
    }
    for (const StoredIndex& index : table.indexes) {
        indexes_.emplace_back(pages, census, report, table, index);
    }
}

void TableCheck::run(const Visitor& visitor) {
    checkDefinition();
    checkMaps();
    for (LongValueCheck& values : longValues_) {
        values.checkMaps();
    }
    for (std::uint32_t page = owned_.first(); page != PageSet::none; page = owned_.next(page + 1)) {
        checkPage(page, visitor);
    }
    checkCounts();
    for (LongValueCheck& values : longValues_) {
        values.checkPages();
    }
    for (IndexCheck& index : indexes_) {
        index.run(homes_, interrupted_);
    }
    report_.rowCount += rows_;
}

void TableCheck::damageRow(RowPointer place, const std::string& what) {
    report_.damage(place.page,
                   "row " + std::to_string(place.slot) + " of table " + table_.name + " " + what);
}

void TableCheck::reportLeftover(std::uint32_t page, const std::string& what) {
    if (interrupted_) {
        report_.unfinished(page, what);
    } else {
        report_.damage(page, what);
    }
}

void TableCheck::checkDefinition() {
    for (const std::uint32_t page : table_.pages) {
        census_.claim(page, PageCensus::Use::Definition, table_.page());
    }
    const PageHandle first = pages_.read(table_.page());
    interrupted_ = Table::bearsMark(pages_.format(), first.bytes());
    if (interrupted_) {
        report_.unfinished(table_.page(), "a change of table " + table_.name + " was cut short");
    }
    checkDefinitionEnd();
}

/// The byte string ends with FF FF, on the last page of the chain.
void TableCheck::checkDefinitionEnd() {
    const std::uint32_t pageSize = pages_.format().pageSize;
    const std::uint32_t length = get32(pages_.read(table_.page()).bytes() + chainHeader);
    std::uint32_t end[2] = {};
    for (std::uint32_t i = 0; i < 2; ++i) {
        const std::uint32_t at = length - 2 + i;
        const std::uint32_t link =
            at < pageSize ? 0 : 1 + (at - pageSize) / (pageSize - chainHeader);
        const std::uint32_t offset =
            at < pageSize ? at : chainHeader + (at - pageSize) % (pageSize - chainHeader);
        if (link < table_.pages.size()) {
            end[i] = pages_.read(table_.pages[link]).bytes()[offset];
        }
        if (i == 1 && link + 1 != table_.pages.size()) {
            report_.damage(table_.page(), "the definition of table " + table_.name + " needs " +
                                              std::to_string(link + 1) + " pages and has " +
                                              std::to_string(table_.pages.size()));
        }
    }
    if (end[0] != 0xFF || end[1] != 0xFF) {
        report_.damage(table_.page(),
                       "the definition of table " + table_.name + " has a wrong length");
    }
}

void TableCheck::checkMaps() {
    owned_ = census_.readMap(table_.ownedMap, table_.page(),
                             "the map of the pages of table " + table_.name);
    const PageSet room = census_.readMap(table_.freeMap, table_.page(),
                                         "the map of the pages with room of table " + table_.name);
    for (std::uint32_t page = room.first(); page != PageSet::none; page = room.next(page + 1)) {
        if (!owned_.contains(page)) {
            report_.damage(
                page, "it is said to have room for table " + table_.name + " but is no page of it");
        }
    }
    for (std::uint32_t page = owned_.first(); page != PageSet::none; page = owned_.next(page + 1)) {
        census_.claim(page, PageCensus::Use::Rows, table_.page());
    }
}

void TableCheck::checkPage(std::uint32_t number, const Visitor& visitor) {
    const PageHandle page = pages_.read(number);
    const DataPage view(pages_.format(), *page);
    if (!view.isDataPage() || view.owner() != table_.page()) {
        report_.damage(number, "it should hold rows of table " + table_.name);
        return;
    }
    if (!view.wellFormed() || view.slotCount() > DataPage::maximumSlots) {
        report_.damage(number, "its rows do not lie in order");
        return;
    }
    if (!view.hasExactFreeBytes()) {
        report_.damage(number, "its free bytes are counted wrong");
    }
    std::uint32_t moved = 0;
    for (std::uint32_t slot = 0; slot < view.slotCount(); ++slot) {
        moved += view.kind(slot) == RowKind::Moved;
        checkSlot({number, static_cast<std::uint8_t>(slot)}, view, visitor);
    }
    if (moved != 0) {
        moved_.emplace_back(number, moved);
    }
}

void TableCheck::checkSlot(RowPointer place, const DataPage& view, const Visitor& visitor) {
    const RowKind kind = view.kind(place.slot);
    if (kind != RowKind::Live && kind != RowKind::Pointer) {
        return;
    }
    ++rows_;
    if (!table_.indexes.empty()) {
        homes_.insert(place);
    }
    const ByteSpan bytes = view.row(place.slot);
    if (kind == RowKind::Live) {
        checkRow(place, bytes, visitor);
    } else {
        checkPointer(place, bytes, visitor);
    }
}

void TableCheck::checkPointer(RowPointer home, ByteSpan pointer, const Visitor& visitor) {
    if (pointer.size() < pointerBytes) {
        damageRow(home, "is a cut pointer");
        return;
    }
    const RowPointer place = RowPointer::fromStored(get32(pointer.data()));
    const std::string target =
        "row " + std::to_string(place.slot) + " of page " + std::to_string(place.page);
    if (!owned_.contains(place.page)) {
        damageRow(home, "leads to " + target + ", which is no page of the table");
        return;
    }
    if (!referred_.insert(place)) {
        damageRow(home, "leads to " + target + ", as another row does");
        return;
    }
    const PageHandle page = pages_.read(place.page);
    const DataPage view(pages_.format(), *page);
    const ByteSpan row = view.isDataPage() ? view.row(place.slot) : ByteSpan{};
    if (row.data() == nullptr || view.kind(place.slot) != RowKind::Moved) {
        damageRow(home, "leads to " + target + ", where no row has moved to");
        return;
    }
    checkRow(home, row, visitor);
}

void TableCheck::checkRow(RowPointer home, ByteSpan bytes, const Visitor& visitor) {
    RowView row;
    if (!row.parse(pages_.format(), table_.variableEver != 0, bytes) ||
        row.columnCount() > table_.columnsEver) {
        damageRow(home, "has no sound structure");
        return;
    }
    if (!row.offsetsInOrder()) {
        damageRow(home, "has values out of order");
        return;
    }
    for (std::size_t column = 0; column < table_.columns.size(); ++column) {
        if (row.isPresent(table_.columns[column].number)) {
            checkValue(home, column, row);
        }
    }
    if (visitor) {
        visitor(home, row);
    }
}

void TableCheck::checkValue(RowPointer home, std::size_t column, const RowView& row) {
    const StoredColumn& stored = table_.columns[column];
    if (stored.field.type == DataType::Boolean) {
        return;
    }
    const ByteSpan bytes = row.bytes(stored);
    if (stored.fixed && bytes.size() != stored.length) {
        damageRow(home, "is too short for " + stored.field.name);
        return;
    }
    if (longValueOf_[column] >= 0) {
        longValues_[static_cast<std::size_t>(longValueOf_[column])].checkValue(home, asText(bytes));
    } else if (stored.field.type == DataType::Text) {
        checkText(home, stored, asText(bytes));
    } else if (stored.field.autoNumber && stored.field.type == DataType::Long) {
        checkAutoNumber(home, stored, bytes);
    }
}

void TableCheck::checkText(RowPointer home, const StoredColumn& column, std::string_view stored) {
    const Format& format = pages_.format();
    const bool compressed = stored.starts_with("\xFF\xFE");
    if (format.isJet4() && !compressed && stored.size() % 2 != 0) {
        damageRow(home, "has half a character in " + column.field.name);
    } else if (storedCharacters(format, stored) > column.length / format.textUnit) {
        damageRow(home, "has a text in " + column.field.name + " that is too long");
    }
}

/// Numbers were handed out from 1 on; a replicated table has random ones, of which half are
/// negative.
void TableCheck::checkAutoNumber(RowPointer home, const StoredColumn& column, ByteSpan value) {
    if (value.size() != 4) {
        return;
    }
    const auto number = static_cast<std::int32_t>(get32(value.data()));
    const auto last = static_cast<std::int32_t>(table_.lastAutoNumber);
    if (last >= 0 && number > last) {
        const std::string what = "row " + std::to_string(home.slot) + " of table " + table_.name +
                                 " has the number " + std::to_string(number) + " in " +
                                 column.field.name + ", and the last one given out was " +
                                 std::to_string(last);
        pages_.format().isJet4() ? reportLeftover(home.page, what)
                                 : report_.unfinished(home.page, what);
    }
}

void TableCheck::checkCounts() {
    // A Jet 3 file has no mark of a change that was cut short: every write looks for what it left.
    interrupted_ |= rows_ != table_.rowCount && !pages_.format().isJet4();
    if (rows_ != table_.rowCount) {
        reportLeftover(table_.page(), "table " + table_.name + " counts " +
                                          std::to_string(table_.rowCount) + " rows and has " +
                                          std::to_string(rows_));
    }
    for (const auto& [number, count] : moved_) {
        const PageHandle page = pages_.read(number);
        const DataPage view(pages_.format(), *page);
        for (std::uint32_t slot = 0; slot < view.slotCount(); ++slot) {
            const RowPointer place{number, static_cast<std::uint8_t>(slot)};
            if (view.kind(slot) == RowKind::Moved && !referred_.contains(place)) {
                // Other programs leave such rows, too; no reader misses a row because of it.
                report_.unfinished(number, "row " + std::to_string(slot) + " of table " +
                                               table_.name +
                                               " has moved here and no row leads to it");
            }
        }
    }
}

}  // namespace jet
