#include "jet/page_census.h"

#include <array>

#include "base/failure.h"
#include "jet/data_page.h"
#include "jet/usage_map.h"

namespace jet {

namespace {

constexpr std::size_t inlineHeader = 5;

constexpr std::array<const char*, 9> useNames{"nothing",
                                              "the header",
                                              "the map of free pages",
                                              "a definition",
                                              "rows of usage maps",
                                              "a page of a usage map",
                                              "a page of rows",
                                              "a page of long values",
                                              "an index page"};

}  // namespace

PageCensus::PageCensus(PageFile& pages, CheckReport& report)
    : pages_(pages),
      report_(report),
      uses_(pages.pageCount(), Use::Unknown),
      tables_(pages.pageCount(), 0) {
    claim(0, Use::Header, 0);
    claim(1, Use::FreePageMap, 0);
}

std::string PageCensus::describe(std::uint32_t page) const {
    std::string text = useNames[static_cast<std::size_t>(uses_[page])];
    if (tables_[page] != 0) {
        text += " of the table on page " + std::to_string(tables_[page]);
    }
    return text;
}

bool PageCensus::claim(std::uint32_t page, Use use, std::uint32_t table) {
    if (page >= uses_.size()) {
        report_.damage(page, "the file ends before this page, which should be " +
                                 std::string(useNames[static_cast<std::size_t>(use)]) +
                                 " of the table on page " + std::to_string(table));
        return false;
    }
    const bool shared = use == Use::MapRows && uses_[page] == Use::MapRows;
    if (uses_[page] != Use::Unknown && !shared) {
        report_.damage(page, "it is " + describe(page) + " and also " +
                                 useNames[static_cast<std::size_t>(use)] +
                                 " of the table on page " + std::to_string(table));
        return false;
    }
    tables_[page] = shared && tables_[page] != table ? 0 : table;
    uses_[page] = use;
    return true;
}

PageSet PageCensus::readMap(RowPointer place, std::uint32_t table, const std::string& what) {
    PageSet set;
    if (!claim(place.page, Use::MapRows, table)) {
        return set;
    }
    std::vector<std::uint8_t> row;
    {
        const PageHandle page = pages_.read(place.page);
        const DataPage view(pages_.format(), *page);
        const ByteSpan bytes = view.isDataPage() ? view.row(place.slot) : ByteSpan{};
        row.assign(bytes.begin(), bytes.end());
    }
    if (row.empty() || row[0] > 1 || (row[0] == 0 && row.size() < inlineHeader)) {
        report_.damage(place.page, "row " + std::to_string(place.slot) + " should be " + what);
        return set;
    }
    if (row[0] == 1) {
        readIndirect(row, place, table, what, set);
    } else {
        addBits(ByteSpan(row).subspan(inlineHeader), get32(row.data() + 1), place.page, what, set);
    }
    return set;
}

void PageCensus::readIndirect(ByteSpan row, RowPointer place, std::uint32_t table,
                              const std::string& what, PageSet& set) {
    const std::uint32_t covered = pages_.format().pagesPerMapPage();
    for (std::uint32_t entry = 0; 1 + 4 * (entry + 1) <= row.size(); ++entry) {
        const std::uint32_t number = get32(row.data() + 1 + 4 * entry);
        if (number == 0) {
            continue;
        }
        if (!claim(number, Use::MapPage, table)) {
            report_.damage(place.page, what + " names page " + std::to_string(number));
            continue;
        }
        const PageHandle page = pages_.read(number);
        if (page.bytes()[0] != static_cast<std::uint8_t>(PageKind::UsageMap)) {
            report_.damage(number, "it should be a page of " + what);
            continue;
        }
        addBits(ByteSpan(page.bytes() + 4, pages_.format().pageSize - 4),
                std::uint64_t{entry} * covered, number, what, set);
    }
}

void PageCensus::addBits(ByteSpan bitmap, std::uint64_t firstPage, std::uint32_t mapPage,
                         const std::string& what, PageSet& set) {
    for (std::size_t i = 0; i < bitmap.size(); ++i) {
        for (unsigned bit = 0; bitmap[i] >> bit != 0; ++bit) {
            if ((bitmap[i] >> bit & 1) == 0) {
                continue;
            }
            const std::uint64_t page = firstPage + 8 * i + bit;
            if (page >= uses_.size()) {
                report_.damage(mapPage, what + " names page " + std::to_string(page) +
                                            ", which the file does not have");
                return;
            }
            set.insert(static_cast<std::uint32_t>(page));
        }
    }
}

PageSet PageCensus::readFreePages() {
    constexpr RowPointer place{1, 0};
    PageSet notFree;
    try {
        UsageMap map = UsageMap::read(pages_, place, UsageMap::Meaning::FreePages);
        notFree = map.pages();
        for (const std::uint32_t page : map.mapPages()) {
            if (page != 0) {
                claim(page, Use::MapPage, 0);
            }
        }
    } catch (const base::EngineFailure&) {
        report_.damage(place.page, "it should hold the map of free pages");
    }
    return notFree;
}

void PageCensus::compare(const PageSet& notFree) {
    for (std::uint32_t page = 0; page < uses_.size(); ++page) {
        if (isClaimed(page) && !notFree.contains(page)) {
            report_.damage(page, "it is " + describe(page) + " and marked free");
        }
    }
    const auto isLost = [&](std::uint32_t page) {
        return page < uses_.size() && !isClaimed(page) && notFree.contains(page);
    };
    for (std::uint32_t page = 0; page < uses_.size(); ++page) {
        if (!isLost(page)) {
            continue;
        }
        const std::uint32_t first = page;
        while (isLost(page + 1)) {
            ++page;
        }
        report_.lostSpace(first, "nothing uses " + std::to_string(page - first + 1) +
                                     " page(s) from here on, which are not free");
    }
}

}  // namespace jet
