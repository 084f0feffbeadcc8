#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "base/file_path.h"

namespace support {

namespace {

namespace fs = std::filesystem;
using base::filePath;

void require(bool done, const std::string& path) {
    if (!done) {
        throw std::runtime_error(path + ": the test cannot write or read this file");
    }
}

}  // namespace

TemporaryFolder::TemporaryFolder() : path_(madeFolder()) {}

TemporaryFolder::~TemporaryFolder() { removeAll(path_); }

std::string TemporaryFolder::pathOf(std::string_view name) const {
    return base::pathText((filePath(path_) / filePath(name)).make_preferred());
}

std::string TemporaryFolder::prepared(std::string_view name) const {
    std::string path = pathOf(name);
    fs::create_directories(filePath(path).parent_path());
    return path;
}

std::string TemporaryFolder::makeFile(std::string_view name, std::string_view content) {
    std::string path = prepared(name);
    std::ofstream file(filePath(path), std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    require(file.good(), path);
    return path;
}

std::string TemporaryFolder::makeFolder(std::string_view name) {
    std::string path = pathOf(name);
    fs::create_directories(filePath(path));
    return path;
}

std::string TemporaryFolder::makeHardLink(std::string_view name, std::string_view existing) {
    std::string path = prepared(name);
    fs::create_hard_link(filePath(pathOf(existing)), filePath(path));
    return path;
}

void TemporaryFolder::remove(std::string_view name) { removeAll(pathOf(name)); }

std::string TemporaryFolder::read(std::string_view name) const {
    const std::string path = pathOf(name);
    std::ifstream file(filePath(path), std::ios::binary);
    require(file.is_open(), path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool TemporaryFolder::exists(std::string_view name) const {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(filePath(pathOf(name)), ignored));
}

}  // namespace support
