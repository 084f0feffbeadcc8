#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/exit_code.h"

namespace CLI {  // NOLINT(readability-identifier-naming): given by the library
class App;
}

namespace cli {

struct Context;

/// One command of the companion. It is made anew for each call of the program; its options land in
/// its own members, and run() works with them. A failure that passes run() is reported by the
/// program and ends it as ExitCode::Failed.
class Command {
  public:
    virtual ~Command() = default;
    virtual std::string name() const = 0;
    virtual std::string description() const = 0;
    /// Adds arguments and options to the command's part of the command line.
    virtual void addOptions(CLI::App& app) = 0;
    virtual ExitCode run(Context& context) = 0;
    /// True where any number of words follow that are texts whatever is in them.
    virtual bool takesQuery() const { return false; }
};

/// All commands, in the order in which the help shows them. A new command is one more line there.
std::vector<std::unique_ptr<Command>> allCommands();

}  // namespace cli
