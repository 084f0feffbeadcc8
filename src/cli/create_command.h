#pragma once

#include "cli/command.h"
#include "jet/database.h"

namespace cli {

/// vdln create ARCHIVE [--force] [--format jet3|jet4]
class CreateCommand : public Command {
  public:
    std::string name() const override { return "create"; }
    std::string description() const override { return "Create a new, empty archive"; }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    void create(Context& context) const;
    jet::FileFormat format() const;

    std::string archive_;
    bool replaces_ = false;
    std::string format_ = "jet4";
};

}  // namespace cli
