#pragma once

#include <optional>
#include <string>
#include <string_view>

// The text side of a settings file: sections in square brackets with "key=value" lines. Pure
// functions over the bytes of a whole file, so that the same rules serve every machine.
//
// A line whose first visible character is ";" is a comment. Section and key names ignore case and
// the blanks around them. Where a section or a key occurs more than once, the first match counts; a
// key that the first section of a name lacks is looked for in the later ones of that name. Text is
// UTF-8, with or without a byte order mark; bytes that are not are read as code page 1252. A file
// that begins with the byte order mark of UTF-16 (little-endian) is read and written in that form.

namespace platform {

/// The value of `key` in `section`, without surrounding blanks and without one pair of quotation
/// marks (single or double) around it; none where section or key is missing.
std::optional<std::string> profileValue(std::string_view fileText, std::string_view section,
                                        std::string_view key);

/// The file's text with `key` set to `value` and every other byte as it was: the value of an
/// existing line is replaced, else a line is added behind the last one of the section, else the
/// section is added at the end. Line ends are those of the file ("\n" in a new one). A value that
/// would lose blanks or quotation marks on the way back is written in quotation marks. None when
/// the names or the value cannot stand in such a file (they hold a line end or a NUL), or when the
/// file's own bytes cannot be kept (broken UTF-16).
std::optional<std::string> withProfileValue(std::string_view fileText, std::string_view section,
                                            std::string_view key, std::string_view value);

/// False when the names or the value cannot stand in such a file.
bool canStandInProfile(std::string_view section, std::string_view key, std::string_view value);

/// A value as it is written: in quotation marks where it would lose blanks or its own marks on the
/// way back.
std::string profileForm(std::string_view value);

}  // namespace platform
