#pragma once

#include <string>
#include <string_view>

namespace cli {

/// True for a character that a terminal obeys instead of showing it: control characters, and those
/// that change the direction of a text or hide in it.
bool isHidden(char32_t character);

/// The escape that terminals' users and JSON agree on: "\n", "\r", "\t"; null for all other
/// characters.
const char* shortEscape(char32_t character);

/// `text` as it may go to a terminal and fits one line: hidden characters become "\n", "\t", "\r",
/// "\x1b", "\u202e"; bytes that are not UTF-8 become U+FFFD. All else stays.
std::string visibleText(std::string_view text);
void appendVisible(std::string_view text, std::string& result);

/// The columns that `text` takes on a terminal: two for the wide characters of East Asian scripts
/// and for pictures, none for combining marks.
int displayWidth(std::string_view text);

/// `text`, or as much of its front as fits `columns` with "..." behind it.
std::string cutToWidth(std::string_view text, int columns);

}  // namespace cli
