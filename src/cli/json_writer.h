#pragma once

#include <string_view>

#include "cli/table_writer.h"

namespace cli {

/// `text` in quotation marks for JSON. Hidden characters are escaped, and bytes that are not UTF-8
/// become U+FFFD, so the result is valid whatever the text holds.
void appendJsonString(std::string_view text, std::string& result);

class JsonWriter : public TableWriter {
  public:
    explicit JsonWriter(std::ostream& stream) : stream_(stream) {}

    void begin(const std::vector<Column>& columns) override;
    void row(const std::vector<Cell>& cells) override;
    void end() override;

  private:
    std::ostream& stream_;
    std::vector<std::string> keys_;  ///< with quotation marks and colon
    std::string line_;
    bool isFirst_ = true;
};

}  // namespace cli
