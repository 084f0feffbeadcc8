#include "archive/media_rows.h"

#include "jet/recordset.h"

namespace archive {

MediaFields::MediaFields(const jet::Recordset& rows)
    : mediaId(rows.field("mediaId")),
      mediaLabel(rows.field("mediaLabel")),
      mediaName(rows.field("mediaName")),
      mediaSize(rows.field("mediaSize")),
      mediaType(rows.field("mediaType")),
      mediaFreeSpace(rows.field("mediaFreeSpace")),
      archiveDate(rows.field("archiveDate")),
      archiveUpdate(rows.field("archiveUpdate")),
      numberFiles(rows.field("numberFiles")) {}

base::MediaInfo readMedia(const jet::Recordset& rows, const MediaFields& fields) {
    base::MediaInfo media;
    media.mediaId = rows.integer(fields.mediaId);
    rows.readText(fields.mediaLabel, media.mediaLabel);
    rows.readText(fields.mediaName, media.mediaName);
    media.mediaSize = rows.integer(fields.mediaSize);
    rows.readText(fields.mediaType, media.mediaType);
    media.mediaFreeSpace = rows.integer(fields.mediaFreeSpace);
    rows.readText(fields.archiveDate, media.archiveDate);
    rows.readText(fields.archiveUpdate, media.archiveUpdate);
    media.numberFiles = rows.integer(fields.numberFiles);
    return media;
}

void addMedia(jet::Recordset& rows, const MediaFields& fields, const base::MediaInfo& media) {
    rows.addNew();
    rows.setInteger(fields.mediaId, media.mediaId);
    rows.setText(fields.mediaLabel, media.mediaLabel);
    rows.setText(fields.mediaName, media.mediaName);
    rows.setInteger(fields.mediaSize, media.mediaSize);
    rows.setText(fields.mediaType, media.mediaType);
    rows.setInteger(fields.mediaFreeSpace, media.mediaFreeSpace);
    rows.setText(fields.archiveDate, media.archiveDate);
    rows.setText(fields.archiveUpdate, media.archiveUpdate);
    rows.setInteger(fields.numberFiles, media.numberFiles);
    rows.update();
}

void updateMedia(jet::Recordset& rows, const MediaFields& fields, const base::MediaInfo& media) {
    rows.setText(fields.archiveUpdate, media.archiveUpdate);
    // The label is written twice, first with the free space, and the free space not at all:
    // archives keep the free space that a medium had when it was first archived. Both writes are
    // meant.
    rows.setInteger(fields.mediaLabel, media.mediaFreeSpace);
    rows.setInteger(fields.numberFiles, media.numberFiles);
    rows.setText(fields.mediaLabel, media.mediaLabel);
    rows.setText(fields.mediaName, media.mediaName);
    rows.setText(fields.mediaType, media.mediaType);
    rows.setInteger(fields.mediaSize, media.mediaSize);
    rows.update();
}

}  // namespace archive
