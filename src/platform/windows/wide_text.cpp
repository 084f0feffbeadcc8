#include "platform/windows/wide_text.h"

#include "base/text.h"

namespace platform::windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring wideText(std::string_view text) {
    const std::u16string units = base::utf16FromUtf8(text);
    return {units.begin(), units.end()};
}

std::string utf8Text(std::wstring_view text) {
    return base::utf8FromUtf16(std::u16string(text.begin(), text.end()));
}

}  // namespace platform::windows
