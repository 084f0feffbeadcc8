#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/archive_location.h"
#include "base/scan_entry.h"
#include "jet/recordset.h"

namespace jet {
class Engine;
}

namespace archive {

/// What a person has attached to an entry. Stored in the row's fields of the same names.
struct Annotation {
    std::string keywords;
    std::string notes1;
    std::string notes2;

    friend bool operator==(const Annotation&, const Annotation&) = default;
};

/// The row of table `main` that is to be annotated, and what to put there.
struct AnnotationChange {
    jet::RowPlace place;       ///< where the row stood when it was read
    base::ScanEntry expected;  ///< what it held then (`level` aside): it must hold that still
    Annotation annotation;     ///< all three texts as they are to be
};

struct AnnotationResult {
    /// The changes that were made, each the other way round: handing these to annotate() again
    /// undoes them.
    std::vector<AnnotationChange> undo;
    /// Positions in the list of changes whose rows were not there any more, or held something else
    /// (a save or another program came in between). Nothing was changed there.
    std::vector<std::size_t> missed;
};

/// Changes keywords and notes of chosen rows, in place. Everything is looked at before anything is
/// written: a text that does not fit its field, or a row that would not fit its page any more, is
/// an EngineFailure (Value) then, and no row is changed. The changes may come in any order; of two
/// for one row the later counts. `goOn` is asked after every row (with how many have been looked at
/// or written); false ends the work, what has been written until then is in the result's undo list.
///
/// A row whose text must have "?" in the place of a character (Jet 3) is no failure.
AnnotationResult annotate(jet::Engine& engine, const base::ArchiveLocation& archive,
                          std::span<const AnnotationChange> changes,
                          const std::function<bool(std::size_t)>& goOn = {});

}  // namespace archive
