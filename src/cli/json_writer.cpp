#include "cli/json_writer.h"

#include <array>
#include <cctype>
#include <cstdio>

#include "base/text.h"
#include "cli/checked_output.h"
#include "cli/visible_text.h"

namespace cli {
namespace {

void appendUnit(char16_t unit, std::string& result) {
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(unit));
    result += escape.data();
}

void appendEscape(char32_t character, std::string& result) {
    if (const char* escape = shortEscape(character)) {
        result += escape;
        return;
    }
    std::string text;
    base::appendUtf8(character, text);
    for (const char16_t unit : base::utf16FromUtf8(text)) {
        appendUnit(unit, result);
    }
}

/// JSON has no word for a number without end.
bool isJsonNumber(const std::string& text) {
    return !text.empty() && std::isdigit(static_cast<unsigned char>(text.back())) != 0;
}

void appendValue(const Cell& cell, std::string& line) {
    switch (cell.kind) {
        case Cell::Kind::Null:
            line += "null";
            return;
        case Cell::Kind::Boolean:
            line += cell.text;
            return;
        case Cell::Kind::Number:
            if (isJsonNumber(cell.text)) {
                line += cell.text;
                return;
            }
            break;
        case Cell::Kind::Text:
            break;
    }
    appendJsonString(cell.text, line);
}

}  // namespace

void appendJsonString(std::string_view text, std::string& result) {
    result += '"';
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = base::nextCodePoint(text, position);
        if (character == '"' || character == '\\') {
            result += '\\';
            result += static_cast<char>(character);
        } else if (isHidden(character)) {
            appendEscape(character, result);
        } else {
            base::appendUtf8(character, result);
        }
    }
    result += '"';
}

void JsonWriter::begin(const std::vector<Column>& columns) {
    for (const Column& column : columns) {
        std::string& key = keys_.emplace_back();
        appendJsonString(column.name, key);
        key += ':';
    }
    writeChecked(stream_, "[");
}

void JsonWriter::row(const std::vector<Cell>& cells) {
    line_ = isFirst_ ? "\n{" : ",\n{";
    isFirst_ = false;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line_ += i == 0 ? "" : ",";
        line_ += keys_[i];
        appendValue(cells[i], line_);
    }
    line_ += '}';
    writeChecked(stream_, line_);
}

void JsonWriter::end() { writeChecked(stream_, "\n]\n"); }

}  // namespace cli
