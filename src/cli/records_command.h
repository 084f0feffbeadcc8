#pragma once

#include <cstdint>
#include <optional>

#include "cli/command.h"
#include "cli/format_option.h"

namespace cli {

/// vdln records ARCHIVE [--media ID] [--kind folder|file] [--format FORMAT]
class RecordsCommand : public Command {
  public:
    std::string name() const override { return "records"; }
    std::string description() const override {
        return "List the folders and files that an archive holds";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    std::string filter() const;

    std::string archive_;
    std::optional<std::int32_t> mediaId_;
    std::optional<std::string> kind_;
    FormatOption format_{OutputFormat::Tsv};
};

}  // namespace cli
