#include "cli/row_printer.h"

#include "cli/table_writer.h"
#include "jet/recordset.h"

namespace cli {
namespace {

using jet::DataType;

bool isNumber(DataType type) {
    switch (type) {
        case DataType::Byte:
        case DataType::Integer:
        case DataType::Long:
        case DataType::Currency:
        case DataType::Single:
        case DataType::Double:
        case DataType::Numeric:
            return true;
        default:
            return false;
    }
}

Cell::Kind kindOf(DataType type) {
    if (type == DataType::Boolean) {
        return Cell::Kind::Boolean;
    }
    return isNumber(type) ? Cell::Kind::Number : Cell::Kind::Text;
}

void readCell(const jet::Recordset& rows, int field, DataType type, Cell& cell) {
    cell.kind = kindOf(type);
    rows.readText(field, cell.text);
    // Asked only where it can be: NULL reads as an empty text.
    if (cell.text.empty() && rows.isNull(field)) {
        cell.setNull();
    }
}

std::vector<Column> columnsOf(const jet::TableDefinition& table) {
    std::vector<Column> columns;
    for (const jet::Field& field : table.fields) {
        columns.push_back({field.name, isNumber(field.type)});
    }
    return columns;
}

}  // namespace

void printRows(jet::Recordset& rows, TableWriter& writer) {
    const jet::TableDefinition& table = rows.definition();
    const int count = static_cast<int>(table.fields.size());
    writer.begin(columnsOf(table));
    std::vector<Cell> cells(table.fields.size());
    for (; !rows.endOfFile(); rows.moveNext()) {
        for (int field = 0; field < count; ++field) {
            const auto position = static_cast<std::size_t>(field);
            readCell(rows, field, table.fields[position].type, cells[position]);
        }
        writer.row(cells);
    }
    writer.end();
}

}  // namespace cli
