#pragma once

#include "base/archive_location.h"
#include "jet/database.h"

namespace jet {
class Engine;
}

// makedb: makes new, empty archives. Called when the user asks for a new archive; whoever wants to
// use the archive opens it afterwards.

namespace archive {

/// Creates the archive file with its two tables and closes it again; true when all of that is done.
///
/// Nothing is asked and nothing is erased: a file that is there already is an EngineFailure
/// (Exists), and every other failure of the engine passes to the caller as well. A failure in the
/// middle may leave a partly built file. The older format is for programs that read no other; it
/// holds no character outside code page 1252.
bool createArchive(jet::Engine& engine, const base::ArchiveLocation& archive,
                   jet::FileFormat format = jet::FileFormat::Jet4);

}  // namespace archive
