#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/command.h"
#include "cli/format_option.h"
#include "search/index.h"

namespace cli {

/// vdln diff ARCHIVE LEFT RIGHT: what a medium has that another one, or a folder or drive of this
/// machine, has not, and the other way round.
class DiffCommand : public Command {
  public:
    std::string name() const override { return "diff"; }
    std::string description() const override {
        return "Compare a medium with another one, or with a folder or drive";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    std::optional<std::int32_t> mediumNamed(const search::Index& index,
                                            const std::string& name) const;
    std::int32_t requireMedium(const search::Index& index, const std::string& name) const;

    std::string archive_;
    std::string left_;
    std::string right_;
    FormatOption format_{OutputFormat::Text};
};

}  // namespace cli
