#include "jet/row_scanner.h"

#include "jet/damage.h"
#include "jet/data_page.h"

namespace jet {

namespace {

constexpr std::uint32_t prefetchPages = 64;

}  // namespace

void RowScanner::rewind() {
    release();
    started_ = false;
    home_ = {};
    prefetchedTo_ = 0;
}

void RowScanner::release() {
    page_.release();
    movedPage_.release();
}

bool RowScanner::next() {
    if (!started_) {
        started_ = true;
        if (!enterPage(0)) {
            return false;
        }
    } else if (!table_.ownsPage(home_.page)) {
        // The page was given back after its last row was deleted.
        if (!enterPage(home_.page + 1)) {
            return false;
        }
    } else if (!page_) {
        page_ = file_.pages().read(home_.page);
    }
    for (;;) {
        const DataPage view(file_.format(), *page_);
        while (nextSlot_ < view.slotCount() && nextSlot_ < DataPage::maximumSlots) {
            const std::uint32_t slot = nextSlot_++;
            const DataPage::RowKind kind = view.kind(slot);
            if (kind == DataPage::RowKind::Live || kind == DataPage::RowKind::Pointer) {
                home_ = {page_->number, static_cast<std::uint8_t>(slot)};
                if (takeRow()) {
                    return true;
                }
            }
        }
        if (!enterPage(page_->number + 1)) {
            return false;
        }
    }
}

/// Goes to the first page of the table from `from` on that holds its rows.
bool RowScanner::enterPage(std::uint32_t from) {
    movedPage_.release();
    page_.release();
    for (;;) {
        const std::uint32_t number = table_.nextPage(from);
        if (number == PageSet::none) {
            home_ = {from, 0};
            nextSlot_ = 0;
            return false;
        }
        if (number >= prefetchedTo_) {
            const std::uint32_t run = table_.runLength(number, prefetchPages);
            if (run > 1) {
                file_.pages().prefetch(number, run);
            }
            prefetchedTo_ = number + run;
        }
        page_ = file_.pages().read(number);
        const DataPage view(file_.format(), *page_);
        if (view.isDataPage() && view.owner() == table_.stored().page()) {
            nextSlot_ = 0;
            home_ = {number, 0};
            return true;
        }
        page_.release();
        from = number + 1;
    }
}

bool RowScanner::takeRow() {
    const DataPage view(file_.format(), *page_);
    ByteSpan bytes;
    if (view.kind(home_.slot) == DataPage::RowKind::Live) {
        movedPage_.release();
        bytes = view.row(home_.slot);
        if (bytes.data() == nullptr) {
            failDamaged(home_.page, "row " + std::to_string(home_.slot) + " lies outside the page");
        }
    } else if (!table_.locate(home_, movedPage_, bytes)) {
        return false;
    }
    version_ = page_->version;
    movedVersion_ = movedPage_ ? movedPage_->version : 0;
    if (!row_.parse(file_.format(), table_.stored().variableEver != 0, bytes)) {
        failDamaged(home_.page, "row " + std::to_string(home_.slot) + " of table " +
                                    table_.stored().name + " has no sound structure");
    }
    return true;
}

bool RowScanner::refresh() {
    if (page_ && page_->version == version_ &&
        (!movedPage_ || movedPage_->version == movedVersion_)) {
        return true;
    }
    if (!started_ || !table_.ownsPage(home_.page)) {
        return false;
    }
    page_ = file_.pages().read(home_.page);
    const DataPage view(file_.format(), *page_);
    if (home_.slot >= view.slotCount()) {
        return false;
    }
    const DataPage::RowKind kind = view.kind(home_.slot);
    return (kind == DataPage::RowKind::Live || kind == DataPage::RowKind::Pointer) && takeRow();
}

}  // namespace jet
