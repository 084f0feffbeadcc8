#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Rules for the paths and names that a walk sees, as pure functions. A walk's path has the form
// "d:\dir\sub\name" on every machine.

namespace platform {

/// The lower-case letter of a path that begins with a letter and a colon; none otherwise.
std::optional<char> driveLetterOf(std::string_view path);

/// A walk's path taken apart: the folder with its final "\" and the last name behind it.
struct SplitPath {
    std::string_view folder;
    std::string_view name;
};
SplitPath splitPath(std::string_view path);

/// The names between the separators of a walk's path, without the drive; empty names are left out.
/// The views point into `path`.
std::vector<std::string_view> pathComponents(std::string_view path);

/// True when a file pattern ("*" any run, "?" any one character, case ignored) takes in `name`. "*"
/// and "*.*" take in every name, as they always have.
bool matchesPattern(std::string_view name, std::string_view pattern);

/// True when a name of a machine with "/" paths reads the same in a walk: valid UTF-8 without "\".
bool isPlainName(std::string_view nativeName);

/// The form in which such a name is shown and stored: "\" as U+FF3C, bytes that are not valid UTF-8
/// read as code page 1252.
std::string shownName(std::string_view nativeName);

/// The native names that are shown as `shown`, the likeliest first: the same bytes, then with "\"
/// for every U+FF3C, then both in code page 1252 where all characters exist there.
std::vector<std::string> nativeNames(std::string_view shown);

/// A name in which the system's device manager wrote bytes as "\x20": the bytes themselves.
std::string withoutEscapes(std::string_view name);

/// `root` (a native folder, "/" separators) followed by the names of a walk's path, each in its
/// likeliest native form.
std::string nativePath(std::string_view root, std::string_view path);

}  // namespace platform
