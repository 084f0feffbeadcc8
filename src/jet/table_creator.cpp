#include "jet/table_creator.h"

#include <algorithm>
#include <bit>
#include <numeric>

#include "base/failure.h"
#include "base/text.h"
#include "jet/catalog_writer.h"
#include "jet/index_key.h"
#include "jet/property_block.h"
#include "jet/row_builder.h"
#include "jet/system_tables.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

using base::EngineFailure;
using base::EngineFault;

constexpr std::size_t longestName = 64;
constexpr int defaultTextSize = 255;
constexpr std::size_t mostFields = 255;
constexpr std::uint8_t fixedFlags = 0x03;
constexpr std::uint8_t variableFlags = 0x02;
constexpr std::uint8_t autoNumberFlags = 0x07;

void checkName(const Format& format, const std::string& what, const std::string& name) {
    const bool control = std::any_of(name.begin(), name.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    if (name.empty() || base::utf16Length(name) > longestName || name.front() == ' ' || control ||
        name.find_first_of(".![]`") != std::string::npos ||
        decodedName(format, encodedName(format, name)) != name) {
        throw EngineFailure(EngineFault::Usage, "\"" + name + "\" cannot be the name of a " + what);
    }
}

void setLong(RowBuilder& row, std::size_t column, std::uint32_t number) {
    std::uint8_t bytes[4];
    put32(bytes, number);
    row.setBytes(column, asText(ByteSpan(bytes)));
}

}  // namespace

void TableCreator::create(const TableDefinition& table) {
    check(table);
    CatalogWriter catalog(file_);
    catalog.beginChange();
    if (!catalog.hasRoomFor(table.name)) {
        throw EngineFailure(
            EngineFault::Full,
            file_.pages().path() + ": the catalog's indexes have no room for table " + table.name);
    }
    StoredTable stored = plan(table);
    writeDefinition(stored);
    const auto id = static_cast<std::int32_t>(stored.page());
    catalog.enter(addObject(stored, table), tablesContainer, id, table.name);
    catalog.addRights(id);
    file_.catalogChanged();
}

void TableCreator::check(const TableDefinition& table) {
    checkName(file_.format(), "table", table.name);
    for (const CatalogEntry& entry : file_.catalog()) {
        if (base::equalIgnoringCase(entry.name, table.name)) {
            throw EngineFailure(EngineFault::Exists, "there is a table " + entry.name + " already");
        }
    }
    if (table.fields.empty() || table.fields.size() > mostFields) {
        throw EngineFailure(EngineFault::Usage, "table " + table.name + " must have 1 to " +
                                                    std::to_string(mostFields) + " fields");
    }
    std::string key;
    if (!appendTextKey(file_.format(), table.name, key)) {
        throw EngineFailure(
            EngineFault::Usage,
            "table " + table.name + ": the sort order of a character of this name is not known");
    }
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
        checkName(file_.format(), "field", table.fields[i].name);
        if (table.find(table.fields[i].name) != static_cast<int>(i)) {
            throw EngineFailure(EngineFault::Usage,
                                "table " + table.name + " has two fields " + table.fields[i].name);
        }
    }
}

StoredColumn TableCreator::planColumn(const Field& field) const {
    const Format& format = file_.format();
    StoredColumn column;
    column.field = field;
    column.length = fixedSizeOf(field.type);
    column.fixed = column.length != 0;
    column.flags = field.autoNumber ? autoNumberFlags : column.fixed ? fixedFlags : variableFlags;
    const int size = field.size == 0 ? defaultTextSize : field.size;
    if (field.type == DataType::Text || field.type == DataType::Binary) {
        const bool text = field.type == DataType::Text;
        if (size < 1 || size > (text || !format.isJet4() ? 255 : 510)) {
            throw EngineFailure(EngineFault::Usage, "field " + field.name + " cannot be " +
                                                        std::to_string(size) + " wide");
        }
        column.length =
            static_cast<std::uint16_t>(text ? size * static_cast<int>(format.textUnit) : size);
    } else if (!column.fixed && !isLongValue(field.type)) {
        throw EngineFailure(EngineFault::Usage, "field " + field.name + " has an unknown type");
    }
    column.compressed =
        format.isJet4() && (field.type == DataType::Text || field.type == DataType::Memo);
    return column;
}

