#pragma once

#include <string>

#include "cli/command.h"
#include "cli/format_option.h"
#include "cli/query_line.h"

namespace cli {

/// vdln stats ARCHIVE [--by medium|ext|year|size|keywords] [QUERY...]
class StatsCommand : public Command {
  public:
    std::string name() const override { return "stats"; }
    std::string description() const override {
        return "Count entries and bytes by medium, extension, year or size";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;
    bool takesQuery() const override { return true; }

  private:
    std::string archive_;
    QueryLine query_;
    std::string by_ = "medium";
    FormatOption format_{OutputFormat::Text};
};

}  // namespace cli
