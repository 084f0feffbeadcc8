#pragma once

#include <cstdint>
#include <string>

namespace base {

/// One file or folder: an entry of the scan list, or a row of table `main` read back.
struct ScanEntry {
    std::string FileName;     ///< name without its path
    std::string path;         ///< media id, ":" and the path of the folder that holds it
    std::string Folder;       ///< "folder" or "file"
    std::string Type;         ///< type description, at most 80 characters
    std::int32_t Size = 0;    ///< bytes; low half minus high half of the 64-bit size; 0 for folders
    std::string DateCreated;  ///< local time, "mm/dd/yyyy hh:nn:ss"
    std::string DateModified;  ///< the same form
    std::string keywords;
    std::string Notes1;
    std::string Notes2;
    std::int32_t mediaId = 0;
    std::int16_t level = 0;  ///< folder depth; set only in the archive's folder list

    friend bool operator==(const ScanEntry&, const ScanEntry&) = default;
};

}  // namespace base
