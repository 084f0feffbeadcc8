#include "cli/visible_text.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "base/text.h"

namespace cli {
namespace {

struct Range {
    char32_t first;
    char32_t last;

    bool holds(char32_t character) const { return first <= character && character <= last; }
};

template <std::size_t Count>
bool anyHolds(const std::array<Range, Count>& ranges, char32_t character) {
    for (const Range& range : ranges) {
        if (range.holds(character)) {
            return true;
        }
    }
    return false;
}

// The joiners U+200C and U+200D are not among them: Persian names and composed pictures need them.
constexpr std::array<Range, 9> hiddenRanges{{{0x00, 0x1F},
                                             {0x7F, 0x9F},
                                             {0x200B, 0x200B},
                                             {0x200E, 0x200F},
                                             {0x2028, 0x202E},
                                             {0x2060, 0x206F},
                                             {0xFEFF, 0xFEFF},
                                             {0xFFF9, 0xFFFB},
                                             {0xE0000, 0xE007F}}};
constexpr std::array<Range, 6> combiningRanges{{{0x0300, 0x036F},
                                                {0x0483, 0x0489},
                                                {0x0591, 0x05BD},
                                                {0x064B, 0x065F},
                                                {0x20D0, 0x20FF},
                                                {0xFE00, 0xFE0F}}};
constexpr std::array<Range, 8> wideRanges{{{0x1100, 0x115F},
                                           {0x2E80, 0xA4CF},
                                           {0xAC00, 0xD7A3},
                                           {0xF900, 0xFAFF},
                                           {0xFE30, 0xFE6F},
                                           {0xFF00, 0xFF60},
                                           {0x1F300, 0x1FAFF},
                                           {0x20000, 0x3FFFD}}};

void appendEscape(char32_t character, std::string& result) {
    if (const char* known = shortEscape(character)) {
        result += known;
        return;
    }
    char escape[12];
    std::snprintf(escape, sizeof escape, character <= 0xFF ? "\\x%02x" : "\\u%04x",
                  static_cast<unsigned>(character));
    result += escape;
}

int widthOf(char32_t character) {
    if (character < 0x300) {
        return 1;
    }
    if (anyHolds(combiningRanges, character)) {
        return 0;
    }
    return anyHolds(wideRanges, character) ? 2 : 1;
}

}  // namespace

const char* shortEscape(char32_t character) {
    switch (character) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return nullptr;
    }
}

bool isHidden(char32_t character) {
    // Most characters of most names need no look at the table.
    if (character >= 0x20 && character < 0x7F) {
        return false;
    }
    return anyHolds(hiddenRanges, character);
}

void appendVisible(std::string_view text, std::string& result) {
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = base::nextCodePoint(text, position);
        if (isHidden(character)) {
            appendEscape(character, result);
        } else {
            base::appendUtf8(character, result);
        }
    }
}

std::string visibleText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    appendVisible(text, result);
    return result;
}

int displayWidth(std::string_view text) {
    int width = 0;
    for (std::size_t position = 0; position < text.size();) {
        width += widthOf(base::nextCodePoint(text, position));
    }
    return width;
}

std::string cutToWidth(std::string_view text, int columns) {
    constexpr std::string_view dots = "...";
    if (displayWidth(text) <= columns) {
        return std::string(text);
    }
    int width = static_cast<int>(dots.size());
    std::size_t end = 0;
    for (std::size_t position = 0; position < text.size(); end = position) {
        width += widthOf(base::nextCodePoint(text, position));
        if (width > columns) {
            break;
        }
    }
    return std::string(text.substr(0, end)).append(dots);
}

}  // namespace cli
