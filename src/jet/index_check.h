#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "jet/check_report.h"
#include "jet/index_page.h"
#include "jet/page_census.h"
#include "jet/page_file.h"
#include "jet/page_set.h"
#include "jet/stored_table.h"

namespace jet {

/// Checks the pages of one index: the tree, the order of its entries, and that each of them names a
/// row of the table.
class IndexCheck {
  public:
    IndexCheck(PageFile& pages, PageCensus& census, CheckReport& report, const StoredTable& table,
               const StoredIndex& index);

    /// `rows` are the home places of the table's rows.
    /// `interrupted`: the table bears traces of a change that was cut short, which may lack
    /// entries.
    void run(const RowSet& rows, bool interrupted);
    /// Looks an entry up from the root on, as a reader does.
    bool contains(std::string_view entry) const;

  private:
    static constexpr int deepest = 16;

    void checkTree(std::uint32_t number, int level);
    void checkNode(std::uint32_t number, const IndexPage& page);
    void checkLeaf(std::uint32_t number, const IndexPage& page);
    void checkEntry(std::uint32_t number, std::string_view entry);
    bool readPage(std::uint32_t number, IndexPage& page) const;

    PageFile& pages_;
    PageCensus& census_;
    CheckReport& report_;
    const StoredTable& table_;
    const StoredIndex& index_;
    const RowSet* rows_ = nullptr;
    PageSet map_;
    PageSet reached_;
    RowSet named_;
    std::string lastEntry_;
    std::uint32_t lastLeaf_ = 0;
};

}  // namespace jet