StoredTable TableCreator::plan(const TableDefinition& table) const {
    StoredTable stored;
    stored.name = table.name;
    std::uint16_t variable = 0;
    std::uint16_t fixedOffset = 0;
    for (const Field& field : table.fields) {
        StoredColumn column = planColumn(field);
        column.number = static_cast<std::uint16_t>(stored.columns.size());
        column.variableIndex = variable;
        if (!column.fixed) {
            ++variable;
        } else if (field.type != DataType::Boolean) {
            column.fixedOffset = fixedOffset;
            fixedOffset = static_cast<std::uint16_t>(fixedOffset + column.length);
        }
        stored.columns.push_back(std::move(column));
    }
    stored.columnsEver = static_cast<std::uint16_t>(stored.columns.size());
    stored.variableEver = variable;
    return stored;
}

void TableCreator::writeDefinition(StoredTable& table) {
    PageFile& pages = file_.pages();
    std::vector<std::size_t> order(table.columns.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const std::size_t length = table.build(file_.format(), order).size();
    std::size_t room = file_.format().pageSize;
    table.pages.push_back(file_.allocatePage());
    pages.create(table.pages.back());
    writeMaps(table);
    for (; room < length; room += file_.format().pageSize - 8) {
        table.pages.push_back(file_.allocatePage());
        pages.create(table.pages.back());
    }
    table.place(pages, table.build(file_.format(), order));
}

/// Every table's maps begin on a page of their own: owned pages, pages with free space, then a pair
/// for each column of long values.
void TableCreator::writeMaps(StoredTable& table) {
    PageFile& pages = file_.pages();
    PageHandle page;
    const auto addRow = [&] {
        const std::vector<std::uint8_t> row(file_.format().mapRow, 0);
        if (!page || !DataPage(file_.format(), *page).fits(row.size())) {
            page = pages.create(file_.allocatePage());
            DataPage(file_.format(), *page).initialise(0);
        }
        const std::uint32_t slot = DataPage(file_.format(), *page).insert(row);
        pages.changed(*page);
        return RowPointer{page->number, static_cast<std::uint8_t>(slot)};
    };
    table.ownedMap = addRow();
    table.freeMap = addRow();
    for (StoredColumn& column : table.columns) {
        if (isLongValue(column.field.type)) {
            column.ownedMap = addRow();
            column.freeMap = addRow();
        }
    }
}

RowPointer TableCreator::addObject(const StoredTable& table, const TableDefinition& definition) {
    const Format& format = file_.format();
    Table& catalog = file_.systemObjects();
    RowBuilder row(format, catalog.stored());
    setLong(row, objects::Id, table.page());
    setLong(row, objects::ParentId, static_cast<std::uint32_t>(tablesContainer));
    row.setBytes(objects::Name, encodedName(format, table.name));
    std::uint8_t type[2];
    put16(type, CatalogEntry::tableType);
    row.setBytes(objects::Type, asText(ByteSpan(type)));
    std::uint8_t date[8];
    put64(date, std::bit_cast<std::uint64_t>(date_));
    row.setBytes(objects::DateCreate, asText(ByteSpan(date)));
    row.setBytes(objects::DateUpdate, asText(ByteSpan(date)));
    row.setBytes(objects::Owner, file_.header().maskSecurityId(adminId));
    setLong(row, objects::Flags, 0);
    row.setBytes(objects::LvProp, catalog.longValues().store(
                                      objects::LvProp, PropertyBlock::build(format, definition)));
    return catalog.insert(row.build());
}

}  // namespace jet
