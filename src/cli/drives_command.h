#pragma once

#include "cli/command.h"
#include "cli/format_option.h"

namespace platform {
struct DriveListEntry;
}

namespace cli {

/// vdln drives [--format FORMAT]
class DrivesCommand : public Command {
  public:
    std::string name() const override { return "drives"; }
    std::string description() const override { return "List the drives of this machine"; }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    FormatOption format_{OutputFormat::Text};
};

}  // namespace cli
