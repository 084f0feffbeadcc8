#include "jet/long_values.h"

#include <algorithm>

#include "base/failure.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/data_page.h"
#include "jet/database_file.h"
#include "jet/row_set.h"

namespace jet {

namespace {

constexpr std::uint32_t inlineFlag = 0x80000000;
constexpr std::uint32_t singleFlag = 0x40000000;
constexpr std::uint32_t lengthMask = 0x3FFFFFFF;
constexpr std::size_t definitionBytes = 12;
constexpr std::size_t pointerBytes = 4;

struct Definition {
    std::uint32_t flags = 0;
    std::uint32_t length = 0;
    RowPointer place;
};

Definition parse(std::string_view bytes) {
    if (bytes.size() < definitionBytes) {
        throw base::EngineFailure(base::EngineFault::Damaged,
                                  "the database is damaged: the definition of a long value is cut");
    }
    const std::uint8_t* const at = asBytes(bytes).data();
    const std::uint32_t head = get32(at);
    return {head & ~lengthMask, head & lengthMask, RowPointer::fromStored(get32(at + 4))};
}

std::string definitionOf(std::uint32_t flags, std::size_t length, RowPointer place) {
    ByteWriter out;
    out.u32(flags | static_cast<std::uint32_t>(length)).u32(place.stored()).u32(0);
    return std::move(out.bytes());
}

}  // namespace

LongValues::LongValues(DatabaseFile& file, const StoredTable& table)
    : file_(file), table_(table), maps_(table.columns.size()) {
    for (std::size_t i = 0; i < maps_.size(); ++i) {
        maps_[i].exists =
            isLongValue(table.columns[i].field.type) && table.columns[i].ownedMap.page != 0;
    }
}

std::string LongValues::read(std::string_view definition) const {
    if (definition.empty()) {
        return {};
    }
    const Definition parsed = parse(definition);
    if ((parsed.flags & inlineFlag) != 0) {
        const std::string_view data = definition.substr(definitionBytes);
        if (parsed.length > data.size()) {
            throw base::EngineFailure(
                base::EngineFault::Damaged,
                "the database is damaged: a long value is longer than its row");
        }
        return std::string(data.substr(0, parsed.length));
    }
    if (parsed.length == 0) {
        return {};
    }
    if ((parsed.flags & singleFlag) == 0) {
        return readChain(parsed.place, parsed.length);
    }
    std::string bytes = readRow(parsed.place);
    if (bytes.size() < parsed.length) {
        failDamaged(parsed.place.page, "a long value is shorter than its definition says");
    }
    bytes.resize(parsed.length);
    return bytes;
}

/// Bytes of one row of a long value.
std::string LongValues::readRow(RowPointer place) const {
    PageFile& pages = file_.pages();
    const PageHandle page = pages.read(place.page);
    const DataPage view(pages.format(), *page);
    if (!view.isDataPage() || view.owner() != longValueOwner) {
        failDamaged(place.page, "it should hold long values");
    }
    const ByteSpan row = view.row(place.slot);
    if (row.data() == nullptr || view.kind(place.slot) == DataPage::RowKind::Deleted) {
        failDamaged(place.page, "row " + std::to_string(place.slot) + " holds no long value");
    }
    return std::string(asText(row));
}

std::string LongValues::readChain(RowPointer place, std::uint32_t length) const {
    std::string bytes;
    RowSet seen;
    while (bytes.size() < length) {
        if (place.page == 0) {
            throw base::EngineFailure(base::EngineFault::Damaged,
                                      "the database is damaged: a long value ends too early");
        }
        if (!seen.insert(place)) {
            failDamaged(place.page, "the pieces of a long value form a loop");
        }
        const std::string row = readRow(place);
        if (row.size() <= pointerBytes) {
            failDamaged(place.page, "a piece of a long value is empty");
        }
        bytes.append(row, pointerBytes);
        place = RowPointer::fromStored(get32(asBytes(row).data()));
    }
    bytes.resize(length);
    return bytes;
}

LongValues::ColumnMaps& LongValues::mapsOf(std::size_t column) {
    ColumnMaps& maps = maps_[column];
    if (!maps.exists) {
        throw base::EngineFailure(base::EngineFault::Usage,
                                  "field " + table_.columns[column].field.name + " of table " +
                                      table_.name + " has no room for values outside its row");
    }
    if (!maps.loaded) {
        const StoredColumn& stored = table_.columns[column];
        maps.owned = UsageMap::read(file_.pages(), stored.ownedMap, UsageMap::Meaning::Used);
        maps.free = UsageMap::read(file_.pages(), stored.freeMap, UsageMap::Meaning::Used);
        maps.loaded = true;
    }
    return maps;
}

void LongValues::loadMaps() {
    for (std::size_t i = 0; i < maps_.size(); ++i) {
        if (maps_[i].exists) {
            mapsOf(i);
        }
    }
}

std::string LongValues::store(std::size_t column, std::string_view bytes) {
    const Format& format = file_.format();
    if (bytes.size() > lengthMask) {
        throw base::EngineFailure(base::EngineFault::Value,
                                  "field " + table_.columns[column].field.name + " of table " +
                                      table_.name + " cannot hold a value of that length");
    }
    if (bytes.size() <= format.inlineLongValue) {
        return definitionOf(inlineFlag, bytes.size(), {}) + std::string(bytes);
    }
    if (bytes.size() <= format.maximumLongValueRow()) {
        return definitionOf(singleFlag, bytes.size(), storeRow(column, bytes));
    }
    // The last piece goes first, so that each piece can name its successor.
    const std::size_t piece = format.maximumLongValueRow() - pointerBytes;
    RowPointer next;
    for (std::size_t from = (bytes.size() - 1) / piece * piece;; from -= piece) {
        ByteWriter row;
        row.u32(next.stored()).raw(bytes.substr(from, piece));
        next = storeRow(column, row.bytes());
        if (from == 0) {
            return definitionOf(0, bytes.size(), next);
        }
    }
}

RowPointer LongValues::storeRow(std::size_t column, std::string_view bytes) {
    PageFile& pages = file_.pages();
    ColumnMaps& maps = mapsOf(column);
    const std::uint32_t number = choosePage(maps, bytes.size());
    const PageHandle page = pages.read(number);
    const std::uint32_t slot = DataPage(pages.format(), *page).insert(asBytes(bytes));
    pages.changed(*page);
    // Also where the page is an old one: it has to be on the medium before a row refers to it.
    pages.noteReference();
    return {number, static_cast<std::uint8_t>(slot)};
}

std::uint32_t LongValues::choosePage(ColumnMaps& maps, std::size_t length) {
    PageFile& pages = file_.pages();
    for (std::uint32_t number = maps.free.pages().last(); number != PageSet::none;
         number = maps.free.pages().last()) {
        const PageHandle page = pages.read(number);
        const DataPage view(pages.format(), *page);
        if (view.wellFormed() && view.owner() == longValueOwner && view.fits(length)) {
            return number;
        }
        maps.free.remove(number);
    }
    const std::uint32_t number = file_.allocatePage();
    const PageHandle page = pages.create(number);
    DataPage(pages.format(), *page).initialise(longValueOwner);
    maps.owned.add(number);
    maps.free.add(number);
    return number;
}

void LongValues::release(std::size_t column, std::string_view definition) {
    if (maps_[column].exists && definition.size() >= definitionBytes &&
        (parse(definition).flags & inlineFlag) == 0 && parse(definition).place.page != 0) {
        releases_.push_back({column, std::string(definition.substr(0, definitionBytes))});
    }
}

void LongValues::applyReleases() {
    while (!releases_.empty()) {
        const Release release = std::move(releases_.back());
        releases_.pop_back();
        try {
            eraseValue(release);
        } catch (const base::EngineFailure& failure) {
            // No row refers to it any more: what cannot be found costs space only.
            if (failure.fault() != base::EngineFault::Damaged) {
                throw;
            }
        }
    }
}

void LongValues::eraseValue(const Release& release) {
    const Definition parsed = parse(release.definition);
    ColumnMaps& maps = mapsOf(release.column);
    RowPointer place = parsed.place;
    for (std::uint32_t left = parsed.length; maps.owned.contains(place.page) && left > 0;) {
        const std::string row = readRow(place);
        eraseRow(maps, place);
        if ((parsed.flags & singleFlag) != 0 || row.size() <= pointerBytes) {
            return;
        }
        left -= std::min(left, static_cast<std::uint32_t>(row.size() - pointerBytes));
        place = RowPointer::fromStored(get32(asBytes(row).data()));
    }
}

void LongValues::eraseRow(ColumnMaps& maps, RowPointer place) {
    PageFile& pages = file_.pages();
    const PageHandle page = pages.read(place.page);
    DataPage view(pages.format(), *page);
    if (!view.wellFormed()) {
        failDamaged(place.page, "its rows do not lie in order");
    }
    view.erase(place.slot);
    if (view.liveSlots() == 0) {
        // Its slots would be in the way of a value that fills a page.
        maps.owned.remove(place.page);
        maps.free.remove(place.page);
        file_.releasePage(place.page);
        return;
    }
    view.squeeze();
    pages.changed(*page);
    maps.free.add(place.page);
}

}  // namespace jet
