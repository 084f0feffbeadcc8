#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
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

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "verdolin-XXXXXX").string();
    require(::mkdtemp(pattern.data()) != nullptr, pattern);
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::pathOf(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::string TemporaryFolder::prepared(std::string_view name) const {
    std::string path = pathOf(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    return path;
}

std::string TemporaryFolder::makeFile(std::string_view name, std::string_view content) {
    std::string path = prepared(name);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    require(file.good(), path);
    return path;
}

std::string TemporaryFolder::makeFolder(std::string_view name) {
    std::string path = pathOf(name);
    std::filesystem::create_directories(path);
    return path;
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

std::string TemporaryFolder::makeHardLink(std::string_view name, std::string_view existing) {
    std::string path = prepared(name);
    require(::link(pathOf(existing).c_str(), path.c_str()) == 0, path);
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

void TemporaryFolder::remove(std::string_view name) { std::filesystem::remove_all(pathOf(name)); }

std::string TemporaryFolder::read(std::string_view name) const {
    const std::string path = pathOf(name);
    std::ifstream file(path, std::ios::binary);
    require(file.is_open(), path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool TemporaryFolder::exists(std::string_view name) const {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(pathOf(name), ignored));
}

}  // namespace support
