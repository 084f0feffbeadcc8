#pragma once

#include <cstdint>
#include <string>

#include "jet/database_file.h"
#include "jet/table_definition.h"

namespace jet {

/// Adds one table to an open database: its definition and maps, its row in the catalog with the
/// properties of its columns, its access rights, and the entries of the catalog's indexes.
class TableCreator {
  public:
    TableCreator(DatabaseFile& file, double date) : file_(file), date_(date) {}

    /// Everything is checked before anything is changed.
    void create(const TableDefinition& table);

  private:
    void check(const TableDefinition& table);
    StoredTable plan(const TableDefinition& table) const;
    StoredColumn planColumn(const Field& field) const;
    void writeDefinition(StoredTable& table);
    void writeMaps(StoredTable& table);
    RowPointer addObject(const StoredTable& table, const TableDefinition& definition);

    DatabaseFile& file_;
    double date_;
};

}  // namespace jet
