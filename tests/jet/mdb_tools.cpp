#include "tests/jet/mdb_tools.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "base/text.h"

namespace jet_test {

namespace {

// Texts may hold any character, so the marks between values and rows are long ones.
constexpr std::string_view valueEnd = "<=~=>";
constexpr std::string_view rowEnd = "<=~~=>\n";

std::vector<std::string> split(std::string_view text, std::string_view mark) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(mark);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + mark.size());
    }
}

std::string exportCommand(const std::string& file, const std::string& table) {
    return "LC_ALL=C.UTF-8 mdb-export -H -Q -b hex -d " + shellQuoted(valueEnd) + " -R " +
           shellQuoted(rowEnd) + " -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' " +
           shellQuoted(file) + " " + shellQuoted(table);
}

std::vector<std::string> rowTexts(const std::string& file, const std::string& table) {
    std::vector<std::string> rows = split(outputOf(exportCommand(file, table)), rowEnd);
    rows.pop_back();  // what follows the last mark
    return rows;
}

std::string rounded(const std::string& number) {
    std::array<char, 64> buffer;
    std::snprintf(buffer.data(), buffer.size(), "%.6g", std::strtod(number.c_str(), nullptr));
    return buffer.data();
}

std::string inSmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// The bytes of hexadecimal digits up to the first zero.
std::string upToZeroByte(const std::string& digits) {
    std::size_t end = 0;
    while (end < digits.size() && digits.compare(end, 2, "00") != 0) {
        end += 2;
    }
    return digits.substr(0, end);
}

std::string fromHexadecimal(const std::string& digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::string withoutHyphens(std::string text) {
    std::erase(text, '-');
    return text;
}

/// The judge reads each half of a surrogate pair as a question mark.
std::string inFirstPlane(const std::string& text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = base::nextCodePoint(text, at);
        c > 0xFFFF ? plain.append("??") : (base::appendUtf8(c, plain), plain);
    }
    return plain;
}

std::string normalForm(const jet::Field& field, const std::string& text) {
    switch (field.type) {
        case jet::DataType::Boolean:
            return text == "true" || text == "1" ? "1" : "0";
        case jet::DataType::Currency:
        case jet::DataType::Single:
        case jet::DataType::Double:
        case jet::DataType::Numeric:
            return text.empty() ? text : rounded(text);
        case jet::DataType::Binary:
            return upToZeroByte(inSmallLetters(text));
        case jet::DataType::LongBinary:
            return inSmallLetters(text);
        case jet::DataType::Guid:
            // The judge takes the text of a GUID for bytes, and leaves the last hyphen out.
            return withoutHyphens(text.starts_with('{') ? text : fromHexadecimal(text));
        case jet::DataType::Text:
        case jet::DataType::Memo:
            return inFirstPlane(text.substr(0, text.find('\0')));
        case jet::DataType::Byte:
        case jet::DataType::Integer:
        case jet::DataType::Long:
        case jet::DataType::Date:
            return text;
    }
    return {};
}

}  // namespace

std::string shellQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

bool MdbTools::installed() { return std::system("mdb-export --version >/dev/null 2>&1") == 0; }

std::vector<MdbTools::Line> MdbTools::rows(const std::string& file,
                                           const jet::TableDefinition& table) {
    std::vector<Line> rows;
    for (const std::string& text : rowTexts(file, table.name)) {
        Line line = split(text, valueEnd);
        for (std::size_t i = 0; i < line.size() && i < table.fields.size(); ++i) {
            line[i] = normalForm(table.fields[i], line[i]);
        }
        rows.push_back(std::move(line));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::size_t MdbTools::countRows(const std::string& file, const std::string& table) {
    return rowTexts(file, table).size();
}

std::vector<std::string> MdbTools::columns(const std::string& file, const std::string& table) {
    std::istringstream in(outputOf("LC_ALL=C.UTF-8 mdb-schema -T " + shellQuoted(table) + " " +
                                   shellQuoted(file) + " access"));
    std::vector<std::string> columns;
    for (std::string line; std::getline(in, line);) {
        std::string_view rest = line;
        const std::size_t open = rest.find('[');
        if (line.empty() || !std::isspace(static_cast<unsigned char>(line.front())) ||
            open == std::string_view::npos) {
            continue;
        }
        rest.remove_prefix(open + 1);
        const std::size_t close = rest.find(']');
        std::string type(rest.substr(close + 1));
        type.erase(0, type.find_first_not_of("\t "));
        type.erase(type.find_last_not_of(", \t") + 1);
        columns.push_back(std::string(rest.substr(0, close)) + " " + type);
    }
    return columns;
}

std::vector<std::string> MdbTools::tables(const std::string& file) {
    std::vector<std::string> names =
        split(outputOf("LC_ALL=C.UTF-8 mdb-tables -1 " + shellQuoted(file)), "\n");
    std::erase(names, std::string());
    return names;
}

std::string normalText(const jet::Field& field, const jet::Value& value) {
    const bool isBytes = std::holds_alternative<jet::Binary>(value);
    std::string text = jet::displayText(value);
    text.erase(0, isBytes ? 2 : 0);
    return normalForm(field, text);
}

std::string differenceOf(const std::vector<MdbTools::Line>& ours,
                         const std::vector<MdbTools::Line>& theirs) {
    std::string report;
    const auto describe = [&](const char* who, const auto& some, const auto& others) {
        std::vector<MdbTools::Line> only;
        std::set_difference(some.begin(), some.end(), others.begin(), others.end(),
                            std::back_inserter(only));
        constexpr std::size_t mostLines = 4;
        report += only.size() > mostLines ? std::to_string(only.size()) + " lines " : std::string();
        only.resize(std::min(only.size(), mostLines));
        for (const MdbTools::Line& line : only) {
            report += std::string("only ") + who + ":";
            for (const std::string& value : line) {
                report += " | " + value.substr(0, 200);
            }
            report += "\n";
        }
    };
    describe("the engine", ours, theirs);
    describe("the judge", theirs, ours);
    return report;
}

}  // namespace jet_test
