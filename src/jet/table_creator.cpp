#include "jet/table_creator.h"

#include <algorithm>
#include <bit>
#include <numeric>

#include "base/failure.h"
#include "base/text.h"
#include "jet/damage.h"
#include "jet/index_key.h"
#include "jet/index_page.h"
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

void checkName(const std::string& what, const std::string& name) {
    const bool control = std::any_of(name.begin(), name.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    if (name.empty() || base::utf16Length(name) > longestName || name.front() == ' ' || control ||
        name.find_first_of(".![]`") != std::string::npos) {
        throw EngineFailure(EngineFault::Usage, "\"" + name + "\" cannot be the name of a " + what);
    }
}

std::uint16_t fixedLength(DataType type) {
    switch (type) {
        case DataType::Boolean:
        case DataType::Byte:
            return 1;
        case DataType::Integer:
            return 2;
        case DataType::Long:
        case DataType::Single:
            return 4;
        case DataType::Currency:
        case DataType::Double:
        case DataType::Date:
            return 8;
        case DataType::Guid:
            return 16;
        case DataType::Numeric:
            return 17;
        default:
            return 0;
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
    Table& objects = file_.systemObjects();
    Table& rights = file_.table("MSysACEs");
    objects.beginChange(true);
    rights.beginChange(true);
    StoredTable stored = plan(table);
    writeDefinition(stored);
    addObject(stored, table);
    addRight(stored, adminId, tableRightsOfOwner);
    addRight(stored, usersId, tableRightsOfUsers(file_.format()));
    rights.noteIndexEntry(0);
    file_.catalogChanged();
}

void TableCreator::check(const TableDefinition& table) {
    checkName("table", table.name);
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
        checkName("field", table.fields[i].name);
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
    column.length = fixedLength(field.type);
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
    const RowPointer place = catalog.insert(row.build());

    std::string nameKey;
    appendLongKey(tablesContainer, nameKey);
    appendTextKey(format, table.name, nameKey);
    addEntry(catalog, 0, nameKey, place);
    std::string idKey;
    appendLongKey(static_cast<std::int32_t>(table.page()), idKey);
    addEntry(catalog, 1, idKey, place);
    catalog.noteIndexEntry(0);
    catalog.noteIndexEntry(1);
    return place;
}

void TableCreator::addRight(const StoredTable& table, std::string_view who, std::uint32_t rights) {
    Table& target = file_.table("MSysACEs");
    RowBuilder row(file_.format(), target.stored());
    setLong(row, aces::ObjectId, table.page());
    row.setBytes(aces::Sid, file_.header().maskSecurityId(who));
    setLong(row, aces::Acm, rights);
    row.setBoolean(aces::Inheritable, false);
    const RowPointer place = target.insert(row.build());
    std::string key;
    appendLongKey(static_cast<std::int32_t>(table.page()), key);
    addEntry(target, 0, key, place);
}

/// Puts an entry into its leaf. The trees of the engine's tables are small; one whose leaf is full
/// is not split but refused.
void TableCreator::addEntry(Table& table, std::size_t index, const std::string& key,
                            RowPointer row) {
    PageFile& pages = file_.pages();
    const std::string entry = IndexPage::leafEntry(key, row);
    std::uint32_t number = table.stored().indexes[index].rootPage;
    IndexPage content;
    for (int depth = 0;; ++depth) {
        const PageHandle page = pages.read(number);
        if (depth > 16 || !IndexPage::read(file_.format(), page.bytes(), content)) {
            failDamaged(number, "it should be a page of an index of " + table.stored().name);
        }
        if (content.leaf) {
            break;
        }
        const auto child = std::lower_bound(content.entries.begin(), content.entries.end(), entry);
        number = child == content.entries.end()
                     ? content.tail
                     : get32BigEndian(asBytes(*child).data() + child->size() - 4);
    }
    content.entries.insert(std::lower_bound(content.entries.begin(), content.entries.end(), entry),
                           entry);
    if (!content.fits(file_.format())) {
        throw EngineFailure(
            EngineFault::Full,
            file_.pages().path() + ": the catalog's index has no room for the table");
    }
    const PageHandle page = pages.read(number);
    content.write(file_.format(), page.bytes());
    pages.changed(*page);
}

}  // namespace jet
