#pragma once

#include <string_view>

#include "base/archive_location.h"
#include "jet/connection.h"
#include "jet/recordset.h"

namespace jet {
class Engine;
}

namespace archive {

/// One table of an archive, open on a connection of its own for the length of one operation. The
/// first row is current after construction.
///
/// close() ends recordset and connection and throws what the engine has to say about the rows that
/// were still to be written. The destructor, which ends an operation that failed, closes too but
/// keeps failures to itself; rows stored before stay stored.
class ArchiveTable {
  public:
    /// Any engine failure of opening passes. `engine` must outlive this.
    ArchiveTable(jet::Engine& engine, const base::ArchiveLocation& archive, std::string_view table,
                 jet::LockType lock = jet::LockType::Optimistic);

    jet::Recordset& rows() { return rows_; }
    jet::Connection& connection() { return connection_; }

    void close();

  private:
    jet::Connection connection_;
    jet::Recordset rows_;  // ends before its connection
};

}  // namespace archive
