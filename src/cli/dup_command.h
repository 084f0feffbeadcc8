#pragma once

#include <string>

#include "cli/command.h"
#include "cli/format_option.h"
#include "cli/query_line.h"
#include "search/duplicates.h"

namespace cli {

/// vdln dup ARCHIVE [--by name,size[,date]] [QUERY...]
class DupCommand : public Command {
  public:
    std::string name() const override { return "dup"; }
    std::string description() const override {
        return "List files and folders that the archive holds more than once";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;
    bool takesQuery() const override { return true; }

  private:
    search::SameBy sameBy() const;

    std::string archive_;
    QueryLine query_;
    std::string by_ = "name,size";
    FormatOption format_{OutputFormat::Text};
};

}  // namespace cli
