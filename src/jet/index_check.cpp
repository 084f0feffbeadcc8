#include "jet/index_check.h"

#include <algorithm>

#include "jet/bytes.h"

namespace jet {

namespace {

constexpr std::size_t rowBytes = 4;    // page and slot behind a key
constexpr std::size_t childBytes = 4;  // page of the child behind them
constexpr std::uint8_t leavesOutNulls = 0x02;

std::uint32_t childOf(std::string_view entry) {
    return get32BigEndian(asBytes(entry).data() + entry.size() - childBytes);
}

}  // namespace

IndexCheck::IndexCheck(PageFile& pages, PageCensus& census, CheckReport& report,
                       const StoredTable& table, const StoredIndex& index)
    : pages_(pages), census_(census), report_(report), table_(table), index_(index) {}

bool IndexCheck::readPage(std::uint32_t number, IndexPage& page) const {
    if (number >= pages_.pageCount()) {
        return false;
    }
    const PageHandle handle = pages_.read(number);
    return IndexPage::read(pages_.format(), handle.bytes(), page);
}

void IndexCheck::run(const RowSet& rows, bool interrupted) {
    rows_ = &rows;
    map_ = census_.readMap(index_.map, table_.page(), "the map of the pages of an index");
    checkTree(index_.rootPage, -1);
    for (std::uint32_t page = map_.first(); page != PageSet::none; page = map_.next(page + 1)) {
        if (!reached_.contains(page) &&
            census_.claim(page, PageCensus::Use::Index, table_.page())) {
            report_.lostSpace(page, "it is a page of an index but the index does not lead to it");
        }
    }
    if ((index_.flags & leavesOutNulls) == 0 && named_.size() < rows.size()) {
        const auto kind = interrupted ? CheckFinding::Kind::Unfinished : CheckFinding::Kind::Damage;
        report_.add(kind, index_.rootPage,
                    "an index of table " + table_.name + " has " + std::to_string(named_.size()) +
                        " entries for " + std::to_string(rows.size()) + " rows");
    }
}

/// `level` is that of the page above less one; -1: not known.
void IndexCheck::checkTree(std::uint32_t number, int level) {
    IndexPage page;
    // A set of pages is as large as its largest number, so none beyond the file enters it.
    if (number < pages_.pageCount() && !reached_.insert(number)) {
        report_.damage(number, "an index of table " + table_.name + " leads to this page twice");
        return;
    }
    if (!census_.claim(number, PageCensus::Use::Index, table_.page())) {
        return;
    }
    if (!readPage(number, page) || page.table != table_.page()) {
        report_.damage(number, "it should be a page of an index of table " + table_.name);
        return;
    }
    if (!map_.contains(number)) {
        report_.damage(number, "the map of its index lacks it");
    }
    if ((level >= 0 && page.level != level) || page.leaf != (page.level == 0) ||
        page.level > deepest) {
        report_.damage(
            number, "it has the level " + std::to_string(page.level) + " in the tree of its index");
        return;
    }
    if (page.freeBytes + page.storedBytes !=
        pages_.format().pageSize - pages_.format().indexEntries) {
        report_.damage(number, "its free bytes are counted wrong");
    }
    page.leaf ? checkLeaf(number, page) : checkNode(number, page);
}

void IndexCheck::checkNode(std::uint32_t number, const IndexPage& page) {
    const int below = page.level - 1;
    for (const std::string& entry : page.entries) {
        if (entry.size() < rowBytes + childBytes) {
            report_.damage(number, "an entry of it is too short");
            return;
        }
        checkTree(childOf(entry), below);
        if (lastEntry_ > std::string_view(entry).substr(0, entry.size() - childBytes)) {
            report_.damage(number, "an entry of it lies before the last one of its child");
        }
    }
    if (page.tail != 0) {
        checkTree(page.tail, below);
    }
}

void IndexCheck::checkLeaf(std::uint32_t number, const IndexPage& page) {
    if (page.previous != lastLeaf_) {
        report_.damage(number, "it names page " + std::to_string(page.previous) +
                                   " as the leaf before it, which is page " +
                                   std::to_string(lastLeaf_));
    }
    lastLeaf_ = number;
    for (const std::string& entry : page.entries) {
        if (!lastEntry_.empty() && lastEntry_ >= entry) {
            report_.damage(number, "its entries are not in order");
        }
        lastEntry_ = entry;
        checkEntry(number, entry);
    }
}

void IndexCheck::checkEntry(std::uint32_t number, std::string_view entry) {
    const std::uint8_t* const at = asBytes(entry).data() + entry.size() - rowBytes;
    const RowPointer row{get24BigEndian(at), at[3]};
    if (!rows_->contains(row)) {
        report_.damage(number, "an entry names row " + std::to_string(row.slot) + " of page " +
                                   std::to_string(row.page) + ", which is no row of table " +
                                   table_.name);
    } else if (!named_.insert(row)) {
        report_.damage(number, "two entries name row " + std::to_string(row.slot) + " of page " +
                                   std::to_string(row.page));
    }
}

bool IndexCheck::contains(std::string_view entry) const {
    std::uint32_t number = index_.rootPage;
    IndexPage page;
    for (int depth = 0; depth <= deepest && readPage(number, page); ++depth) {
        const auto found = std::lower_bound(page.entries.begin(), page.entries.end(), entry);
        if (page.leaf) {
            return found != page.entries.end() && *found == entry;
        }
        number = found == page.entries.end()   ? page.tail
                 : found->size() >= childBytes ? childOf(*found)
                                               : 0;
    }
    return false;
}

}  // namespace jet
