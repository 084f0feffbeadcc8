#pragma once

#include "jet/bytes.h"
#include "jet/database_file.h"
#include "jet/page_file.h"
#include "jet/row_view.h"
#include "jet/table.h"

namespace jet {

/// Walks the rows of a table: pages ascending, slots ascending, a moved row at its home place.
/// Sound also when rows and pages are added and removed during the walk.
class RowScanner {
  public:
    RowScanner(DatabaseFile& file, Table& table) : file_(file), table_(table) {}

    /// Goes to the next row; false after the last.
    bool next();
    /// Back to before the first row.
    void rewind();

    /// Home place of the row found last.
    RowPointer home() const { return home_; }
    /// Its parts. Valid until the next change of any page; refresh() makes them valid again.
    const RowView& row() const { return row_; }
    /// Looks at the row anew where its page has changed. False when the row is gone.
    bool refresh();
    /// Lets go of the page, so that it need not stay in memory.
    void release();

  private:
    bool enterPage(std::uint32_t from);
    bool takeRow();

    DatabaseFile& file_;
    Table& table_;
    PageHandle page_;       ///< page of the home place
    PageHandle movedPage_;  ///< page that the row has moved to
    RowPointer home_;
    std::uint32_t nextSlot_ = 0;
    std::uint64_t version_ = 0;
    std::uint64_t movedVersion_ = 0;
    RowView row_;
    bool started_ = false;
    std::uint32_t prefetchedTo_ = 0;
};

}  // namespace jet
