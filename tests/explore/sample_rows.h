#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "base/media_info.h"
#include "base/scan_entry.h"

namespace support {

inline base::MediaInfo medium(std::int32_t id, std::string name, std::string label,
                              std::string type = "CDROM") {
    base::MediaInfo medium;
    medium.mediaId = id;
    medium.mediaName = std::move(name);
    medium.mediaLabel = std::move(label);
    medium.mediaType = std::move(type);
    return medium;
}

/// The id of the medium is the number at the head of the path.
inline base::ScanEntry record(std::string kind, std::string path, std::string name) {
    base::ScanEntry entry;
    entry.mediaId = std::stoi(path);
    entry.Folder = std::move(kind);
    entry.path = std::move(path);
    entry.FileName = std::move(name);
    return entry;
}

inline base::ScanEntry folder(std::string path, std::string name) {
    base::ScanEntry entry = record("folder", std::move(path), std::move(name));
    entry.Type = "Folder";
    return entry;
}

inline base::ScanEntry file(std::string path, std::string name) {
    base::ScanEntry entry = record("file", std::move(path), std::move(name));
    entry.Type = "JPEG image";
    entry.DateCreated = "07/14/2003 18:05:11";
    entry.DateModified = "07/14/2003 18:05:12";
    return entry;
}

}  // namespace support
