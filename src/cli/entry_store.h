#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "archive/archive_table.h"
#include "archive/record_rows.h"
#include "scan/scan_destination.h"

namespace cli {

/// The companion's destination of a walk: each entry becomes a row of table `main` at once, so that
/// memory does not grow with them. The rows reach the disk every few seconds, whenever their number
/// has grown by an eighth, and at close(), so that a disk that gets full costs few of them.
class EntryStore : public scan::ScanDestination {
  public:
    /// Told of an entry that is not in the archive as it is on the medium.
    class Observer {
      public:
        virtual ~Observer() = default;
        virtual void entryLeftOut(const base::ScanEntry& entry, const std::string& reason) = 0;
        virtual void sizeCut(const base::ScanEntry& entry) = 0;
    };

    /// Opens the table for reading; nothing is changed before begin().
    EntryStore(jet::Engine& engine, const base::ArchiveLocation& archive, Observer& observer);

    /// Takes the archive for writing. An EngineFailure (ReadOnly, InUse, Indexed) tells of an
    /// archive that cannot take the rows while it still is as it was.
    void begin();

    /// Stores a row, unless a text does not fit its field: the entry is left out then. Any other
    /// failure ends the walk.
    std::int64_t store(const base::ScanEntry& entry, scan::SizeFit fit) override;

    /// All rows are on the medium afterwards.
    void flush() { table_.connection().flush(); }
    void close() { table_.close(); }

    jet::Connection& connection() { return table_.connection(); }
    std::int64_t folders() const { return folders_; }
    std::int64_t files() const { return files_; }
    std::int64_t count() const { return folders_ + files_; }

  private:
    void flushWhenDue();

    archive::ArchiveTable table_;
    archive::RecordWriter writer_;
    Observer& observer_;
    std::int64_t folders_ = 0;
    std::int64_t files_ = 0;
    std::int64_t nextFlush_;
};

}  // namespace cli
