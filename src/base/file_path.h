#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Paths are UTF-8 texts in the program. The library would take a plain text for one in the system's
// code page, which on some machines is not UTF-8.

namespace base {

inline std::filesystem::path filePath(std::string_view path) {
    return std::u8string(path.begin(), path.end());
}

inline std::string pathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace base
