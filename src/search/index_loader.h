#pragma once

#include <cstdint>
#include <memory>

#include "archive/archive_table.h"
#include "archive/record_rows.h"
#include "base/archive_location.h"
#include "search/budget.h"
#include "search/index.h"
#include "search/index_builder.h"

namespace jet {
class Engine;
}

namespace search {

/// Reads an archive into an index, in steps, so that the caller can show progress, let events run,
/// or give up by dropping the loader. The archive is open, for reading, from construction to the
/// last step; entries that others store or delete meanwhile may be seen or not.
///
/// Used by one thread, the one that uses the engine. The failures of the engine pass: such a loader
/// is of no use any more.
class IndexLoader {
  public:
    /// Opens the archive and reads its media. `engine` must outlive this.
    IndexLoader(jet::Engine& engine, const base::ArchiveLocation& archive);

    /// Reads on, until all is read or the budget is spent; true when all is read.
    bool run(const Budget& budget);
    /// Entries read so far, and about how many there are.
    std::int64_t done() const { return done_; }
    std::int64_t expected() const { return expected_; }
    /// The index, once run() has been true. It is the caller's alone.
    std::shared_ptr<Index> takeIndex() { return std::move(index_); }

  private:
    void readMedia(jet::Engine& engine, const base::ArchiveLocation& archive);

    archive::ArchiveTable table_;
    archive::RecordReader reader_;
    std::int64_t expected_ = 0;
    std::int64_t done_ = 0;
    IndexBuilder builder_;
    base::ScanEntry entry_;
    std::shared_ptr<Index> index_;
};

/// The whole of an archive at one go.
std::shared_ptr<const Index> loadIndex(jet::Engine& engine, const base::ArchiveLocation& archive);

}  // namespace search
