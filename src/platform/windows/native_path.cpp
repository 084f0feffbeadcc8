#include "platform/windows/native_path.h"

#include <algorithm>

#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

namespace {

/// From here on the calls want the other form; new folders leave room for a short file name.
constexpr std::size_t shortPathEnd = MAX_PATH - 12;

constexpr std::wstring_view verbatimMark = L"\\\\?\\";

std::wstring fullPath(std::wstring path) {
    std::ranges::replace(path, L'/', L'\\');
    if (path.empty() || path.starts_with(verbatimMark)) {
        return path;
    }
    const DWORD room = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(room, L'\0');
    const DWORD length = ::GetFullPathNameW(path.c_str(), room, full.data(), nullptr);
    if (length == 0 || length >= room) {
        return path;
    }
    full.resize(length);
    return full;
}

}  // namespace

std::wstring verbatimPath(std::wstring_view fullPath) {
    if (fullPath.starts_with(verbatimMark)) {
        return std::wstring(fullPath);
    }
    if (fullPath.starts_with(L"\\\\")) {
        return std::wstring(verbatimMark).append(L"UNC").append(fullPath.substr(1));
    }
    return std::wstring(verbatimMark).append(fullPath);
}

std::wstring nativePath(std::string_view path) {
    const std::wstring full = fullPath(wideText(path));
    return full.size() < shortPathEnd ? full : verbatimPath(full);
}

std::wstring fullFolderPath(std::string_view folder) {
    std::wstring full = fullPath(wideText(folder));
    while (full.size() > 3 && full.back() == L'\\') {
        full.pop_back();
    }
    return full;
}

}  // namespace platform::windows
