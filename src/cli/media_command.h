#pragma once

#include "cli/command.h"
#include "cli/format_option.h"

namespace cli {

/// vdln media ARCHIVE [--format FORMAT]
class MediaCommand : public Command {
  public:
    std::string name() const override { return "media"; }
    std::string description() const override { return "List the media of an archive"; }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    std::string archive_;
    FormatOption format_{OutputFormat::Text};
};

}  // namespace cli
