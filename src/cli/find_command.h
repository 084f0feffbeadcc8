#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/format_option.h"

namespace cli {

/// vdln find ARCHIVE QUERY...: the entries that a query finds. Its exit status is that of a search:
/// 0 found something, 1 found nothing, 2 failed.
class FindCommand : public Command {
  public:
    std::string name() const override { return "find"; }
    std::string description() const override { return "Find entries by a query"; }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    std::string archive_;
    std::vector<std::string> words_;
    FormatOption format_{OutputFormat::Text};
};

}  // namespace cli
