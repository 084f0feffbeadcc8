#include "jet/database_creator.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>

#include "base/text.h"
#include "jet/bytes.h"
#include "jet/data_page.h"
#include "jet/index_key.h"
#include "jet/row_builder.h"
#include "jet/system_tables.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

constexpr std::uint32_t firstDefinition = 2;
constexpr std::uint32_t firstMapPage = 6;
constexpr std::uint32_t indexCount = 7;
constexpr std::uint32_t systemObjectFlags = 0x80000000;

std::uint32_t mapRowsPerPage(const Format& format) {
    return (format.pageSize - format.dataHeader) / (format.mapRow + 2);
}

/// Order in which a definition lists its columns: Jet 4 sorts those of engine tables by name.
std::vector<std::size_t> columnOrder(const Format& format, const StoredTable& table) {
    std::vector<std::size_t> order(table.columns.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (format.isJet4()) {
        std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
            return base::foldedCase(table.columns[left].field.name) <
                   base::foldedCase(table.columns[right].field.name);
        });
    }
    return order;
}

void setLong(RowBuilder& row, std::size_t column, std::uint32_t number) {
    std::uint8_t bytes[4];
    put32(bytes, number);
    row.setBytes(column, asText(ByteSpan(bytes)));
}

void setDate(RowBuilder& row, std::size_t column, double date) {
    std::uint8_t bytes[8];
    put64(bytes, std::bit_cast<std::uint64_t>(date));
    row.setBytes(column, asText(ByteSpan(bytes)));
}

}  // namespace

DatabaseCreator::DatabaseCreator(const Format& format, double fileDate, double objectDate,
                                 std::uint32_t engineBuild)
    : format_(format),
      objectDate_(objectDate),
      headerPage_(HeaderPage::build(format, {engineBuild, fileDate})),
      header_(format, headerPage_, "new database"),
      tables_(systemTables(format)),
      indexEntries_(indexCount) {}

std::vector<std::vector<std::uint8_t>> DatabaseCreator::build() {
    planPages();
    pages_[0] = headerPage_;
    buildFreePageMap();
    buildMapPages();
    buildObjects();
    buildAccessRights();
    buildDefinitions();
    buildIndexes();
    return std::move(pages_);
}

void DatabaseCreator::planPages() {
    std::uint32_t mapRows = 0;
    for (const StoredTable& table : tables_) {
        mapRows += 2 + static_cast<std::uint32_t>(table.indexes.size());
        for (const StoredColumn& column : table.columns) {
            mapRows += isLongValue(column.field.type) ? 2 : 0;
        }
    }
    mapPageCount_ = (mapRows + mapRowsPerPage(format_) - 1) / mapRowsPerPage(format_);
    firstIndexPage_ = firstMapPage + mapPageCount_;
    objectsData_ = firstIndexPage_ + indexCount;
    rightsData_ = objectsData_ + 1;
    pages_.assign(rightsData_ + std::size_t{1}, {});
    std::uint32_t nextIndexPage = firstIndexPage_;
    for (std::uint32_t i = 0; i < tables_.size(); ++i) {
        tables_[i].pages = {firstDefinition + i};
        planMapRows(tables_[i], i == 0 ? objectsData_ : i == 1 ? rightsData_ : 0, nextIndexPage);
    }
}

void DatabaseCreator::planMapRows(StoredTable& table, std::uint32_t dataPage,
                                  std::uint32_t& nextIndexPage) {
    table.ownedMap = addMapRow(dataPage);
    table.freeMap = addMapRow(dataPage);
    for (StoredColumn& column : table.columns) {
        if (isLongValue(column.field.type)) {
            column.ownedMap = addMapRow(0);
            column.freeMap = addMapRow(0);
        }
    }
    for (StoredIndex& index : table.indexes) {
        index.rootPage = nextIndexPage++;
        index.map = addMapRow(index.rootPage);
    }
}

RowPointer DatabaseCreator::addMapRow(std::uint32_t page) {
    const auto row = static_cast<std::uint32_t>(mapRows_.size());
    mapRows_.push_back(page);
    return {firstMapPage + row / mapRowsPerPage(format_),
            static_cast<std::uint8_t>(row % mapRowsPerPage(format_))};
}

Page DatabaseCreator::makePage(std::uint32_t number) const {
    Page page;
    page.number = number;
    page.bytes = std::make_unique<std::uint8_t[]>(format_.pageSize);
    return page;
}

void DatabaseCreator::store(Page page) {
    pages_[page.number].assign(page.bytes.get(), page.bytes.get() + format_.pageSize);
}

void DatabaseCreator::buildFreePageMap() {
    Page page = makePage(1);
    DataPage view(format_, page);
    view.initialise(1);
    std::vector<std::uint8_t> row(format_.mapRow, 0xFF);
    std::fill_n(row.begin(), 5, std::uint8_t{0});
    for (std::size_t used = 0; used < pages_.size(); ++used) {
        row[5 + used / 8] &= static_cast<std::uint8_t>(~(1u << used % 8));
    }
    view.insert(row);
    view.insert(std::vector<std::uint8_t>(format_.mapRow, 0));
    store(std::move(page));
}

void DatabaseCreator::buildMapPages() {
    const std::uint32_t perPage = mapRowsPerPage(format_);
    for (std::uint32_t i = 0; i < mapPageCount_; ++i) {
        Page page = makePage(firstMapPage + i);
        DataPage view(format_, page);
        view.initialise(0);
        for (std::uint32_t r = i * perPage;
             r < std::min<std::size_t>((i + 1) * perPage, mapRows_.size()); ++r) {
            std::vector<std::uint8_t> row(format_.mapRow, 0);
            if (mapRows_[r] != 0) {
                row[5 + mapRows_[r] / 8] = static_cast<std::uint8_t>(1u << mapRows_[r] % 8);
            }
            view.insert(row);
        }
        store(std::move(page));
    }
}

