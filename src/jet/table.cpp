#include "jet/table.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "base/failure.h"
#include "jet/damage.h"
#include "jet/database_file.h"
#include "jet/row_view.h"

namespace jet {

namespace {

using RowKind = DataPage::RowKind;

/// Stands in a Jet 4 definition from the first change of the table until the last one is on the
/// medium. Twelve bytes that the original engine leaves to chance.
constexpr std::string_view changeMark{"\x01VDLN change", 12};
/// Larger ones are negative: random numbers of a replicated table.
constexpr std::uint32_t mostAutoNumber = 0x7FFFFFFF;
constexpr int pointerLimit = 8;
constexpr std::size_t pointerRow = 4;

RowPointer pointerIn(ByteSpan row) { return RowPointer::fromStored(get32(row.data())); }

}  // namespace

Table::Table(DatabaseFile& file, StoredTable stored)
    : file_(file),
      stored_(std::move(stored)),
      owned_(UsageMap::read(file.pages(), stored_.ownedMap, UsageMap::Meaning::Used)),
      freeSpace_(UsageMap::read(file.pages(), stored_.freeMap, UsageMap::Meaning::Used)),
      longValues_(file, stored_) {
    interrupted_ = bearsMark(file_.format(), file_.pages().read(stored_.page()).bytes());
}

bool Table::bearsMark(const Format& format, const std::uint8_t* definition) {
    return format.isJet4() &&
           std::memcmp(definition + markOffset, changeMark.data(), changeMark.size()) == 0;
}

std::int64_t Table::rowCount() {
    return interrupted_ && !changing_ ? countRows() : stored_.rowCount;
}

std::int64_t Table::countRows() const {
    std::int64_t rows = 0;
    for (std::uint32_t number = nextPage(0); number != PageSet::none;
         number = nextPage(number + 1)) {
        const PageHandle page = file_.pages().read(number);
        const DataPage view(file_.format(), *page);
        for (std::uint32_t slot = 0; view.wellFormed() && slot < view.slotCount(); ++slot) {
            rows += view.kind(slot) == RowKind::Live || view.kind(slot) == RowKind::Pointer;
        }
    }
    return rows;
}

std::uint32_t Table::runLength(std::uint32_t page, std::uint32_t limit) const {
    std::uint32_t length = 0;
    while (length < limit && owned_.contains(page + length)) {
        ++length;
    }
    return length;
}

bool Table::locate(RowPointer home, PageHandle& page, ByteSpan& row) const {
    RowPointer place = home;
    for (int step = 0; step < pointerLimit; ++step) {
        if (!page || page->number != place.page) {
            page = file_.pages().read(place.page);
        }
        const DataPage view(file_.format(), *page);
        if (!view.isDataPage() || view.owner() != stored_.page() ||
            place.slot >= view.slotCount()) {
            return false;
        }
        row = view.row(place.slot);
        if (row.data() == nullptr) {
            failDamaged(place.page, "row " + std::to_string(place.slot) + " lies outside the page");
        }
        const RowKind kind = view.kind(place.slot);
        if (kind != RowKind::Pointer) {
            // A home place holds a live row; only a pointer leads to a moved one.
            return kind == (step == 0 ? RowKind::Live : RowKind::Moved);
        }
        if (row.size() < pointerRow) {
            failDamaged(place.page, "row " + std::to_string(place.slot) + " is a cut pointer");
        }
        place = pointerIn(row);
    }
    failDamaged(home.page, "row " + std::to_string(home.slot) + " leads to a chain of pointers");
}

void Table::beginChange(bool keepsIndexes) {
    if (changing_) {
        return;
    }
    if (hasIndexes() && !keepsIndexes) {
        const std::string index =
            stored_.indexNames.empty() ? "an index" : "the index " + stored_.indexNames[0].name;
        throw base::EngineFailure(
            base::EngineFault::Indexed,
            file_.pages().path() + ": table " + stored_.name + " has " + index +
                ", which this program would have to keep; nothing was changed");
    }
    file_.beginWriting();
    if (interrupted_ || !file_.format().isJet4()) {
        mend();
    }
    changing_ = true;
    if (file_.format().isJet4()) {
        setMark(true);
    }
}

void Table::setMark(bool on) {
    PageFile& pages = file_.pages();
    const PageHandle page = pages.read(stored_.page());
    std::memset(page.bytes() + markOffset, 0, changeMark.size());
    if (on) {
        std::memcpy(page.bytes() + markOffset, changeMark.data(), changeMark.size());
        pages.changed(*page);
        pages.writePage(*page);
        pages.sync();
    }
    interrupted_ = on;
}

void Table::writeDefinition(bool finished) {
    const Format& format = file_.format();
    PageFile& pages = file_.pages();
    const PageHandle page = pages.read(stored_.page());
    std::uint8_t* const at = page.bytes();
    put32(at + format.rowCountOffset, stored_.rowCount);
    put32(at + format.autoNumberOffset, stored_.lastAutoNumber);
    for (std::size_t i = 0; i < stored_.indexes.size(); ++i) {
        put32(at + format.definitionHeader + i * format.indexCounter + 4,
              stored_.indexes[i].entriesEver);
    }
    if (finished && format.isJet4()) {
        setMark(false);
    }
    pages.changed(*page);
    pages.writePage(*page);
    changing_ = changing_ && !finished;
}

PageHandle Table::readDataPage(std::uint32_t number) const {
    PageHandle page = file_.pages().read(number);
    const DataPage view(file_.format(), *page);
    if (!view.wellFormed() || view.owner() != stored_.page()) {
        failDamaged(number, "it should hold rows of table " + stored_.name + " and does not");
    }
    return page;
}

RowPointer Table::insert(ByteSpan row) {
    PageHandle page = choosePage(row.size());
    const std::uint32_t slot = DataPage(file_.format(), *page).insert(row);
    file_.pages().changed(*page);
    insertVersion_ = page->version;
    ++stored_.rowCount;
    return {page->number, static_cast<std::uint8_t>(slot)};
}

/// The page of the last insert, else one that is said to have room, else a new one. Pages that turn
/// out to be full are no longer said to have room.
PageHandle Table::choosePage(std::size_t length) {
    if (insertPage_ != 0 && owned_.contains(insertPage_)) {
        // Most rows follow one another; the page was looked at for the row before.
        PageHandle page = file_.pages().read(insertPage_);
        if (page->version == insertVersion_ && !page->squeezePending &&
            DataPage(file_.format(), *page).fits(length)) {
            return page;
        }
    }
    std::uint32_t number =
        insertPage_ != 0 && owned_.contains(insertPage_) ? insertPage_ : freeSpace_.pages().last();
    for (; number != PageSet::none; number = freeSpace_.pages().last()) {
        if (owned_.contains(number)) {
            PageHandle page = readDataPage(number);
            DataPage view(file_.format(), *page);
            if (page->squeezePending) {
                view.squeeze();
                file_.pages().changed(*page);
            }
            if (view.fits(length)) {
                insertPage_ = number;
                return page;
            }
        }
        freeSpace_.remove(number);
    }
    return addPage();
}

PageHandle Table::chooseFreshPage(std::size_t length) {
    if (insertPage_ != 0 && owned_.contains(insertPage_) && file_.pages().isFresh(insertPage_)) {
        PageHandle page = readDataPage(insertPage_);
        if (DataPage(file_.format(), *page).fits(length)) {
            return page;
        }
    }
    return addPage();
}

PageHandle Table::addPage() {
    const std::uint32_t number = file_.allocatePage();
    PageHandle page = file_.pages().create(number);
    DataPage(file_.format(), *page).initialise(stored_.page());
    page->liveRows = 0;
    owned_.add(number);
    freeSpace_.add(number);
    insertPage_ = number;
    return page;
}

void Table::update(RowPointer home, ByteSpan row) {
    PageHandle homePage = readDataPage(home.page);
    DataPage homeView(file_.format(), *homePage);
    const RowKind kind =
        home.slot < homeView.slotCount() ? homeView.kind(home.slot) : RowKind::Deleted;
    if (kind == RowKind::Live) {
        if (homeView.canReplace(home.slot, row.size())) {
            homeView.replace(home.slot, row, RowKind::Live);
            file_.pages().changed(*homePage);
        } else {
            move(home, homePage, row);
        }
        return;
    }
    if (kind != RowKind::Pointer) {
        throw base::EngineFailure(base::EngineFault::NoCurrentRow,
                                  "the row of table " + stored_.name + " has been deleted");
    }
    const RowPointer place = pointerIn(homeView.row(home.slot));
    PageHandle page = readDataPage(place.page);
    DataPage view(file_.format(), *page);
    if (place.slot >= view.slotCount() || view.kind(place.slot) != RowKind::Moved) {
        failDamaged(home.page, "row " + std::to_string(home.slot) + " leads nowhere");
    }
    if (view.canReplace(place.slot, row.size())) {
        view.replace(place.slot, row, RowKind::Moved);
        file_.pages().changed(*page);
        return;
    }
    move(home, homePage, row);
    deferredErases_.push_back(place);
}

/// Stores the row on a fresh page and leaves a pointer at home. The fresh page reaches the file
/// before the home page does, so that the row is never lost.
void Table::move(RowPointer home, PageHandle& homePage, ByteSpan row) {
    PageHandle page = chooseFreshPage(row.size());
    const std::uint32_t slot = DataPage(file_.format(), *page).insert(row, RowKind::Moved);
    file_.pages().changed(*page);
    file_.pages().noteReference();
    std::uint8_t pointer[pointerRow];
    put32(pointer, RowPointer{page->number, static_cast<std::uint8_t>(slot)}.stored());
    DataPage view(file_.format(), *homePage);
    if (!view.canReplace(home.slot, sizeof pointer)) {
        failDamaged(home.page, "row " + std::to_string(home.slot) + " has no room for a pointer");
    }
    view.replace(home.slot, pointer, RowKind::Pointer);
    file_.pages().changed(*homePage);
    freeSpace_.add(home.page);
}

void Table::erase(RowPointer home) {
    PageHandle page = readDataPage(home.page);
    DataPage view(file_.format(), *page);
    const RowKind kind = home.slot < view.slotCount() ? view.kind(home.slot) : RowKind::Deleted;
    if (kind != RowKind::Live && kind != RowKind::Pointer) {
        throw base::EngineFailure(base::EngineFault::NoCurrentRow,
                                  "the row of table " + stored_.name + " has been deleted already");
    }
    if (kind == RowKind::Pointer && view.row(home.slot).size() >= pointerRow) {
        deferredErases_.push_back(pointerIn(view.row(home.slot)));
    }
    if (page->liveRows < 0) {
        page->liveRows = static_cast<std::int32_t>(view.liveSlots());
    }
    view.erase(home.slot);
    file_.pages().changed(*page);
    --stored_.rowCount;
    freeSpace_.add(home.page);
    releaseIfEmpty(page);
}

/// A page without rows goes back to the file, so that it need not even be written.
void Table::releaseIfEmpty(PageHandle& page) {
    if (page->liveRows != 0) {
        return;
    }
    const std::uint32_t number = page->number;
    owned_.remove(number);
    freeSpace_.remove(number);
    if (insertPage_ == number) {
        insertPage_ = 0;
    }
    file_.releasePage(number);
}

void Table::eraseAt(RowPointer place) {
    if (!owned_.contains(place.page)) {
        return;
    }
    PageHandle page = readDataPage(place.page);
    DataPage view(file_.format(), *page);
    if (place.slot >= view.slotCount() || view.kind(place.slot) != RowKind::Moved) {
        return;
    }
    page->liveRows = static_cast<std::int32_t>(view.liveSlots());
    view.erase(place.slot);
    file_.pages().changed(*page);
    freeSpace_.add(place.page);
}

void Table::applyDeferredErases() {
    while (!deferredErases_.empty()) {
        eraseAt(deferredErases_.back());
        deferredErases_.pop_back();
    }
    longValues_.applyReleases();
}

void Table::noteAutoNumber(std::uint32_t number) {
    if (number <= mostAutoNumber) {
        stored_.lastAutoNumber = std::max(stored_.lastAutoNumber, number);
    }
}

/// The autonumber that a row holds is one that was given out.
void Table::noteAutoNumber(ByteSpan row, const StoredColumn& numbers) {
    RowView view;
    if (view.parse(file_.format(), stored_.variableEver != 0, row) &&
        view.isPresent(numbers.number)) {
        const ByteSpan number = view.bytes(numbers);
        if (number.size() == 4) {
            noteAutoNumber(get32(number.data()));
        }
    }
}

void Table::mend() {
    const auto numbers = std::find_if(
        stored_.columns.begin(), stored_.columns.end(), [](const StoredColumn& column) {
            return column.field.autoNumber && column.field.type == DataType::Long;
        });
    std::set<std::uint32_t> referred;
    std::vector<RowPointer> moved;
    std::uint32_t rows = 0;
    for (std::uint32_t number = nextPage(0); number != PageSet::none;
         number = nextPage(number + 1)) {
        const PageHandle page = file_.pages().read(number);
        const DataPage view(file_.format(), *page);
        for (std::uint32_t slot = 0; view.wellFormed() && slot < view.slotCount(); ++slot) {
            const RowKind kind = view.kind(slot);
            if (numbers != stored_.columns.end() &&
                (kind == RowKind::Live || kind == RowKind::Moved)) {
                noteAutoNumber(view.row(slot), *numbers);
            }
            rows += kind == RowKind::Live || kind == RowKind::Pointer;
            if (kind == RowKind::Pointer && view.row(slot).size() >= pointerRow) {
                referred.insert(get32(view.row(slot).data()));
            } else if (kind == RowKind::Moved) {
                moved.push_back({number, static_cast<std::uint8_t>(slot)});
            }
        }
    }
    stored_.rowCount = rows;
    for (const RowPointer place : moved) {
        if (!referred.contains(place.stored())) {
            eraseAt(place);
        }
    }
}

}  // namespace jet
