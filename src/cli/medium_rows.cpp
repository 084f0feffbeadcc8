#include "cli/medium_rows.h"

#include "archive/archive_table.h"
#include "archive/media_rows.h"
#include "cli/row_filter.h"

namespace cli {
namespace {

/// Goes to the first row of that id; false where there is none.
bool moveTo(jet::Recordset& rows, const archive::MediaFields& fields, std::int32_t mediaId) {
    while (!rows.endOfFile() && rows.integer(fields.mediaId) != mediaId) {
        rows.moveNext();
    }
    return !rows.endOfFile();
}

}  // namespace

std::optional<base::MediaInfo> MediumRows::find(std::int32_t mediaId) const {
    archive::ArchiveTable table(engine_, archive_, "media", jet::LockType::ReadOnly);
    const archive::MediaFields fields(table.rows());
    std::optional<base::MediaInfo> medium;
    if (moveTo(table.rows(), fields, mediaId)) {
        medium = archive::readMedia(table.rows(), fields);
    }
    table.close();
    return medium;
}

std::int64_t MediumRows::countAnew(std::int32_t mediaId) const {
    archive::ArchiveTable table(engine_, archive_, "main", jet::LockType::ReadOnly);
    table.rows().setFilter(mediumFilter(mediaId));
    std::int64_t count = 0;
    for (; !table.rows().endOfFile(); table.rows().moveNext()) {
        ++count;
    }
    setNumberFiles(mediaId, count);
    table.close();
    return count;
}

void MediumRows::setNumberFiles(std::int32_t mediaId, std::int64_t numberFiles) const {
    archive::ArchiveTable table(engine_, archive_, "media");
    const archive::MediaFields fields(table.rows());
    if (moveTo(table.rows(), fields, mediaId)) {
        table.rows().setInteger(fields.numberFiles, numberFiles);
        table.rows().update();
    }
    table.close();
}

}  // namespace cli
