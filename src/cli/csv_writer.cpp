#include "cli/csv_writer.h"

#include "cli/checked_output.h"
#include "cli/visible_text.h"

namespace cli {
namespace {

/// An empty text is quoted to tell it from NULL, one with blanks around it because some readers
/// would drop them.
bool needsQuotes(std::string_view value) {
    return value.empty() || value.front() == ' ' || value.back() == ' ' ||
           value.find_first_of(",\"\r\n") != std::string_view::npos;
}

}  // namespace

void CsvWriter::begin(const std::vector<Column>& columns) {
    for (const Column& column : columns) {
        append(column.name);
    }
    writeLine();
}

void CsvWriter::row(const std::vector<Cell>& cells) {
    for (const Cell& cell : cells) {
        if (cell.kind == Cell::Kind::Null) {
            line_ += ',';
        } else {
            append(cell.text);
        }
    }
    writeLine();
}

void CsvWriter::append(std::string_view value) {
    if (audience_ == Audience::Program) {
        appendQuotable(value);
    } else {
        appendQuotable(visibleText(value));
    }
    line_ += ',';
}

void CsvWriter::appendQuotable(std::string_view value) {
    if (!needsQuotes(value)) {
        line_ += value;
        return;
    }
    line_ += '"';
    for (const char c : value) {
        line_.append(c == '"' ? 2 : 1, c);
    }
    line_ += '"';
}

void CsvWriter::writeLine() {
    if (!line_.empty()) {
        line_.pop_back();
    }
    line_ += "\r\n";
    writeChecked(stream_, line_);
    line_.clear();
}

}  // namespace cli
