#include "platform/profile_text.h"

#include <algorithm>

#include "base/text.h"

namespace platform {

namespace {

constexpr std::string_view blanks = " \t\v\f";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16Mark = "\xFF\xFE";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool inQuotes(std::string_view value) {
    return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
           value.back() == value.front();
}

std::string_view withoutQuotes(std::string_view value) {
    return inQuotes(value) ? value.substr(1, value.size() - 2) : value;
}

std::string utf8Of(std::string_view bytes) {
    return base::isUtf8(bytes) ? std::string(bytes) : base::utf8FromCp1252(bytes);
}

bool sameName(std::string_view inFile, std::string_view wanted) {
    return base::equalIgnoringCase(utf8Of(inFile), trimmed(wanted));
}

enum class LineKind { Section, Key, Other };

/// One line of a file, taken apart. The views point into the file's text.
struct Line {
    LineKind kind = LineKind::Other;
    std::string_view name;       ///< of the section or key, trimmed
    std::string_view value;      ///< of a key, trimmed, its quotation marks still around it
    std::size_t valueStart = 0;  ///< where the value begins in the file
    std::size_t contentEnd = 0;  ///< where the line's content ends
    std::size_t end = 0;         ///< where the next line begins
    bool blank = false;
};

void takeApart(std::string_view content, std::size_t start, Line& line) {
    const std::string_view visible = trimmed(content);
    line.blank = visible.empty();
    if (line.blank || visible.front() == ';') {
        return;
    }
    if (visible.front() == '[') {
        const std::size_t close = visible.find(']');
        if (close != std::string_view::npos) {
            line.kind = LineKind::Section;
            line.name = trimmed(visible.substr(1, close - 1));
        }
        return;
    }
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos) {
        return;
    }
    line.kind = LineKind::Key;
    line.name = trimmed(content.substr(0, equals));
    line.value = trimmed(content.substr(equals + 1));
    const std::size_t first = content.find_first_not_of(blanks, equals + 1);
    line.valueStart = start + std::min(first, content.size());
}

Line lineAt(std::string_view text, std::size_t start) {
    Line line;
    const std::size_t feed = std::min(text.find('\n', start), text.size());
    line.end = std::min(feed + 1, text.size());
    line.contentEnd = feed;
    if (feed > start && feed < text.size() && text[feed - 1] == '\r') {
        --line.contentEnd;
    }
    std::size_t contentStart = start;
    if (start == 0 && text.starts_with(utf8Mark)) {
        contentStart = utf8Mark.size();
    }
    takeApart(text.substr(contentStart, line.contentEnd - contentStart), contentStart, line);
    return line;
}

/// Where a key stands, or else where a new one would go.
struct Place {
    std::optional<Line> found;
    bool sectionExists = false;
    std::size_t insertAt = 0;  ///< behind the last line of the section that is not blank
};

Place findPlace(std::string_view text, std::string_view section, std::string_view key) {
    Place place;
    bool inside = false;
    bool inFirst = false;
    for (std::size_t start = 0; start < text.size();) {
        const Line line = lineAt(text, start);
        start = line.end;
        if (line.kind == LineKind::Section) {
            inside = sameName(line.name, section);
            inFirst = inside && !place.sectionExists;
            place.sectionExists = place.sectionExists || inside;
        } else if (inside && line.kind == LineKind::Key && sameName(line.name, key)) {
            place.found = line;
            return place;
        }
        if (inFirst && !line.blank) {
            place.insertAt = line.end;
        }
    }
    return place;
}

std::string_view lineEndOf(std::string_view text) {
    const std::size_t feed = text.find('\n');
    return feed != std::string_view::npos && feed > 0 && text[feed - 1] == '\r' ? "\r\n" : "\n";
}

bool standsInOneLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool isSectionName(std::string_view name) {
    return standsInOneLine(name) && name.find(']') == std::string_view::npos;
}

bool isKeyName(std::string_view name) {
    const std::string_view visible = trimmed(name);
    return standsInOneLine(name) && name.find('=') == std::string_view::npos && !visible.empty() &&
           visible.front() != ';' && visible.front() != '[';
}

/// The new lines that add a key, with line ends before them as needed.
std::string insertion(std::string_view text, const Place& place, std::string_view section,
                      std::string_view key, std::string_view value) {
    const std::string lineEnd(lineEndOf(text));
    const std::size_t position = place.sectionExists ? place.insertAt : text.size();
    std::string lines;
    const std::string_view before = text.substr(0, position);
    if (!before.empty() && before != utf8Mark && before.back() != '\n') {
        lines += lineEnd;
    }
    if (!place.sectionExists) {
        lines += '[' + std::string(section) + ']' + lineEnd;
    }
    return lines + std::string(key) + '=' + profileForm(value) + lineEnd;
}

std::string withValueInUtf8(std::string_view text, std::string_view section, std::string_view key,
                            std::string_view value) {
    const Place place = findPlace(text, section, key);
    std::string result(text);
    if (place.found) {
        const std::size_t start = place.found->valueStart;
        return result.replace(start, place.found->contentEnd - start, profileForm(value));
    }
    return result.insert(place.sectionExists ? place.insertAt : text.size(),
                         insertion(text, place, trimmed(section), trimmed(key), value));
}

std::u16string unitsOf(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                       static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return units;
}

std::string bytesOf(std::u16string_view units) {
    std::string bytes;
    bytes.reserve(2 * units.size());
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

bool isUtf16(std::string_view fileText) { return fileText.starts_with(utf16Mark); }

std::string utf8OfUtf16(std::string_view fileText) {
    return base::utf8FromUtf16(unitsOf(fileText.substr(utf16Mark.size())));
}

std::string utf16OfUtf8(std::string_view text) {
    return std::string(utf16Mark) + bytesOf(base::utf16FromUtf8(text));
}

}  // namespace

std::optional<std::string> profileValue(std::string_view fileText, std::string_view section,
                                        std::string_view key) {
    std::string decoded;
    if (isUtf16(fileText)) {
        decoded = utf8OfUtf16(fileText);
        fileText = decoded;
    }
    const Place place = findPlace(fileText, section, key);
    if (!place.found) {
        return std::nullopt;
    }
    return utf8Of(withoutQuotes(place.found->value));
}

std::optional<std::string> withProfileValue(std::string_view fileText, std::string_view section,
                                            std::string_view key, std::string_view value) {
    if (!canStandInProfile(section, key, value)) {
        return std::nullopt;
    }
    if (!isUtf16(fileText)) {
        return withValueInUtf8(fileText, section, key, value);
    }
    const std::string decoded = utf8OfUtf16(fileText);
    if (utf16OfUtf8(decoded) != fileText) {
        return std::nullopt;
    }
    return utf16OfUtf8(withValueInUtf8(decoded, section, key, value));
}

bool canStandInProfile(std::string_view section, std::string_view key, std::string_view value) {
    return isSectionName(section) && isKeyName(key) && standsInOneLine(value);
}

std::string profileForm(std::string_view value) {
    if (trimmed(value) == value && !inQuotes(value)) {
        return std::string(value);
    }
    return '"' + std::string(value) + '"';
}

}  // namespace platform
