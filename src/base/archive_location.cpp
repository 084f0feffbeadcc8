#include "base/archive_location.h"

namespace base {

ArchiveLocation splitArchivePath(const std::string& fullPath) {
#ifdef _WIN32
    const char* const separators = "\\";
#else
    const char* const separators = "\\/";
#endif
    const std::size_t last = fullPath.find_last_of(separators);
    if (last == std::string::npos) {
        return {{}, fullPath};
    }
    return {fullPath.substr(0, last + 1), fullPath.substr(last + 1)};
}

}  // namespace base
