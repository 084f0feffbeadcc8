#pragma once

#include <cstdint>
#include <optional>

#include "cli/command.h"
#include "cli/progress_line.h"

namespace cli {

/// vdln scan WHAT ARCHIVE --name NAME [--label LABEL] [--update MEDIAID [--yes]]
/// [--progress|--quiet]
class ScanCommand : public Command {
  public:
    std::string name() const override { return "scan"; }
    std::string description() const override {
        return "Catalogue a drive or a folder as a medium of an archive";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    ProgressLine::Shown shownProgress(const Context& context) const;

    std::string what_;
    std::string archive_;
    std::string mediaName_;
    std::optional<std::string> label_;
    std::optional<std::int32_t> update_;
    bool isConfirmed_ = false;
    bool forcesProgress_ = false;
    bool isQuiet_ = false;
};

}  // namespace cli
