#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "jet/check_report.h"
#include "jet/page_census.h"
#include "jet/page_file.h"
#include "jet/page_set.h"
#include "jet/stored_table.h"

namespace jet {

/// Checks the values of one Memo or LongBinary column: the pages of its maps and the pieces of
/// every value. No piece may belong to two values, which also bounds the time that chains can take.
class LongValueCheck {
  public:
    LongValueCheck(PageFile& pages, PageCensus& census, CheckReport& report, std::uint32_t table,
                   const StoredColumn& column);

    /// Reads the maps and claims the pages.
    void checkMaps();
    /// Follows the value that a row's bytes define.
    void checkValue(RowPointer home, std::string_view definition);
    /// Looks at every page, when all values are known.
    void checkPages();

  private:
    void fail(RowPointer home, const std::string& why);
    /// Bytes of a piece behind its pointer; false, with a finding, when there is no such piece.
    bool takePiece(RowPointer home, RowPointer place, bool single, std::uint32_t& length,
                   RowPointer& next);
    void checkText(RowPointer home, std::uint32_t length, ByteSpan start);

    PageFile& pages_;
    PageCensus& census_;
    CheckReport& report_;
    std::uint32_t table_;
    const StoredColumn& column_;
    PageSet owned_;
    RowSet pieces_;
    std::string start_;  ///< first bytes of the value looked at
};

}  // namespace jet
