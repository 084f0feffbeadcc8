#pragma once

#include <cstdint>

#include "platform/posix/folder_contents.h"

namespace platform::posix {

/// What the system knows of one name, links not followed.
struct FileStatus {
    int errorNumber = 0;  ///< not 0: the system refused, and nothing else here counts
    FolderEntry entry;
    std::uint64_t device = 0;
    bool mountRoot = false;  ///< another mount begins here, as far as the system tells
};

/// Asks about `name` in an open folder.
FileStatus statusOf(int folderDescriptor, const char* name);
/// Asks about an open file or folder itself.
FileStatus statusOf(int descriptor);

}  // namespace platform::posix
