#include "archive/record_rows.h"

#include "jet/recordset.h"

namespace archive {

RecordFields::RecordFields(const jet::Recordset& rows)
    : fileName(rows.field("FileName")),
      path(rows.field("path")),
      folder(rows.field("Folder")),
      type(rows.field("Type")),
      size(rows.field("Size")),
      dateCreated(rows.field("DateCreated")),
      dateModified(rows.field("DateModified")),
      keywords(rows.field("keywords")),
      notes1(rows.field("Notes1")),
      notes2(rows.field("Notes2")),
      mediaId(rows.field("mediaId")) {}

void RecordWriter::write(const base::ScanEntry& entry, std::int32_t mediaId) {
    rows_.addNew();
    try {
        setFields(entry, mediaId);
        rows_.update();
    } catch (...) {
        rows_.cancelUpdate();
        throw;
    }
}

void RecordWriter::setFields(const base::ScanEntry& entry, std::int32_t mediaId) {
    rows_.setText(fields_.fileName, entry.FileName);
    rows_.setText(fields_.path, entry.path);
    rows_.setText(fields_.folder, entry.Folder);
    rows_.setText(fields_.type, entry.Type);
    rows_.setInteger(fields_.size, entry.Size);
    rows_.setText(fields_.dateCreated, entry.DateCreated);
    rows_.setText(fields_.dateModified, entry.DateModified);
    rows_.setText(fields_.keywords, entry.keywords);
    rows_.setText(fields_.notes1, entry.Notes1);
    rows_.setText(fields_.notes2, entry.Notes2);
    rows_.setInteger(fields_.mediaId, mediaId);
}

void RecordReader::read(base::ScanEntry& entry) const {
    entry.mediaId = rows_.integer(fields_.mediaId);
    rows_.readText(fields_.fileName, entry.FileName);
    rows_.readText(fields_.path, entry.path);
    rows_.readText(fields_.folder, entry.Folder);
    rows_.readText(fields_.type, entry.Type);
    entry.Size = rows_.integer(fields_.size);
    rows_.readText(fields_.dateCreated, entry.DateCreated);
    rows_.readText(fields_.dateModified, entry.DateModified);
    rows_.readText(fields_.keywords, entry.keywords);
    rows_.readText(fields_.notes1, entry.Notes1);
    rows_.readText(fields_.notes2, entry.Notes2);
}

}  // namespace archive
