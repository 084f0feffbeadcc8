#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jet/database.h"
#include "jet/format.h"
#include "jet/header_page.h"
#include "jet/index_page.h"
#include "jet/page_file.h"
#include "jet/stored_table.h"

namespace jet {

/// Builds the pages of an empty database, in memory.
///
///     0        header
///     1        map of free pages
///     2 to 5   definitions of the four engine tables
///     then     pages of usage maps (one in Jet 4, three in Jet 3), one leaf for each of the seven
///              indexes, one data page each of MSysObjects and MSysACEs
class DatabaseCreator {
  public:
    DatabaseCreator(const Format& format, double fileDate, double objectDate,
                    std::uint32_t engineBuild);

    /// The whole file, page after page.
    std::vector<std::vector<std::uint8_t>> build();

  private:
    Page makePage(std::uint32_t number) const;
    void store(Page page);
    void planPages();
    void planMapRows(StoredTable& table, std::uint32_t dataPage, std::uint32_t& nextIndexPage);
    RowPointer addMapRow(std::uint32_t page);
    void buildFreePageMap();
    void buildMapPages();
    void buildDefinitions();
    void buildObjects();
    void buildAccessRights();
    void addObject(Page& page, std::int32_t id, std::string_view name, std::int32_t parent,
                   std::uint32_t type, std::string_view owner);
    void addRight(Page& page, std::int32_t object, std::string_view who, std::uint32_t rights,
                  bool inheritable);
    void buildIndexes();

    const Format& format_;
    double objectDate_;
    std::vector<std::uint8_t> headerPage_;
    HeaderPage header_;
    std::vector<StoredTable> tables_;
    std::vector<std::uint32_t> mapRows_;  ///< the page that each map row holds; 0: none
    std::uint32_t mapPageCount_ = 0;
    std::uint32_t objectsData_ = 0;
    std::uint32_t rightsData_ = 0;
    std::vector<std::vector<std::string>> indexEntries_;  ///< of each index page, from the first on
    std::uint32_t firstIndexPage_ = 0;
    std::vector<std::vector<std::uint8_t>> pages_;
};

}  // namespace jet
