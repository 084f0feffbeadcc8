#include "jet/system_tables.h"

#include <array>

namespace jet {

namespace {

constexpr std::uint8_t fixedColumnFlags = 0x13;
constexpr std::uint8_t variableColumnFlags = 0x12;
constexpr std::uint8_t securityColumnFlags = 0x32;
constexpr std::uint8_t jet4IndexFlag = 0x80;

struct ColumnPlan {
    std::string_view name;
    DataType type;
    bool security = false;
};

struct IndexPlan {
    std::vector<std::uint16_t> columns;
    std::uint8_t flags;
};

struct IndexNamePlan {
    std::string_view name;
    std::uint32_t number;  ///< and real index
    std::uint8_t kind;
};

struct TablePlan {
    std::string_view name;
    std::vector<ColumnPlan> columns;
    std::vector<IndexPlan> indexes;
    std::vector<IndexNamePlan> names;  ///< sorted by name
};

std::uint16_t lengthOf(const Format& format, DataType type) {
    switch (type) {
        case DataType::Boolean:
        case DataType::Byte:
            return 1;
        case DataType::Integer:
            return 2;
        case DataType::Long:
            return 4;
        case DataType::Date:
            return 8;
        case DataType::Text:
        case DataType::Binary:
            return static_cast<std::uint16_t>(255 * format.textUnit);
        default:
            return 0;
    }
}

bool isFixedType(DataType type) {
    return type != DataType::Text && type != DataType::Binary && !isLongValue(type);
}

StoredTable storedTable(const Format& format, const TablePlan& plan) {
    StoredTable table;
    table.name = plan.name;
    table.type = StoredTable::systemTable;
    std::uint16_t variable = 0;
    std::uint16_t fixedOffset = 0;
    for (const ColumnPlan& columnPlan : plan.columns) {
        StoredColumn column;
        column.field.name = columnPlan.name;
        column.field.type = columnPlan.type;
        column.number = static_cast<std::uint16_t>(table.columns.size());
        column.variableIndex = variable;
        column.length = lengthOf(format, columnPlan.type);
        column.fixed = isFixedType(columnPlan.type);
        column.flags = column.fixed          ? fixedColumnFlags
                       : columnPlan.security ? securityColumnFlags
                                             : variableColumnFlags;
        if (!column.fixed) {
            ++variable;
        } else if (columnPlan.type != DataType::Boolean) {
            column.fixedOffset = fixedOffset;
            fixedOffset = static_cast<std::uint16_t>(fixedOffset + column.length);
        }
        table.columns.push_back(std::move(column));
    }
    table.columnsEver = static_cast<std::uint16_t>(table.columns.size());
    table.variableEver = variable;
    for (const IndexPlan& indexPlan : plan.indexes) {
        StoredIndex index;
        for (const std::uint16_t column : indexPlan.columns) {
            index.columns.emplace_back(column, true);
        }
        index.flags =
            static_cast<std::uint8_t>(indexPlan.flags | (format.isJet4() ? jet4IndexFlag : 0));
        table.indexes.push_back(std::move(index));
    }
    for (const IndexNamePlan& name : plan.names) {
        table.indexNames.push_back({std::string(name.name), name.number, name.number, name.kind});
    }
    return table;
}

std::vector<TablePlan> plans(bool jet4) {
    using enum DataType;
    std::vector<TablePlan> tables{
        {"MSysObjects",
         {{"Id", Long},
          {"ParentId", Long},
          {"Name", Text},
          {"Type", Integer},
          {"DateCreate", Date},
          {"DateUpdate", Date},
          {"Owner", Binary, true},
          {"Flags", Long},
          {"Database", Memo},
          {"Connect", Memo},
          {"ForeignName", Text},
          {"RmtInfoShort", Binary},
          {"RmtInfoLong", LongBinary},
          {"Lv", LongBinary},
          {"LvProp", LongBinary},
          {"LvModule", LongBinary},
          {"LvExtra", LongBinary}},
         {{{1, 2}, 0x01}, {{0}, 0x01}},
         {{"Id", 1, 1}, {"ParentIdName", 0, 0}}},
        {"MSysACEs",
         {{"ObjectId", Long}, {"SID", Binary, true}, {"ACM", Long}, {"FInheritable", Boolean}},
         {{{0}, 0x08}},
         {{"ObjectId", 0, 0}}},
        {"MSysQueries",
         {{"ObjectId", Long},
          {"Attribute", Byte},
          {"Order", Binary},
          {"Name1", Text},
          {"Name2", Text},
          {"Expression", Memo},
          {"Flag", Integer}},
         {{{0, 1, 2}, 0x01}},
         {{"ObjectIdAttribute", 0, 1}}},
        {"MSysRelationships",
         {{"szRelationship", Text},
          {"grbit", Long},
          {"ccolumn", Long},
          {"icolumn", Long},
          {"szObject", Text},
          {"szColumn", Text},
          {"szReferencedObject", Text},
          {"szReferencedColumn", Text}},
         {{{0}, 0x02}, {{4}, 0x02}, {{6}, 0x02}},
         {{"szObject", 1, 0}, {"szReferencedObject", 2, 0}, {"szRelationship", 0, 0}}},
    };
    if (jet4) {
        tables[2].columns.push_back({"LvExtra", Long});
    }
    return tables;
}

}  // namespace

std::vector<StoredTable> systemTables(const Format& format) {
    std::vector<StoredTable> tables;
    for (const TablePlan& plan : plans(format.isJet4())) {
        tables.push_back(storedTable(format, plan));
    }
    return tables;
}

}  // namespace jet
