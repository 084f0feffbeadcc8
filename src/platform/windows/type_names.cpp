#include "platform/windows/type_names.h"

#include <algorithm>
#include <iterator>

#include "platform/type_name_rules.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

namespace {

static_assert(sizeof(SHFILEINFOW::szTypeName) == longestTypeName * sizeof(wchar_t));

std::string asked(const std::wstring& path, DWORD attributes, UINT flags) {
    SHFILEINFOW facts{};
    ::SHGetFileInfoW(path.c_str(), attributes, &facts, sizeof facts, SHGFI_TYPENAME | flags);
    return utf8Text({facts.szTypeName, std::size(facts.szTypeName)});
}

std::wstring_view lastName(std::wstring_view path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

/// The shell knows only paths of the old length, and cuts blanks and dots off the end of names.
bool isPathForShell(std::wstring_view path) {
    return path.size() < MAX_PATH && !path.ends_with(L' ') && !path.ends_with(L'.');
}

std::string askedFor(const std::wstring& path, DWORD attributes) {
    return isPathForShell(path)
               ? asked(path, 0, 0)
               : asked(std::wstring(lastName(path)), attributes, SHGFI_USEFILEATTRIBUTES);
}

/// What of a name decides its type: from the last "." on, in small letters.
std::wstring extensionKey(std::wstring_view path) {
    const std::wstring_view name = lastName(path);
    std::wstring key(name.substr(std::min(name.find_last_of(L'.'), name.size())));
    ::CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

}  // namespace

TypeNames::TypeNames()
    : shellIsReady_(
          SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {
}

TypeNames::~TypeNames() {
    if (shellIsReady_) {
        ::CoUninitialize();
    }
}

std::string TypeNames::of(const std::wstring& fullPath, DWORD attributes) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return askedFor(fullPath, attributes);
    }
    // Hardly a tree has as many extensions; one that has does not fill the memory with them.
    constexpr std::size_t mostRemembered = 8192;
    if (byExtension_.size() >= mostRemembered) {
        byExtension_.clear();
    }
    const auto [known, isNew] = byExtension_.try_emplace(extensionKey(fullPath));
    if (isNew) {
        known->second = askedFor(fullPath, attributes);
    }
    return known->second;
}

}  // namespace platform::windows
