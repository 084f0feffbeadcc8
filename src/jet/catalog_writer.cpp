#include "jet/catalog_writer.h"

#include <set>
#include <utility>
#include <vector>

#include "jet/bytes.h"
#include "jet/database_file.h"
#include "jet/field_codec.h"
#include "jet/index_key.h"
#include "jet/index_writer.h"
#include "jet/row_builder.h"
#include "jet/row_scanner.h"
#include "jet/system_tables.h"

namespace jet {

namespace {

constexpr std::size_t byName = 0;
constexpr std::size_t byId = 1;
constexpr std::size_t byObject = 0;

void setLong(RowBuilder& row, std::size_t column, std::uint32_t number) {
    std::uint8_t bytes[4];
    put32(bytes, number);
    row.setBytes(column, asText(ByteSpan(bytes)));
}

bool isOver(const Table& table, std::size_t index, const std::vector<std::uint16_t>& columns) {
    const auto& indexes = table.stored().indexes;
    if (index >= indexes.size() || indexes[index].columns.size() != columns.size()) {
        return false;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (indexes[index].columns[i] != std::pair(columns[i], true)) {
            return false;
        }
    }
    return true;
}

}  // namespace

CatalogWriter::CatalogWriter(DatabaseFile& file)
    : file_(file), objects_(file.systemObjects()), rights_(file.table("MSysACEs")) {}

void CatalogWriter::beginChange() {
    objects_.beginChange(true);
    rights_.beginChange(true);
}

std::string CatalogWriter::nameKey(const Format& format, std::int32_t parent,
                                   std::string_view name) {
    std::string key;
    appendLongKey(parent, key);
    return appendTextKey(format, name, key) ? key : std::string();
}

std::string CatalogWriter::numberKey(std::int32_t number) {
    std::string key;
    appendLongKey(number, key);
    return key;
}

bool CatalogWriter::hasRoomFor(std::string_view name) const {
    // The id of the table to be is not known yet: it is the largest so far, or lies below it.
    const auto id = static_cast<std::int32_t>(file_.pages().pageCount());
    const PageFile& pages = file_.pages();
    const std::string key = nameKey(pages.format(), tablesContainer, name);
    return IndexWriter(file_.pages(), objects_, byName).hasRoom(key) &&
           IndexWriter(file_.pages(), objects_, byId).hasRoom(numberKey(id)) &&
           IndexWriter(file_.pages(), rights_, byObject).hasRoom(numberKey(id), 1);
}

void CatalogWriter::enter(RowPointer place, std::int32_t parent, std::int32_t id,
                          std::string_view name) {
    IndexWriter(file_.pages(), objects_, byName).add(nameKey(file_.format(), parent, name), place);
    IndexWriter(file_.pages(), objects_, byId).add(numberKey(id), place);
    objects_.noteIndexEntry(byName);
    objects_.noteIndexEntry(byId);
}

void CatalogWriter::addRights(std::int32_t table) {
    addRight(table, adminId, tableRightsOfOwner);
    addRight(table, usersId, tableRightsOfUsers(file_.format()));
    rights_.noteIndexEntry(byObject);
}

void CatalogWriter::addRight(std::int32_t table, std::string_view who, std::uint32_t rights) {
    RowBuilder row(file_.format(), rights_.stored());
    setLong(row, aces::ObjectId, static_cast<std::uint32_t>(table));
    row.setBytes(aces::Sid, file_.header().maskSecurityId(who));
    setLong(row, aces::Acm, rights);
    row.setBoolean(aces::Inheritable, false);
    const RowPointer place = rights_.insert(row.build());
    IndexWriter(file_.pages(), rights_, byObject).add(numberKey(table), place);
}

bool CatalogWriter::hasKnownIndexes() const {
    return isOver(objects_, byName, {objects::ParentId, objects::Name}) &&
           isOver(objects_, byId, {objects::Id}) && isOver(rights_, byObject, {aces::ObjectId});
}

void CatalogWriter::mend() {
    if ((!objects_.wasCutShort() && !rights_.wasCutShort()) || !hasKnownIndexes()) {
        return;
    }
    beginChange();
    mendEntries();
    mendRights();
}

void CatalogWriter::mendEntries() {
    IndexWriter names(file_.pages(), objects_, byName);
    IndexWriter ids(file_.pages(), objects_, byId);
    const RowSet named = names.rows();
    const RowSet numbered = ids.rows();
    const FieldCodec codec(file_, objects_);
    for (RowScanner scanner(file_, objects_); scanner.next();) {
        const std::int32_t id = codec.integer(objects::Id, scanner.row());
        std::string name;
        codec.readText(objects::Name, scanner.row(), name);
        const std::string key =
            nameKey(file_.format(), codec.integer(objects::ParentId, scanner.row()), name);
        if (!named.contains(scanner.home()) && !key.empty()) {
            names.add(key, scanner.home());
        }
        if (!numbered.contains(scanner.home())) {
            ids.add(numberKey(id), scanner.home());
        }
    }
}

void CatalogWriter::mendRights() {
    IndexWriter entries(file_.pages(), rights_, byObject);
    const RowSet named = entries.rows();
    std::set<std::int32_t> objectsWithRights;
    const FieldCodec codec(file_, rights_);
    for (RowScanner scanner(file_, rights_); scanner.next();) {
        const std::int32_t object = codec.integer(aces::ObjectId, scanner.row());
        objectsWithRights.insert(object);
        if (!named.contains(scanner.home())) {
            entries.add(numberKey(object), scanner.home());
        }
    }
    for (const CatalogEntry& entry : file_.catalog()) {
        if (!entry.isSystem() && !objectsWithRights.contains(entry.id)) {
            addRights(entry.id);
        }
    }
}

}  // namespace jet
