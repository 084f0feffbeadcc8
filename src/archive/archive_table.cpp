#include "archive/archive_table.h"

#include "archive/data.h"

namespace archive {

ArchiveTable::ArchiveTable(jet::Engine& engine, const base::ArchiveLocation& archive,
                           std::string_view table, jet::LockType lock)
    : connection_(engine) {
    connection_.open(connectionString(archive));
    rows_.open(table, connection_, jet::CursorType::Dynamic, lock, jet::CommandType::Table);
}

void ArchiveTable::close() {
    rows_.close();
    connection_.close();
}

}  // namespace archive
