#include "platform/file_private_profile.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "base/file_path.h"
#include "base/text.h"
#include "platform/profile_text.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

/// The whole file; none when it cannot be read. What is no regular file is not opened at all: a
/// pipe would make the program wait.
std::optional<std::string> contentOf(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) {
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) {
        return std::nullopt;
    }
    const std::streamoff size = file.tellg();
    std::string content(static_cast<std::size_t>(size < 0 ? 0 : size), '\0');
    file.seekg(0);
    if (size < 0 || !file.read(content.data(), size)) {
        return std::nullopt;
    }
    return content;
}

bool writeWhole(const fs::path& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    return file.good();
}

/// The file that a path finally names, links followed, so that a link is not replaced by a file.
fs::path finalTarget(const fs::path& path) {
    std::error_code error;
    fs::path target = fs::canonical(path, error);
    return error ? path : target;
}

bool replaceFile(const fs::path& target, std::string_view content) {
    fs::path temporary = target;
    temporary += ".new";
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    bool done = writeWhole(temporary, content);
    if (done && fs::exists(old)) {
        fs::permissions(temporary, old.permissions(), error);
        done = !error;
    }
    if (done) {
        fs::rename(temporary, target, error);
        done = !error;
    }
    if (!done) {
        fs::remove(temporary, error);
    }
    return done;
}

}  // namespace

std::string FilePrivateProfile::getString(std::string_view section, std::string_view key,
                                          std::string_view defaultValue, std::size_t bufferSize,
                                          const std::string& filePath) {
    std::string value(defaultValue);
    if (const auto content = contentOf(base::filePath(filePath))) {
        value = profileValue(*content, section, key).value_or(value);
    }
    return std::string(base::firstUtf16Units(value, bufferSize == 0 ? 0 : bufferSize - 1));
}

bool FilePrivateProfile::writeString(std::string_view section, std::string_view key,
                                     std::string_view value, const std::string& filePath) {
    const fs::path target = finalTarget(base::filePath(filePath));
    std::error_code error;
    std::string old;
    if (fs::exists(fs::symlink_status(target, error))) {
        // A file that is there but cannot be read must not be taken for an empty one.
        auto content = contentOf(target);
        if (!content) {
            return false;
        }
        old = std::move(*content);
    }
    const auto changed = withProfileValue(old, section, key, value);
    return changed && replaceFile(target, *changed);
}

}  // namespace platform
