#pragma once

#include <string>

namespace base {

/// Where an archive lies: its folder, ending in the separator, and its file name. Both empty: none.
struct ArchiveLocation {
    std::string folder;
    std::string name;

    std::string fullPath() const { return folder + name; }

    friend bool operator==(const ArchiveLocation&, const ArchiveLocation&) = default;
};

/// Splits a full path at its last separator: "\" everywhere, and on machines whose separator is "/"
/// the last of either. A path without a separator gives an empty folder.
ArchiveLocation splitArchivePath(const std::string& fullPath);

}  // namespace base
