#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/command.h"
#include "cli/query_line.h"
#include "cli/result_printer.h"

namespace cli {

/// vdln find ARCHIVE QUERY... [--format FORMAT] [--columns NAMES] [--limit N] [--sort COLUMN] [-0]
/// [-c]: the entries that a query finds. Its exit status is that of other programs that search: 0
/// found something, 1 found nothing, 2 failed.
class FindCommand : public Command {
  public:
    std::string name() const override { return "find"; }
    std::string description() const override { return "Find entries by a query"; }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;
    bool takesQuery() const override { return true; }

  private:
    ExitCode find(Context& context) const;
    void print(Context& context, const search::Index& index,
               const std::vector<search::Row>& rows) const;

    std::string archive_;
    QueryLine query_;
    ResultPrinter printer_{ResultPrinter::TextFormat::Offered};
    std::optional<std::uint32_t> limit_;
    std::string sort_;
    bool separatesByNul_ = false;
    bool countsOnly_ = false;
};

}  // namespace cli
