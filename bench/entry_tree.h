#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

#include "realistic_entries.h"

namespace bench {

/// Makes, below `root`, the folders and files of that many realistic entries. Folders that several
/// of them share are made once.
inline void makeEntryTree(const std::filesystem::path& root, std::size_t entries) {
    namespace fs = std::filesystem;
    for (base::ScanEntry& entry : realisticEntries(entries, 1, 20011)) {
        std::string folder = entry.path.substr(std::min<std::size_t>(2, entry.path.size()));
        std::replace(folder.begin(), folder.end(), '\\', '/');
        const fs::path path = root / fs::path("." + folder) / entry.FileName;
        if (entry.Folder == "folder") {
            fs::create_directories(path);
        } else {
            fs::create_directories(path.parent_path());
            std::ofstream(path).put('x');
        }
    }
}

}  // namespace bench
