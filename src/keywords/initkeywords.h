#pragma once

namespace base {
class PendingEvents;
struct ProgramState;
}  // namespace base
namespace jet {
class Engine;
}

// initkeywords: collects the known keywords and notes from the records of the current archive. The
// open-archive window has this done whenever an archive has been opened. It changes
// archiveKeywords, archiveNotes, keywordCount and noteCount, and never the archive.

namespace keywords {

class CollectionProgress;

/// Makes archiveNotes and archiveKeywords anew from table `main` of the current archive: every
/// different text once, in the order in which the texts are found. Of each record come Notes1 and
/// Notes2, then its keywords, which commas separate, from the last to the first; none of them is
/// trimmed. Keywords may be empty texts, notes are not.
///
/// Afterwards keywordCount and noteCount say how many texts were found, repeated ones included,
/// which is more than the lists hold. `progress` is shown, and told after each record; then events
/// run. A table without rows changes nothing, and `progress` is not shown.
///
/// Failures: those of the engine, while all four are as they were; TooManyNotesFailure beyond
/// 32,767 found notes, with keywordCount set already; NothingCollectedFailure when there is no note
/// (both counters set, both lists as they were) or no keyword (archiveNotes made anew as well). No
/// archive being open is an EngineFailure (NotFound).
///
/// Events may do anything meanwhile. The rows read are those of the archive that was current at the
/// beginning; a row that somebody deletes before it was read counts as one without texts. What is
/// collected reaches the shared lists at the end, in one piece.
void initKeywords(base::ProgramState& state, jet::Engine& engine, base::PendingEvents& events,
                  CollectionProgress& progress);

}  // namespace keywords
