#include "platform/path_rules.h"

#include <algorithm>

#include "base/text.h"

namespace platform {

namespace {

constexpr std::string_view shownBackslash = "\xEF\xBC\xBC";  // U+FF3C

std::string replaced(std::string_view text, std::string_view what, std::string_view by) {
    std::string result;
    while (true) {
        const std::size_t found = text.find(what);
        result += text.substr(0, found);
        if (found == std::string_view::npos) {
            return result;
        }
        result += by;
        text.remove_prefix(found + what.size());
    }
}

/// The text in code page 1252, or nothing where a character would be lost.
std::optional<std::string> exactCp1252(const std::string& text) {
    std::string bytes = base::cp1252FromUtf8(text);
    if (base::utf8FromCp1252(bytes) != text) {
        return std::nullopt;
    }
    return bytes;
}

std::optional<int> hexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(lower - 'a' + 10) : std::nullopt;
}

void addNew(std::vector<std::string>& names, std::string name) {
    if (std::ranges::find(names, name) == names.end()) {
        names.push_back(std::move(name));
    }
}

bool matchesFolded(std::string_view name, std::string_view pattern) {
    // Where the last "*" stood and what of the name it has taken so far: the only place to go back
    // to.
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    std::size_t n = 0;
    std::size_t p = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
            continue;
        }
        std::size_t afterName = n;
        const char32_t character = base::nextCodePoint(name, afterName);
        if (p < pattern.size()) {
            std::size_t afterPattern = p;
            const char32_t wanted = base::nextCodePoint(pattern, afterPattern);
            if (wanted == U'?' || wanted == character) {
                n = afterName;
                p = afterPattern;
                continue;
            }
        }
        if (star == std::string_view::npos) {
            return false;
        }
        base::nextCodePoint(name, taken);
        n = taken;
        p = star + 1;
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

std::optional<char> driveLetterOf(std::string_view path) {
    if (path.size() < 2 || path[1] != ':') {
        return std::nullopt;
    }
    const char lower = static_cast<char>(path[0] | 0x20);
    if (lower < 'a' || lower > 'z') {
        return std::nullopt;
    }
    return lower;
}

SplitPath splitPath(std::string_view path) {
    const std::size_t afterDrive = driveLetterOf(path) ? 2 : 0;
    const std::size_t last = path.rfind('\\');
    const std::size_t nameStart = last == std::string_view::npos ? afterDrive : last + 1;
    return {path.substr(0, nameStart), path.substr(nameStart)};
}

std::vector<std::string_view> pathComponents(std::string_view path) {
    if (driveLetterOf(path)) {
        path.remove_prefix(2);
    }
    std::vector<std::string_view> components;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('\\'), path.size());
        if (end > 0) {
            components.push_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return components;
}

bool matchesPattern(std::string_view name, std::string_view pattern) {
    if (pattern == "*" || pattern == "*.*") {
        return true;
    }
    return matchesFolded(base::foldedCase(name), base::foldedCase(pattern));
}

bool isPlainName(std::string_view nativeName) {
    bool ascii = true;
    for (const char byte : nativeName) {
        if (byte == '\\') {
            return false;
        }
        ascii = ascii && static_cast<signed char>(byte) >= 0;
    }
    return ascii || base::isUtf8(nativeName);
}

std::string shownName(std::string_view nativeName) {
    if (base::isUtf8(nativeName)) {
        return replaced(nativeName, "\\", shownBackslash);
    }
    return replaced(base::utf8FromCp1252(nativeName), "\\", shownBackslash);
}

std::vector<std::string> nativeNames(std::string_view shown) {
    std::vector<std::string> names{std::string(shown)};
    addNew(names, replaced(shown, shownBackslash, "\\"));
    const std::vector<std::string> utf8Names = names;
    for (const std::string& name : utf8Names) {
        if (auto bytes = exactCp1252(name)) {
            addNew(names, std::move(*bytes));
        }
    }
    return names;
}

std::string withoutEscapes(std::string_view name) {
    std::string text;
    while (!name.empty()) {
        const auto high = name.size() < 4 ? std::nullopt : hexDigit(name[2]);
        const auto low = name.size() < 4 ? std::nullopt : hexDigit(name[3]);
        if (name.starts_with("\\x") && high && low) {
            text += static_cast<char>(*high * 16 + *low);
            name.remove_prefix(4);
        } else {
            text += name.front();
            name.remove_prefix(1);
        }
    }
    return text;
}

std::string nativePath(std::string_view root, std::string_view path) {
    std::string native(root);
    for (const std::string_view name : pathComponents(path)) {
        if (native.empty() || native.back() != '/') {
            native += '/';
        }
        native += name;
    }
    return native;
}

}  // namespace platform
