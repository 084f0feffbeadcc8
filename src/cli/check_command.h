#pragma once

#include "cli/command.h"

namespace cli {

/// vdln check FILE
class CheckCommand : public Command {
  public:
    std::string name() const override { return "check"; }
    std::string description() const override {
        return "Check every page of a Jet file and say what is wrong where";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;

  private:
    std::string file_;
};

}  // namespace cli
