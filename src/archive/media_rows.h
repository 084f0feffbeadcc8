#pragma once

#include "base/media_info.h"

namespace jet {
class Recordset;
}

namespace archive {

/// Positions of the fields of table `media` in an open recordset, found once by their names.
struct MediaFields {
    /// EngineFailure (NotFound) when a field is missing.
    explicit MediaFields(const jet::Recordset& rows);

    int mediaId;
    int mediaLabel;
    int mediaName;
    int mediaSize;
    int mediaType;
    int mediaFreeSpace;
    int archiveDate;
    int archiveUpdate;
    int numberFiles;
};

/// The current row as a record; its drive letter is empty and its `loaded` flag false, as neither
/// is stored. NULL reads as "" and 0.
base::MediaInfo readMedia(const jet::Recordset& rows, const MediaFields& fields);

/// Stores `media` as a new row.
void addMedia(jet::Recordset& rows, const MediaFields& fields, const base::MediaInfo& media);

/// Rewrites the current row from `media`: everything but its id, its free space and the date on
/// which it was first archived, which keep what they hold.
void updateMedia(jet::Recordset& rows, const MediaFields& fields, const base::MediaInfo& media);

}  // namespace archive
