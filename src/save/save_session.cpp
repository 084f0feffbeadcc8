#include "save/save_session.h"

#include "archive/archive_table.h"
#include "archive/media_rows.h"
#include "base/failure.h"
#include "base/message_box.h"
#include "scan/scan_list.h"

namespace save {

std::int64_t SaveSession::entryCount() const { return scan::lastEntryOf(state_.scanList); }

std::string SaveSession::scannedMediaText() const {
    const base::MediaInfo& media = state_.currentMedia;
    return "Scanned Media is: " + media.mediaLabel + "; your name of: " + media.mediaName +
           " is a: " + media.mediaType;
}

std::string SaveSession::currentArchiveText() const {
    return "Current Archive: " + state_.currentArchive().fullPath();
}

void SaveSession::initMedia() {
    archive::ArchiveTable table(engine_, state_.currentArchive(), "media", jet::LockType::ReadOnly);
    jet::Recordset& rows = table.rows();
    const archive::MediaFields fields(rows);
    std::int64_t count = 0;
    for (; !rows.endOfFile(); rows.moveNext()) {
        ++count;
        saveMediaList_.growTo(count);
        saveMediaList_[count] = archive::readMedia(rows, fields);
    }
    table.close();
}

std::string SaveSession::mediumText(std::int64_t number) const {
    const base::MediaInfo& media = saveMediaList_[number];
    return media.mediaName + " (" + media.mediaType + ") " +
           " as MediaID: " + std::to_string(media.mediaId);
}

void SaveSession::requireArchive() const {
    if (!hasCurrentArchive()) {
        throw base::EngineFailure(base::EngineFault::NotFound,
                                  "no archive is open to store the scan in");
    }
}

void SaveSession::saveNew(archive::SaveProgress& progress) {
    requireArchive();
    data_.saveMedia(state_.currentMedia, archive::MediaSave::New, messages_);
    data_.saveRecords(state_.currentMedia, progress);
}

void SaveSession::saveUpdate(std::int64_t number, archive::SaveProgress& progress) {
    requireArchive();
    const base::MediaInfo selected =
        archive::mediaForUpdate(saveMediaList_[number], state_.currentMedia);
    // Whatever was answered, the records are replaced.
    data_.saveMedia(selected, archive::MediaSave::Update, messages_);
    data_.deleteRecords(selected.mediaId);
    data_.adjustRecordPaths(selected);
    data_.saveRecords(selected, progress);
}

void SaveSession::requireSelection() {
    messages_.show({"Media Selection Required",
                    "You have chosen to update an Existing Media's data, you must select the media "
                    "to be updated from the list.",
                    base::MessageButtons::Ok});
}

}  // namespace save
