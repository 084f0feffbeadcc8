#pragma once

#include <cstdint>
#include <string>

namespace base {

/// What the program knows of one medium: of the one being scanned, or of one row of table `media`.
struct MediaInfo {
    std::int32_t mediaId = 0;    ///< the medium's number within its archive
    std::string driveLetter;     ///< as the platform reports it: upper case, no colon; never stored
    std::string mediaLabel;      ///< volume label, may be empty
    std::string mediaName;       ///< the name the user gave the medium
    std::int32_t mediaSize = 0;  ///< total size, whole Mb (1 Mb = 1,048,576 bytes)
    std::string mediaType;       ///< "Removable", "Fixed", "Remote", "CDROM", "RAMDisk", "UnKnown"
    std::int32_t mediaFreeSpace = 0;  ///< free space, whole Mb
    std::string archiveDate;          ///< when the medium was first archived, general date text
    std::string archiveUpdate;        ///< when its data was last replaced, general date text
    std::int32_t numberFiles = 0;     ///< records of the medium in table `main`
    bool loaded = false;              ///< in the media list: folders and files have been read

    friend bool operator==(const MediaInfo&, const MediaInfo&) = default;
};

}  // namespace base
