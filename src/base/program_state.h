#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/archive_location.h"
#include "base/checked.h"
#include "base/keyword_entry.h"
#include "base/media_info.h"
#include "base/numbered_list.h"
#include "base/scan_entry.h"

namespace base {

/// Everything that lives for the whole run and is shared by the program's modules. main() owns the
/// one instance and hands it on by reference; a test has its own. One thread uses it; any operation
/// that lets pending events run may find it changed afterwards.
struct ProgramState {
    static constexpr int recentCount = 5;

    std::string settingsPath;  ///< where the settings file was when it was last read or written

    std::string archiveFolder;  ///< folder of the current archive, ending in the separator
    std::string archiveName;    ///< its file name; empty: no archive is open
    /// Entries 1 to 5 hold the recent archives; entry 0 is never used.
    std::array<ArchiveLocation, recentCount + 1> recentArchives;

    MediaInfo currentMedia;            ///< the medium being scanned
    NumberedList<ScanEntry> scanList;  ///< entries 1 to scanCount are valid
    Int32 scanCount;
    NumberedList<MediaInfo> mediaList;       ///< the archive's media
    NumberedList<ScanEntry> archiveFolders;  ///< folder rows of the medium last loaded, by level
    NumberedList<ScanEntry> archiveFiles;    ///< file rows of the medium last loaded

    NumberedList<KeywordEntry> archiveKeywords;
    NumberedList<KeywordEntry> archiveNotes;
    std::int64_t keywordCount = 0;
    Int16 noteCount;
    NumberedList<std::int16_t> selectedRecords;  ///< positions, from 1, of the selected rows
    std::string viewMode;  ///< "scan" or "archive": what the record list shows

    ArchiveLocation currentArchive() const { return {archiveFolder, archiveName}; }
};

}  // namespace base
