#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet_test {

/// Folder of the database files made by other programs: what the environment variable
/// VERDOLIN_JET_SAMPLES names, else what the build was configured with. Empty when there is none.
std::string sampleFolder();

/// One line of a table written as text: a value for each field, none for NULL.
using TextRow = std::vector<std::optional<std::string>>;

struct TextTable {
    std::vector<std::string> fields;
    std::vector<TextRow> rows;
};

/// Reads such a table: a tab between values, field names in the first line, "\N" for NULL, and \t,
/// \n, \r and \\ for the characters that would otherwise be taken for separators.
TextTable readTextTable(const std::string& path);

/// The whole file. std::runtime_error when it cannot be read.
std::string readFile(const std::string& path);

}  // namespace jet_test
