#pragma once

#include <string>

#include "jet/check_report.h"

namespace base {
class FileOpener;
}

namespace jet {

struct CheckOptions {
    std::size_t pageCacheBytes = 8u << 20;
    /// How long to wait for a file that another connection writes.
    int lockWaitMilliseconds = 2000;
};

/// Walks every page of a database file as it stands on the medium: header, map of free pages, table
/// definitions, usage maps, rows, long values, indexes, catalog. Changes nothing. Damage is
/// collected, not thrown, in time and memory bounded by the size of the file.
///
/// A file that cannot be checked at all is an EngineFailure as of Engine::openFile() (no such file,
/// no Jet database, encoded, with a password, in use), a file that cannot be read a
/// base::FileFailure.
CheckReport checkDatabase(base::FileOpener& files, const std::string& path,
                          const CheckOptions& options = {});

}  // namespace jet
