#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The one module that converts between the encodings the program meets. Text is UTF-8 in memory,
// UTF-16 little-endian in Jet 4 files and code page 1252 in Jet 3 files.

namespace base {

/// True when `bytes` is well-formed UTF-8 (no surrogates, no overlong forms).
bool isUtf8(std::string_view bytes);

/// UTF-8 to UTF-16. A malformed sequence gives U+FFFD for each byte that cannot be used.
std::u16string utf16FromUtf8(std::string_view text);
/// Appends to `units`; the same rules.
void appendUtf16FromUtf8(std::string_view text, std::u16string& units);

/// UTF-16 to UTF-8. A lone surrogate, which real files hold, becomes U+FFFD.
std::string utf8FromUtf16(std::u16string_view units);
void appendUtf8FromUtf16(std::u16string_view units, std::string& text);

/// Appends one code point as UTF-8 (U+FFFD for a surrogate or anything above U+10FFFF).
void appendUtf8(char32_t codePoint, std::string& text);

/// Code page 1252 to UTF-8. The five undefined bytes become the control characters of the same
/// value, as the system's own conversion does, so that every byte survives the way back.
std::string utf8FromCp1252(std::string_view bytes);
void appendUtf8FromCp1252(std::string_view bytes, std::string& text);

/// UTF-8 to code page 1252; a character outside it becomes "?".
std::string cp1252FromUtf8(std::string_view text);
void appendCp1252FromUtf8(std::string_view text, std::string& bytes);

/// Latin-1 (U+0000 to U+00FF, one byte each) to UTF-8.
void appendUtf8FromLatin1(std::string_view bytes, std::string& text);

/// Length in UTF-16 units, the unit in which the program counts characters of a text field.
std::size_t utf16Length(std::string_view text);

/// At most `units` UTF-16 units from the front of `text`, never half a character.
std::string_view firstUtf16Units(std::string_view text, std::size_t units);

/// `text` without the blanks (U+0020 alone) at either end.
std::string_view trimmedBlanks(std::string_view text);

/// Lower-cases for a comparison that ignores case, as the database engine's does: every letter of
/// Latin, Greek and Cyrillic with a simple one-to-one mapping (so not the dotted capital I, whose
/// small letter belongs to the plain one), and the final sigma, which becomes a sigma as every
/// capital one does. Other characters stay, rare letters of phonetic notation among them.
char32_t foldCase(char32_t codePoint);
/// True when two UTF-8 texts are equal but for case.
bool equalIgnoringCase(std::string_view left, std::string_view right);
/// The text with every character folded by foldCase().
std::string foldedCase(std::string_view text);

/// Decodes the character that starts at `position` and moves `position` past it. A malformed byte
/// gives U+FFFD and moves by one.
char32_t nextCodePoint(std::string_view text, std::size_t& position);

}  // namespace base
