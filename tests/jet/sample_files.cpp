#include "tests/jet/sample_files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace jet_test {

namespace {

std::vector<std::string> splitAtTabs(const std::string& line) {
    std::vector<std::string> parts;
    std::istringstream in(line);
    for (std::string part; std::getline(in, part, '\t');) {
        parts.push_back(part);
    }
    if (line.empty() || line.back() == '\t') {
        parts.emplace_back();
    }
    return parts;
}

std::string unescaped(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            plain.push_back(text[i]);
            continue;
        }
        const char code = ++i < text.size() ? text[i] : '\\';
        plain.push_back(code == 't' ? '\t' : code == 'n' ? '\n' : code == 'r' ? '\r' : code);
    }
    return plain;
}

}  // namespace

std::string sampleFolder() {
    const char* const chosen = std::getenv("VERDOLIN_JET_SAMPLES");
    const std::string folder = chosen != nullptr ? chosen : VERDOLIN_JET_SAMPLES;
    return std::filesystem::is_directory(folder) ? folder : std::string();
}

TextTable readTextTable(const std::string& path) {
    std::istringstream in(readFile(path));
    TextTable table;
    std::string line;
    std::getline(in, line);
    table.fields = splitAtTabs(line);
    while (std::getline(in, line)) {
        TextRow& row = table.rows.emplace_back();
        for (const std::string& part : splitAtTabs(line)) {
            row.push_back(part == "\\N" ? std::nullopt : std::optional(unescaped(part)));
        }
    }
    return table;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error(path + " cannot be read");
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace jet_test
