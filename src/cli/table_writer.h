#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace cli {

/// One value of a row on its way out. Texts are UTF-8.
struct Cell {
    enum class Kind { Null, Text, Number, Boolean };

    Kind kind = Kind::Null;
    std::string text;  ///< what a reader sees; empty for Null

    void setNull() {
        kind = Kind::Null;
        text.clear();
    }
    static Cell ofText(std::string text) { return {Kind::Text, std::move(text)}; }
    static Cell ofNumber(std::int64_t number) { return {Kind::Number, std::to_string(number)}; }
};

struct Column {
    std::string name;
    bool isNumber = false;
};

enum class OutputFormat {
    Text,  ///< columns for people
    Tsv,   ///< tabs between, a row a line; \t \n \r \\ inside values, NULL is \N
    Csv,   ///< RFC 4180; NULL is nothing, an empty text is ""
    Json,  ///< an array of one object a row, each on a line of its own
};

/// Writes one table in one format: begin() once, row() for each row, end() once. Every call may be
/// the one that fails (base::FileFailure) when the stream takes no more. The stream must outlive
/// the writer.
class TableWriter {
  public:
    virtual ~TableWriter() = default;
    virtual void begin(const std::vector<Column>& columns) = 0;
    /// As many cells as there are columns.
    virtual void row(const std::vector<Cell>& cells) = 0;
    virtual void end() = 0;
};

/// Whether hidden characters are made visible where the format would let them pass.
enum class Audience { Program, Terminal };

std::unique_ptr<TableWriter> makeTableWriter(OutputFormat format, std::ostream& stream,
                                             Audience audience);

}  // namespace cli
