#pragma once

#include "base/archive_location.h"

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
/// middle may leave a partly built file.
bool createArchive(jet::Engine& engine, const base::ArchiveLocation& archive);

}  // namespace archive
