#pragma once

#include <optional>

#include "cli/command.h"
#include "cli/format_option.h"

namespace cli {

/// vdln dump FILE [TABLE] [--system] [--format FORMAT]
class DumpCommand : public Command {
  public:
    std::string name() const override { return "dump"; }
    std::string description() const override {
        return "Print the tables of a Jet file, or the rows of one of them";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    void printTables(Context& context) const;
    void printTable(Context& context) const;

    std::string file_;
    std::optional<std::string> table_;
    bool showsSystem_ = false;
    FormatOption format_{OutputFormat::Tsv};
};

}  // namespace cli
