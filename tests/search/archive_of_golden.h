#pragma once

#include "archive/archive_table.h"
#include "archive/media_rows.h"
#include "archive/record_rows.h"
#include "tests/search/golden_archive.h"

namespace support {

/// Stores the golden archive's media and entries in an archive that is there already.
inline void storeGoldenArchive(jet::Engine& engine, const base::ArchiveLocation& archive) {
    archive::ArchiveTable media(engine, archive, "media");
    const archive::MediaFields fields(media.rows());
    for (const base::MediaInfo& medium : golden::media()) {
        archive::addMedia(media.rows(), fields, medium);
    }
    media.close();
    archive::ArchiveTable main(engine, archive, "main");
    archive::RecordWriter writer(main.rows());
    for (const golden::Entry& entry : golden::entries()) {
        const base::ScanEntry row = golden::scanEntry(entry);
        writer.write(row, row.mediaId);
    }
    main.close();
}

}  // namespace support
