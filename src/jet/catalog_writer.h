#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "jet/format.h"
#include "jet/table.h"

namespace jet {

class DatabaseFile;

/// Keeps what belongs to the catalog's rows: the entries of its two indexes, and the rights over
/// tables with theirs. Rows reach the file before the entries that name them.
class CatalogWriter {
  public:
    explicit CatalogWriter(DatabaseFile& file);

    void beginChange();
    /// True when the indexes can take another table of that name.
    bool hasRoomFor(std::string_view name) const;
    /// Enters a row of the catalog into both indexes.
    void enter(RowPointer place, std::int32_t parent, std::int32_t id, std::string_view name);
    /// Gives the owner and the users their rights over a new table.
    void addRights(std::int32_t table);
    /// Adds what a program that ended between these steps has left out.
    void mend();

  private:
    static std::string nameKey(const Format& format, std::int32_t parent, std::string_view name);
    static std::string numberKey(std::int32_t number);
    bool hasKnownIndexes() const;
    void mendEntries();
    void mendRights();
    void addRight(std::int32_t table, std::string_view who, std::uint32_t rights);

    DatabaseFile& file_;
    Table& objects_;
    Table& rights_;
};

}  // namespace jet
