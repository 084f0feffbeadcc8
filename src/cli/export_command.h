#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/command.h"
#include "cli/result_printer.h"

namespace cli {

/// vdln export ARCHIVE --format FORMAT [--columns NAMES] [--media ID]
class ExportCommand : public Command {
  public:
    std::string name() const override { return "export"; }
    std::string description() const override {
        return "Print all entries in a form for other programs";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    void requireMedium(const search::Index& index) const;

    std::string archive_;
    ResultPrinter printer_{ResultPrinter::TextFormat::NotOffered};
    std::optional<std::int32_t> mediaId_;
};

}  // namespace cli
