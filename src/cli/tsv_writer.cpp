#include "cli/tsv_writer.h"

#include "cli/checked_output.h"
#include "cli/visible_text.h"

namespace cli {
namespace {

void appendEscaped(std::string_view value, std::string& line) {
    for (const char c : value) {
        switch (c) {
            case '\t':
                line += "\\t";
                break;
            case '\n':
                line += "\\n";
                break;
            case '\r':
                line += "\\r";
                break;
            case '\\':
                line += "\\\\";
                break;
            default:
                line += c;
        }
    }
}

}  // namespace

void TsvWriter::begin(const std::vector<Column>& columns) {
    for (const Column& column : columns) {
        append(column.name);
    }
    writeLine();
}

void TsvWriter::row(const std::vector<Cell>& cells) {
    for (const Cell& cell : cells) {
        if (cell.kind == Cell::Kind::Null) {
            line_ += "\\N\t";
        } else {
            append(cell.text);
        }
    }
    writeLine();
}

void TsvWriter::append(std::string_view value) {
    if (audience_ == Audience::Program) {
        appendEscaped(value, line_);
    } else {
        std::string escaped;
        appendEscaped(value, escaped);
        appendVisible(escaped, line_);
    }
    line_ += '\t';
}

void TsvWriter::writeLine() {
    if (!line_.empty()) {
        line_.pop_back();
    }
    line_ += '\n';
    writeChecked(stream_, line_);
    line_.clear();
}

}  // namespace cli
