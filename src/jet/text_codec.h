#pragma once

#include <string>
#include <string_view>

#include "jet/format.h"

namespace jet {

// Texts of a database file. Jet 3 stores one byte a character in code page 1252. Jet 4 stores
// UTF-16 little-endian, or a compressed form that begins with FF FE: bytes stand for U+0001 to
// U+00FF, a byte 00 switches to UTF-16 units and a byte 00 where a unit would begin switches back.

/// Appends the text as UTF-8. Odd bytes and lone surrogates, which real files hold, never fail.
void appendDecodedText(const Format& format, std::string_view stored, std::string& text);

/// Appends the stored form of a UTF-8 text. In Jet 4 it is compressed when that is allowed, the
/// text has at least three characters and none lies outside U+0001 to U+00FF. The one kind of text
/// that the format cannot hold (it begins with U+FEFF and has a unit whose low byte is 00) is a
/// Value failure.
void appendEncodedText(const Format& format, std::string_view text, bool mayCompress,
                       std::string& stored);

/// Length of a text in the unit in which the format limits it: UTF-16 units in Jet 4, bytes of code
/// page 1252 in Jet 3, given its stored form.
std::size_t storedCharacters(const Format& format, std::string_view stored);

/// The plain form in which names stand in table definitions and property blocks.
std::string encodedName(const Format& format, std::string_view name);
std::string decodedName(const Format& format, std::string_view stored);

}  // namespace jet
