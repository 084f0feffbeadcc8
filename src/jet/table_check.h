#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "jet/check_report.h"
#include "jet/data_page.h"
#include "jet/index_check.h"
#include "jet/long_value_check.h"
#include "jet/page_census.h"
#include "jet/page_file.h"
#include "jet/row_view.h"
#include "jet/stored_table.h"

namespace jet {

/// Checks everything that belongs to one table: definition, maps, rows, long values, indexes.
class TableCheck {
  public:
    /// Told of every row that could be taken apart.
    using Visitor = std::function<void(RowPointer home, const RowView& row)>;

    TableCheck(PageFile& pages, PageCensus& census, CheckReport& report, const StoredTable& table);

    void run(const Visitor& visitor = nullptr);
    /// The index checks, in the order of the table's indexes; after run().
    const std::deque<IndexCheck>& indexes() const { return indexes_; }
    /// True when the table bears traces of a change that was cut short.
    bool wasInterrupted() const { return interrupted_; }

  private:
    void checkDefinition();
    void checkDefinitionEnd();
    void checkMaps();
    void checkPage(std::uint32_t number, const Visitor& visitor);
    void checkSlot(RowPointer place, const DataPage& view, const Visitor& visitor);
    void checkPointer(RowPointer home, ByteSpan pointer, const Visitor& visitor);
    void checkRow(RowPointer home, ByteSpan bytes, const Visitor& visitor);
    void checkValue(RowPointer home, std::size_t column, const RowView& row);
    void checkText(RowPointer home, const StoredColumn& column, std::string_view stored);
    void checkAutoNumber(RowPointer home, const StoredColumn& column, ByteSpan value);
    void checkCounts();
    /// What an interrupted change explains: Damage where there was none.
    void reportLeftover(std::uint32_t page, const std::string& what);
    void damageRow(RowPointer place, const std::string& what);

    PageFile& pages_;
    PageCensus& census_;
    CheckReport& report_;
    const StoredTable& table_;
    bool interrupted_ = false;
    PageSet owned_;
    RowSet homes_;     ///< kept only where an index has to name them
    RowSet referred_;  ///< places that pointers lead to
    std::vector<std::pair<std::uint32_t, std::uint32_t>>
        moved_;  ///< page, number of moved rows on it
    std::uint64_t rows_ = 0;
    std::vector<LongValueCheck> longValues_;
    std::vector<int> longValueOf_;  ///< by column: place in longValues_, or -1
    std::deque<IndexCheck> indexes_;
};

}  // namespace jet
