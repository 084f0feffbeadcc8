#pragma once

#include "cli/table_writer.h"

namespace cli {

/// Columns for people. The widths are those of the first rows; later rows that need more push their
/// own line out, so that the memory stays the same however long the table is.
class TextWriter : public TableWriter {
  public:
    /// Rows whose widths are looked at before the first is written.
    static constexpr std::size_t rowsAhead = 1000;

    explicit TextWriter(std::ostream& stream) : stream_(stream) {}

    void begin(const std::vector<Column>& columns) override;
    void row(const std::vector<Cell>& cells) override;
    void end() override;

  private:
    using Line = std::vector<std::string>;

    void widen(const Line& line);
    void writeHeld();
    void writeLine(const Line& line);

    std::ostream& stream_;
    std::vector<Column> columns_;
    std::vector<int> widths_;
    std::vector<Line> held_;  ///< lines that wait for the widths
    bool isHolding_ = true;
};

}  // namespace cli
