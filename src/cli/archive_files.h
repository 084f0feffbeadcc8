#pragma once

#include <string>

#include "jet/connection.h"
#include "jet/database.h"

namespace base {
struct ArchiveLocation;
}

namespace cli {

struct Context;

/// False for what is no file, such as a folder; true also where nothing is.
bool isReplaceable(const std::string& path);

/// Creates a new archive in the place of whatever file is at `path`. The old one stays whole until
/// the new one is complete, and for good when that fails. A symbolic link stays one: the file it
/// leads to is replaced. A folder or a device is never replaced.
void replaceArchive(Context& context, const std::string& path, jet::FileFormat format);

/// Creates a new archive at `path`. A file that is there already is an EngineFailure (Exists);
/// after any other failure nothing is left behind.
void createNewArchive(Context& context, const std::string& path, jet::FileFormat format);

/// Opens an archive that must exist already: where it does not, the failure says how to create it.
void openExisting(jet::Connection& connection, const base::ArchiveLocation& archive);

}  // namespace cli
