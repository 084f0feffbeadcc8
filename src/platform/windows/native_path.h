#pragma once

#include <string>
#include <string_view>

namespace platform::windows {

/// A path of this machine as its calls take it: full, with "\" between names, and in the form
/// without a limit of 260 characters where it is that long.
std::wstring nativePath(std::string_view path);

/// A full path with "\" between names in the form that is taken as it stands: of any length, and
/// with names that end in a blank or a dot or are those of devices, as other systems leave them on
/// media.
std::wstring verbatimPath(std::wstring_view fullPath);

/// The full path of a folder, which need not exist; without a final separator, unless it is a
/// root's.
std::wstring fullFolderPath(std::string_view folder);

}  // namespace platform::windows
