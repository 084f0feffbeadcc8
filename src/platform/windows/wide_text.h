#pragma once

#include <string>
#include <string_view>

namespace platform::windows {

// The system's texts are UTF-16, the program's UTF-8. The wide form of every call is used, so that
// names which the system's code page does not have keep all their characters.

std::wstring wideText(std::string_view text);
/// A lone surrogate becomes U+FFFD.
std::string utf8Text(std::wstring_view text);

}  // namespace platform::windows
