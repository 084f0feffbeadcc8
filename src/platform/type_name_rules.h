#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The longest type description, in characters (UTF-16 units).
constexpr std::size_t longestTypeName = 80;

/// What stands behind the last "." of a file's name; empty where there is none, where only a
/// leading
/// "." is, and where it holds a blank and so belongs to the name.
std::string_view extensionOf(std::string_view name);

/// The type description of a file whose type nobody knows: its extension in upper case followed by
/// " File", or "File" without an extension.
std::string extensionTypeName(std::string_view name);

}  // namespace platform
