#pragma once

#include <string>

#include "cli/table_writer.h"

namespace CLI {  // NOLINT(readability-identifier-naming): given by the library
class App;
}

namespace cli {

struct Context;

/// The option --format of the commands that print a table.
class FormatOption {
  public:
    explicit FormatOption(OutputFormat usual);
    void addTo(CLI::App& app);
    OutputFormat format() const;
    /// The writer to the standard output of `context`.
    std::unique_ptr<TableWriter> makeWriter(Context& context) const;

  private:
    std::string name_;
};

}  // namespace cli
