#include "cli/text_writer.h"

#include <algorithm>

#include "cli/checked_output.h"
#include "cli/visible_text.h"

namespace cli {

void TextWriter::begin(const std::vector<Column>& columns) {
    columns_ = columns;
    widths_.assign(columns.size(), 0);
    Line names;
    for (const Column& column : columns) {
        names.push_back(visibleText(column.name));
    }
    widen(names);
    held_.push_back(std::move(names));
}

void TextWriter::row(const std::vector<Cell>& cells) {
    Line line;
    line.reserve(cells.size());
    for (const Cell& cell : cells) {
        line.push_back(visibleText(cell.text));
    }
    if (!isHolding_) {
        writeLine(line);
        return;
    }
    widen(line);
    held_.push_back(std::move(line));
    if (held_.size() > rowsAhead) {
        writeHeld();
    }
}

void TextWriter::end() { writeHeld(); }

void TextWriter::widen(const Line& line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        widths_[i] = std::max(widths_[i], displayWidth(line[i]));
    }
}

void TextWriter::writeHeld() {
    for (const Line& line : held_) {
        writeLine(line);
    }
    held_.clear();
    isHolding_ = false;
}

void TextWriter::writeLine(const Line& line) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const int missing = std::max(0, widths_[i] - displayWidth(line[i]));
        const std::string blanks(static_cast<std::size_t>(missing), ' ');
        text += i == 0 ? "" : "  ";
        text += columns_[i].isNumber ? blanks + line[i] : line[i] + blanks;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    writeChecked(stream_, text += '\n');
}

}  // namespace cli
