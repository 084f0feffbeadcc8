#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jet/table_definition.h"
#include "jet/value.h"

namespace jet_test {

/// Another program that reads Jet files, as a judge of what the engine reads and writes. It cannot
/// tell NULL from an empty text and lists moved rows where they have moved to, so rows are compared
/// as a set of lines in which both are "".
class MdbTools {
  public:
    using Line = std::vector<std::string>;

    static bool installed();
    /// The rows of a table, sorted; values in the form of normalText().
    static std::vector<Line> rows(const std::string& file, const jet::TableDefinition& table);
    /// Number of rows that its own scan finds.
    static std::size_t countRows(const std::string& file, const std::string& table);
    /// What it says of the tables' columns: "name type" for each.
    static std::vector<std::string> columns(const std::string& file, const std::string& table);
    static std::vector<std::string> tables(const std::string& file);
};

/// The engine's value in the form in which MdbTools::rows() gives it: reals rounded to six digits,
/// truth as 0 or 1, bytes in hexadecimal, NULL and what the judge cannot read as an empty text.
/// Texts and short binary values end at their first zero, and characters beyond the first plane are
/// "??", as they are for the judge.
std::string normalText(const jet::Field& field, const jet::Value& value);

/// The lines that only one of two sorted lists has, shortened; empty when they are equal.
std::string differenceOf(const std::vector<MdbTools::Line>& ours,
                         const std::vector<MdbTools::Line>& theirs);

/// Runs a command line and returns what it printed; std::runtime_error when it fails.
std::string outputOf(const std::string& command);
std::string shellQuoted(std::string_view text);

}  // namespace jet_test
