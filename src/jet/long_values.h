#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/format.h"
#include "jet/stored_table.h"
#include "jet/usage_map.h"

namespace jet {

class DatabaseFile;

/// The Memo and LongBinary values of one table. A row holds a definition of 12 bytes:
///
///     0   4  length in the low 30 bits; 0x80000000 the data follows here, 0x40000000 it is one row
///            elsewhere, neither: a chain of rows
///     4   4  pointer to the (first) row; 0 for data that follows here
///     8   4  0
///
/// A row of a chain begins with a pointer to the next one (0: last). The rows lie on pages of their
/// own whose owner is "LVAL", listed in the column's own pair of maps.
class LongValues {
  public:
    LongValues(DatabaseFile& file, const StoredTable& table);

    /// The bytes that a definition stands for. What does not fit together is a Damaged failure.
    std::string read(std::string_view definition) const;
    /// Stores bytes for a column (by its position) and returns the definition.
    std::string store(std::size_t column, std::string_view bytes);
    /// Gives up the rows of a definition at the next flush, when no row refers to them any more.
    void release(std::size_t column, std::string_view definition);

    // The steps of a flush; see DatabaseFile.
    template <typename Function>
    void forEachMap(Function function) {
        for (ColumnMaps& maps : maps_) {
            if (maps.exists) {
                function(maps.owned);
                function(maps.free);
            }
        }
    }
    void applyReleases();
    /// Pages of the maps of every column, for the check of the free pages.
    void loadMaps();

  private:
    struct ColumnMaps {
        bool exists = false;
        bool loaded = false;
        UsageMap owned;
        UsageMap free;
    };
    struct Release {
        std::size_t column;
        std::string definition;
    };

    ColumnMaps& mapsOf(std::size_t column);
    RowPointer storeRow(std::size_t column, std::string_view bytes);
    std::uint32_t choosePage(ColumnMaps& maps, std::size_t length);
    void eraseValue(const Release& release);
    void eraseRow(ColumnMaps& maps, RowPointer place);
    std::string readChain(RowPointer place, std::uint32_t length) const;
    std::string readRow(RowPointer place) const;

    DatabaseFile& file_;
    const StoredTable& table_;
    std::vector<ColumnMaps> maps_;
    std::vector<Release> releases_;
};

}  // namespace jet
