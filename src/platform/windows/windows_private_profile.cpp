#include "platform/windows/windows_private_profile.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/text.h"
#include "platform/profile_text.h"
#include "platform/windows/handle.h"
#include "platform/windows/native_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

namespace {

constexpr std::string_view utf16Mark = "\xFF\xFE";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// Settings files are small; what is larger than this is none.
constexpr DWORD largestFile = 16 * 1024 * 1024;

Handle opened(const std::wstring& path, DWORD access, DWORD disposition) {
    return Handle(::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// The whole file; none when it cannot be read.
std::optional<std::string> contentOf(const std::wstring& path) {
    const Handle file = opened(path, GENERIC_READ, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!file.isOpen() || ::GetFileSizeEx(file.get(), &size) == FALSE ||
        size.QuadPart > largestFile) {
        return std::nullopt;
    }
    std::string content(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD got = 0;
    if (::ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &got, nullptr) ==
        FALSE) {
        return std::nullopt;
    }
    content.resize(got);
    return content;
}

bool writeWhole(const std::wstring& path, std::string_view content) {
    const Handle file = opened(path, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD done = 0;
    return file.isOpen() &&
           ::WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &done,
                       nullptr) != FALSE &&
           done == content.size();
}

bool isThere(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

bool isUtf16(std::string_view content) { return content.starts_with(utf16Mark); }

/// True when the file is in a form that the system's service would misread.
bool isForeign(std::string_view content) {
    return !isUtf16(content) &&
           (content.starts_with(utf8Mark) || (!isAscii(content) && base::isUtf8(content)));
}

/// True when the system's code page has every character of `text`.
bool isInCodePage(std::string_view text) {
    if (isAscii(text)) {
        return true;
    }
    const std::wstring wide = wideText(text);
    // Of code page UTF-8 the question may not be asked, nor need it be.
    if (::GetACP() == CP_UTF8) {
        return true;
    }
    BOOL isLost = FALSE;
    const int length =
        ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(),
                              static_cast<int>(wide.size()), nullptr, 0, nullptr, &isLost);
    return length > 0 && isLost == FALSE;
}

std::wstring fromCodePage(std::string_view bytes) {
    const auto count = static_cast<int>(bytes.size());
    const int length = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(std::max(length, 0)), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, text.data(), length);
    return text;
}

/// Makes a file in the system's code page (or a new one) one in UTF-16.
bool becomeUtf16(const std::wstring& path, std::string_view content) {
    std::string bytes(utf16Mark);
    for (const wchar_t unit : fromCodePage(content)) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return writeWhole(path, bytes);
}

bool fitsService(const std::wstring& path) { return path.size() < MAX_PATH; }

}  // namespace

std::string WindowsPrivateProfile::getString(std::string_view section, std::string_view key,
                                             std::string_view defaultValue, std::size_t bufferSize,
                                             const std::string& filePath) {
    const std::wstring path = nativePath(filePath);
    const auto content = contentOf(path);
    if (!content || bufferSize == 0 || !fitsService(path) || isForeign(*content)) {
        return files_.getString(section, key, defaultValue, bufferSize, filePath);
    }
    std::vector<wchar_t> buffer(bufferSize);
    const DWORD length = ::GetPrivateProfileStringW(
        wideText(section).c_str(), wideText(key).c_str(), wideText(defaultValue).c_str(),
        buffer.data(), static_cast<DWORD>(buffer.size()), path.c_str());
    std::wstring_view value(buffer.data(), length);
    // The buffer may end in the middle of a character of two units.
    if (!value.empty() && IS_HIGH_SURROGATE(value.back())) {
        value.remove_suffix(1);
    }
    return utf8Text(value);
}

bool WindowsPrivateProfile::writeString(std::string_view section, std::string_view key,
                                        std::string_view value, const std::string& filePath) {
    const std::wstring path = nativePath(filePath);
    const auto content = isThere(path) ? contentOf(path) : std::optional<std::string>("");
    // What is there but cannot be read must not be taken for an empty file.
    if (!content || !canStandInProfile(section, key, value)) {
        return false;
    }
    if (!fitsService(path) || isForeign(*content)) {
        return files_.writeString(section, key, value, filePath);
    }
    const std::string line = std::string(section) + std::string(key) + std::string(value);
    if (!isUtf16(*content) && !isInCodePage(line) && !becomeUtf16(path, *content)) {
        return false;
    }
    return ::WritePrivateProfileStringW(wideText(section).c_str(), wideText(key).c_str(),
                                        wideText(profileForm(value)).c_str(), path.c_str()) != 0;
}

}  // namespace platform::windows
