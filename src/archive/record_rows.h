#pragma once

#include <cstdint>

#include "base/scan_entry.h"

namespace jet {
class Recordset;
}

namespace archive {

/// Positions of the fields of table `main` in an open recordset, found once by their names.
struct RecordFields {
    /// EngineFailure (NotFound) when a field is missing.
    explicit RecordFields(const jet::Recordset& rows);

    int fileName;
    int path;
    int folder;
    int type;
    int size;
    int dateCreated;
    int dateModified;
    int keywords;
    int notes1;
    int notes2;
    int mediaId;
};

/// Stores entries, one at a time, as new rows of an open recordset on table `main`. The recordset
/// must outlive the writer.
class RecordWriter {
  public:
    explicit RecordWriter(jet::Recordset& rows) : rows_(rows), fields_(rows) {}

    /// Stores `entry` as a row of medium `mediaId`; the entry's own id is not looked at, its texts
    /// are stored as they are. A text that does not fit its field, or a row that does not fit a
    /// page, is an EngineFailure (Value); the table is unchanged then and the writer may go on with
    /// the next entry.
    void write(const base::ScanEntry& entry, std::int32_t mediaId);

  private:
    void setFields(const base::ScanEntry& entry, std::int32_t mediaId);

    jet::Recordset& rows_;
    RecordFields fields_;
};

/// Reads rows of table `main`. The recordset, which the caller moves, must outlive the reader.
class RecordReader {
  public:
    explicit RecordReader(const jet::Recordset& rows) : rows_(rows), fields_(rows) {}

    /// Fills every member of `entry` from the current row except `level`, which no table holds; the
    /// memory of its texts is used again. NULL reads as "" and 0.
    void read(base::ScanEntry& entry) const;

  private:
    const jet::Recordset& rows_;
    RecordFields fields_;
};

}  // namespace archive
