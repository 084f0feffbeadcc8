#pragma once

#include "cli/table_writer.h"

namespace cli {

class TsvWriter : public TableWriter {
  public:
    TsvWriter(std::ostream& stream, Audience audience) : stream_(stream), audience_(audience) {}

    void begin(const std::vector<Column>& columns) override;
    void row(const std::vector<Cell>& cells) override;
    void end() override {}

  private:
    void append(std::string_view value);
    void writeLine();

    std::ostream& stream_;
    Audience audience_;
    std::string line_;
};

}  // namespace cli
