#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/media_info.h"
#include "base/scan_entry.h"
#include "search/local_time.h"

// A tiny archive and a table of queries with exactly what each finds in it. Whoever searches, the
// engine, the companion or the window, must find the same.

namespace golden {

/// An entry and the short name by which the table of queries knows it.
struct Entry {
    std::string_view key;
    std::string_view path;
    std::string_view name;
    std::int32_t size = 0;  ///< -2: a folder
    std::string_view modified;
    std::string_view keywords = {};
    std::string_view notes1 = {};
    std::string_view notes2 = {};
};

constexpr std::int32_t folder = -2;

/// "today" of the queries: Saturday, 2026-11-21 12:00:00.
inline search::LocalTime now() { return search::localTime({2026, 11, 21, 12, 0, 0}); }

inline std::vector<base::MediaInfo> media() {
    const auto medium = [](std::int32_t id, const char* label, const char* name, const char* type,
                           const char* update) {
        base::MediaInfo info;
        info.mediaId = id;
        info.mediaLabel = label;
        info.mediaName = name;
        info.mediaType = type;
        info.archiveDate = "03/07/2001 10:00:00";
        info.archiveUpdate = update;
        return info;
    };
    return {medium(1, "CD_HOL01", "Holiday 2001", "CDROM", "03/07/2001 10:00:00"),
            medium(2, "BACKUP12", "Backup 12", "Removable", "11/01/2026 08:30:00"),
            medium(3, "", "Backup 1", "Fixed", "05/05/2019 00:00:00"),
            medium(12, "", "Été à Paris", "Fixed", "")};
}

inline const std::vector<Entry>& entries() {
    static const std::vector<Entry> all{
        // Medium 1
        {"photos", "1:", "photos", folder, "06/01/2004 10:00:00"},
        {"2004", "1:\\photos", "2004", folder, "06/02/2004 10:00:00"},
        {"img1", "1:\\photos\\2004", "IMG_0001.jpg", 2048, "05/31/2004 23:59:59", "holiday, beach"},
        {"img2", "1:\\photos\\2004", "img_0002.JPG", 10240, "06/01/2004 00:00:00", "Holiday"},
        {"strand", "1:\\photos\\2004", "Müller am Strand.jpeg", 2097152, "07/15/2004 12:00:00", "",
         "do not delete", "from Anna"},
        {"mueller", "1:\\photos", "Mu\u0308ller.txt", 0, "01/01/2005 00:00:00"},
        {"strasse", "1:\\photos", "Straße.pdf", 1023, "12/31/2018 23:59:59"},
        {"readme", "1:", "README", 512, "01/01/2019 00:00:00", "", "", "do not delete this either"},
        // Medium 2
        {"films", "2:", "films", folder, "01/01/2019 00:00:00"},
        {"avi", "2:\\films", "holiday.avi", -2147483647 - 1, "05/01/2019 00:00:00"},
        {"mp4", "2:\\films", "Holiday.mp4", 1610612737, "05/31/2019 23:59:59"},
        {"summer", "2:\\films", "our summer holiday.mkv", 1610612736, "06/01/2019 00:00:00"},
        {"bigholiday", "2:\\films", "bigholiday", folder, "12/31/2020 23:59:59"},
        {"strasse2", "2:", "STRASSE.pdf", 1023, "01/01/2021 00:00:00"},
        {"img1copy", "2:", "img_0001.JPG", 2048, "05/31/2004 23:59:59"},
        {"readmetxt", "2:", "readme.txt", 512, "11/20/2026 09:00:00"},
        // Medium 3
        {"holiday", "3:", "Holiday", folder, "02/02/2002 02:02:02"},
        {"tar", "3:\\Holiday", "backup.tar.gz", 104857601, "11/21/2026 08:00:00"},
        {"dot", "3:\\Holiday", ".profile", 100, "not a date"},
        {"img1third", "3:\\Holiday", "img_0001.jpg", 2048, "05/31/2004 23:59:59"},
        {"photo1", "3:\\Holiday", "photo (1).jpg", 5, "08/23/2026 00:00:00"},
        {"dash", "3:\\Holiday", "artist - title.mp3", 6, "08/22/2026 00:00:00"},
        {"wow", "3:\\Holiday", "wow! a=b [x].txt", 7, "01/01/2000 00:00:00"},
        {"quote", "3:\\Holiday", "say \"hi\".txt", 8, "01/01/2000 00:00:00"},
        {"cat", "3:\\Holiday", "cat.txt", 9, "01/01/2000 00:00:00"},
        {"concat", "3:\\Holiday", "concat.txt", 9, "01/01/2000 00:00:00"},
        // Medium 12, in many scripts
        {"ete", "12:", "été", folder, "01/01/1999 00:00:00"},
        {"greek", "12:\\été", "ΟΔΟΣ.txt", 11, "01/01/1999 00:00:00"},
        {"russian", "12:\\été", "Документ.docx", 12, "01/01/1999 00:00:00"},
        {"ka", "12:\\été", "カ.png", 13, "01/01/1999 00:00:00"},
        {"ga", "12:\\été", "ガ.png", 14, "01/01/1999 00:00:00"},
        {"korean", "12:\\été", "한글.txt", 15, "01/01/1999 00:00:00"},
        {"turkish", "12:\\été", "İstanbul ısı.txt", 16, "01/01/1999 00:00:00"},
        {"polish", "12:\\été", "żółw.txt", 17, "01/01/1999 00:00:00"},
        {"hebrew", "12:\\été", "שָׁלוֹם.txt", 18, "01/01/1999 00:00:00"},
        {"arabic", "12:\\été", "مُحَمَّد.txt", 19, "01/01/1999 00:00:00"},
        {"hindi", "12:\\été", "हिन्दी.txt", 20, "01/01/1999 00:00:00"},
        {"thai", "12:\\été", "ภาษาไทย.txt", 21, "01/01/1999 00:00:00"},
        {"chinese", "12:\\été", "写真集.zip", 22, "01/01/1999 00:00:00"},
        {"emoji", "12:\\été", "🎉 party.txt", 23, "01/01/1999 00:00:00"},
    };
    return all;
}

inline std::string wholePath(const Entry& entry) {
    return std::string(entry.path) + "\\" + std::string(entry.name);
}

inline std::string typeOf(const Entry& entry) {
    const std::string_view name = entry.name;
    const auto ends = [&](std::string_view end) { return name.ends_with(end); };
    return entry.size == folder                            ? "Folder"
           : ends(".jpg") || ends(".JPG") || ends(".jpeg") ? "JPEG image"
           : ends(".avi")                                  ? "AVI video"
           : ends(".txt")                                  ? "plain text document"
                                                           : "unknown";
}

inline base::ScanEntry scanEntry(const Entry& entry) {
    base::ScanEntry result;
    result.FileName = entry.name;
    result.path = entry.path;
    result.Folder = entry.size == folder ? "folder" : "file";
    result.Type = typeOf(entry);
    result.Size = entry.size == folder ? 0 : entry.size;
    result.DateCreated = "03/03/2003 03:03:03";
    result.DateModified = entry.modified;
    result.keywords = entry.keywords;
    result.Notes1 = entry.notes1;
    result.Notes2 = entry.notes2;
    result.mediaId = std::stoi(std::string(entry.path));
    return result;
}

}  // namespace golden
