#include "platform/type_name_rules.h"

#include "base/text.h"

namespace platform {

namespace {

/// The capital of a letter: the character near it in the tables that folds to it.
char32_t upperCase(char32_t letter) {
    for (const char32_t distance : {0x20, 1, 0x50, 0x30, 0x25, 0x26, 0x40, 0x3F}) {
        if (letter > distance && base::foldCase(letter - distance) == letter) {
            return letter - distance;
        }
    }
    return letter;
}

}  // namespace

std::string_view extensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) {
        return {};
    }
    const std::string_view extension = name.substr(dot + 1);
    return extension.find(' ') == std::string_view::npos ? extension : std::string_view();
}

std::string extensionTypeName(std::string_view name) {
    const std::string_view extension = extensionOf(name);
    if (extension.empty()) {
        return "File";
    }
    std::string text;
    for (std::size_t position = 0; position < extension.size();) {
        base::appendUtf8(upperCase(base::nextCodePoint(extension, position)), text);
    }
    text += " File";
    return std::string(base::firstUtf16Units(text, longestTypeName));
}

}  // namespace platform
