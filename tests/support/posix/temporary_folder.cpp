#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace support {

namespace {

void require(bool done, const std::string& path) {
    if (!done) {
        throw std::runtime_error(path + ": " + std::generic_category().message(errno));
    }
}

}  // namespace

std::string TemporaryFolder::madeFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "verdolin-XXXXXX").string();
    require(::mkdtemp(pattern.data()) != nullptr, pattern);
    return pattern;
}

void TemporaryFolder::removeAll(const std::string& path) {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::makeSparseFile(std::string_view name, std::uint64_t size) {
    std::string path = makeFile(name);
    require(::truncate(path.c_str(), static_cast<off_t>(size)) == 0, path);
    return path;
}

std::string TemporaryFolder::makeLink(std::string_view name, std::string_view target) {
    std::string path = prepared(name);
    require(::symlink(std::string(target).c_str(), path.c_str()) == 0, path);
    return path;
}

std::string TemporaryFolder::makeFifo(std::string_view name) {
    std::string path = prepared(name);
    require(::mkfifo(path.c_str(), 0600) == 0, path);
    return path;
}

void TemporaryFolder::setModified(std::string_view name, std::int64_t seconds) {
    const std::string path = pathOf(name);
    const timespec times[2] = {{0, UTIME_OMIT}, {static_cast<time_t>(seconds), 0}};
    require(::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, path);
}

void TemporaryFolder::setPermissions(std::string_view name, unsigned mode) {
    const std::string path = pathOf(name);
    require(::chmod(path.c_str(), static_cast<mode_t>(mode)) == 0, path);
}

}  // namespace support