void DatabaseCreator::buildDefinitions() {
    tables_[0].rowCount = 8;
    tables_[0].indexes[0].entriesEver = 8;
    tables_[0].indexes[1].entriesEver = 8;
    tables_[1].rowCount = 16;
    tables_[1].indexes[0].entriesEver = 8;
    for (const StoredTable& table : tables_) {
        const std::string bytes = table.build(format_, columnOrder(format_, table));
        Page page = makePage(table.page());
        StoredTable::fillPage(format_, page.bytes.get(), bytes, true, 0);
        store(std::move(page));
    }
}

void DatabaseCreator::buildObjects() {
    Page page = makePage(objectsData_);
    DataPage(format_, page).initialise(tables_[0].page());
    addObject(page, tablesContainer, "Tables", rootContainer, 3, engineId);
    addObject(page, databasesContainer, "Databases", rootContainer, 3, engineId);
    addObject(page, relationshipsContainer, "Relationships", rootContainer, 3, engineId);
    addObject(page, databaseObject, "MSysDb", databasesContainer, 2, adminId);
    for (const StoredTable& table : tables_) {
        addObject(page, static_cast<std::int32_t>(table.page()), table.name, tablesContainer, 1,
                  engineId);
    }
    store(std::move(page));
}

void DatabaseCreator::addObject(Page& page, std::int32_t id, std::string_view name,
                                std::int32_t parent, std::uint32_t type, std::string_view owner) {
    RowBuilder row(format_, tables_[0]);
    setLong(row, objects::Id, static_cast<std::uint32_t>(id));
    setLong(row, objects::ParentId, static_cast<std::uint32_t>(parent));
    row.setBytes(objects::Name, encodedName(format_, name));
    std::uint8_t typeBytes[2];
    put16(typeBytes, type);
    row.setBytes(objects::Type, asText(ByteSpan(typeBytes)));
    setDate(row, objects::DateCreate, objectDate_);
    setDate(row, objects::DateUpdate, objectDate_);
    row.setBytes(objects::Owner, header_.maskSecurityId(owner));
    setLong(row, objects::Flags, systemObjectFlags);
    const std::uint32_t slot = DataPage(format_, page).insert(row.build());

    const RowPointer place{page.number, static_cast<std::uint8_t>(slot)};
    std::string nameKey;
    appendLongKey(parent, nameKey);
    appendTextKey(format_, name, nameKey);
    indexEntries_[0].push_back(IndexPage::leafEntry(nameKey, place));
    std::string idKey;
    appendLongKey(id, idKey);
    indexEntries_[1].push_back(IndexPage::leafEntry(idKey, place));
}

void DatabaseCreator::buildAccessRights() {
    constexpr std::int32_t objectsTable = 2;
    constexpr std::int32_t rightsTable = 3;
    constexpr std::int32_t queriesTable = 4;
    constexpr std::int32_t relationshipsTable = 5;
    Page page = makePage(rightsData_);
    DataPage(format_, page).initialise(tables_[1].page());
    addRight(page, objectsTable, adminId, 0x00060000, false);
    addRight(page, rightsTable, adminId, 0x00060000, false);
    addRight(page, queriesTable, adminId, 0x00060000, false);
    addRight(page, relationshipsTable, adminId, 0x000E0000, false);
    addRight(page, tablesContainer, creatorId, tableRightsOfOwner, true);
    addRight(page, tablesContainer, adminId, 0x00060001, false);
    addRight(page, relationshipsContainer, creatorId, tableRightsOfOwner, true);
    addRight(page, relationshipsContainer, adminId, 0x00060001, false);
    addRight(page, databasesContainer, adminId, 0x00060000, false);
    addRight(page, databaseObject, adminId, 0x0006000E, false);
    addRight(page, databaseObject, usersId, 0x0000000E, false);
    addRight(page, queriesTable, usersId, 0x00000014, false);
    addRight(page, relationshipsTable, usersId, 0x00000014, false);
    addRight(page, objectsTable, usersId, 0x00000014, false);
    addRight(page, tablesContainer, usersId, tableRightsOfUsers(format_), true);
    addRight(page, relationshipsContainer, usersId, 0x000FFFFF, true);
    store(std::move(page));
}

void DatabaseCreator::addRight(Page& page, std::int32_t object, std::string_view who,
                               std::uint32_t rights, bool inheritable) {
    RowBuilder row(format_, tables_[1]);
    setLong(row, aces::ObjectId, static_cast<std::uint32_t>(object));
    row.setBytes(aces::Sid, header_.maskSecurityId(who));
    setLong(row, aces::Acm, rights);
    row.setBoolean(aces::Inheritable, inheritable);
    const std::uint32_t slot = DataPage(format_, page).insert(row.build());
    std::string key;
    appendLongKey(object, key);
    indexEntries_[2].push_back(
        IndexPage::leafEntry(key, {page.number, static_cast<std::uint8_t>(slot)}));
}

void DatabaseCreator::buildIndexes() {
    std::uint32_t next = firstIndexPage_;
    for (const StoredTable& table : tables_) {
        for (std::size_t i = 0; i < table.indexes.size(); ++i, ++next) {
            IndexPage index;
            index.table = table.page();
            index.entries = indexEntries_[next - firstIndexPage_];
            std::sort(index.entries.begin(), index.entries.end());
            Page page = makePage(next);
            index.write(format_, page.bytes.get());
            store(std::move(page));
        }
    }
}

}  // namespace jet
