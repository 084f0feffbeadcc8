#include "archive/annotations.h"

#include <algorithm>
#include <map>
#include <utility>

#include "archive/archive_table.h"
#include "archive/record_rows.h"

namespace archive {
namespace {

/// Positions in the list of changes, by the places of their rows. Of two for one row the later one
/// stays.
using Wanted = std::map<jet::RowPlace, std::size_t>;

bool holdsAsExpected(const RecordReader& reader, const base::ScanEntry& expected,
                     base::ScanEntry& present) {
    reader.read(present);
    present.level = expected.level;
    return present == expected;
}

Annotation annotationOf(const base::ScanEntry& entry) {
    return {entry.keywords, entry.Notes1, entry.Notes2};
}

/// One walk over the table, past every row in question.
class AnnotationWalk {
  public:
    AnnotationWalk(jet::Engine& engine, const base::ArchiveLocation& archive,
                   std::span<const AnnotationChange> changes)
        : table_(engine, archive, "main"),
          reader_(table_.rows()),
          fields_(table_.rows()),
          changes_(changes) {}

    /// Finds the rows that hold what is expected and composes each as it is to be, without storing
    /// it: what cannot be stored fails here. False when `goOn` ends the walk.
    bool check(const Wanted& wanted, const std::function<bool(std::size_t)>& goOn) {
        return walk(wanted, goOn, [this](std::size_t change) {
            sound_.emplace(table_.rows().place(), change);
            compose(changes_[change].annotation);
            // Reading from a row that is being changed puts it together, as storing it would.
            static_cast<void>(table_.rows().text(fields_.keywords));
            table_.rows().cancelUpdate();
        });
    }

    /// Writes what was found sound. A row that has been changed or deleted since is missed.
    void write(const std::function<bool(std::size_t)>& goOn, AnnotationResult& result) {
        std::vector<bool> isWritten(changes_.size());
        const bool isWhole = walk(sound_, goOn, [&](std::size_t change) {
            isWritten[change] = true;
            AnnotationChange back{changes_[change].place, present_, annotationOf(present_)};
            back.expected.keywords = changes_[change].annotation.keywords;
            back.expected.Notes1 = changes_[change].annotation.notes1;
            back.expected.Notes2 = changes_[change].annotation.notes2;
            compose(changes_[change].annotation);
            table_.rows().update();
            // As it is stored: a Jet 3 file may have "?" in it.
            reader_.read(back.expected);
            result.undo.push_back(std::move(back));
        });
        for (const auto& [place, change] : sound_) {
            if (isWhole && !isWritten[change]) {
                result.missed.push_back(change);
            }
        }
    }

    const Wanted& sound() const { return sound_; }
    void close() { table_.close(); }

  private:
    template <typename Use>
    bool walk(const Wanted& wanted, const std::function<bool(std::size_t)>& goOn, Use use) {
        jet::Recordset& rows = table_.rows();
        std::size_t done = 0;
        for (rows.moveFirst(); !rows.endOfFile() && done < wanted.size(); rows.moveNext()) {
            const auto found = wanted.find(rows.place());
            if (found == wanted.end()) {
                continue;
            }
            if (holdsAsExpected(reader_, changes_[found->second].expected, present_)) {
                use(found->second);
            }
            ++done;
            if (goOn && !goOn(done)) {
                return false;
            }
        }
        return true;
    }

    void compose(const Annotation& annotation) {
        jet::Recordset& rows = table_.rows();
        rows.setText(fields_.keywords, annotation.keywords);
        rows.setText(fields_.notes1, annotation.notes1);
        rows.setText(fields_.notes2, annotation.notes2);
    }

    ArchiveTable table_;
    RecordReader reader_;
    RecordFields fields_;
    std::span<const AnnotationChange> changes_;
    Wanted sound_;
    base::ScanEntry present_;
};

}  // namespace

AnnotationResult annotate(jet::Engine& engine, const base::ArchiveLocation& archive,
                          std::span<const AnnotationChange> changes,
                          const std::function<bool(std::size_t)>& goOn) {
    Wanted wanted;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        wanted[changes[i].place] = i;
    }
    AnnotationResult result;
    AnnotationWalk walk(engine, archive, changes);
    if (!walk.check(wanted, goOn)) {
        return result;
    }
    for (const auto& [place, change] : wanted) {
        if (!walk.sound().contains(place)) {
            result.missed.push_back(change);
        }
    }
    walk.write(goOn, result);
    walk.close();
    std::ranges::sort(result.missed);
    return result;
}

}  // namespace archive
