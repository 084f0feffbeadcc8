#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jet/bytes.h"
#include "jet/check_report.h"
#include "jet/format.h"
#include "jet/page_file.h"
#include "jet/page_set.h"
#include "jet/row_set.h"

namespace jet {

/// Says what each page of a file is used for, and that no page has two uses.
class PageCensus {
  public:
    enum class Use : std::uint8_t {
        Unknown,
        Header,
        FreePageMap,
        Definition,
        MapRows,  ///< rows of usage maps; of several tables, perhaps
        MapPage,  ///< bitmap of an indirect usage map
        Rows,
        LongValues,
        Index,
    };

    PageCensus(PageFile& pages, CheckReport& report);

    /// Notes a use. False, with a finding, for a page outside the file or one with another use;
    /// `table` is the page of the definition of the table that the page belongs to, 0 where there
    /// is none.
    bool claim(std::uint32_t page, Use use, std::uint32_t table);
    bool isClaimed(std::uint32_t page) const { return uses_[page] != Use::Unknown; }

    /// The pages that the map at `place` holds, those outside the file left out; `what` names the
    /// map. Its own pages are claimed, what does not fit the format becomes a finding.
    PageSet readMap(RowPointer place, std::uint32_t table, const std::string& what);
    /// Reads the map of free pages and gives the pages that are not free.
    PageSet readFreePages();
    /// Compares the uses with the map of free pages, when all uses are known.
    void compare(const PageSet& notFree);

  private:
    std::string describe(std::uint32_t page) const;
    void readIndirect(ByteSpan row, RowPointer place, std::uint32_t table, const std::string& what,
                      PageSet& set);
    void addBits(ByteSpan bitmap, std::uint64_t firstPage, std::uint32_t mapPage,
                 const std::string& what, PageSet& set);

    PageFile& pages_;
    CheckReport& report_;
    std::vector<Use> uses_;
    std::vector<std::uint32_t> tables_;
};

}  // namespace jet
