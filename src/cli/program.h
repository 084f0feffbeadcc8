#pragma once

#include <string>
#include <vector>

#include "cli/exit_code.h"

namespace cli {

struct Context;

/// Runs the companion: reads the command line (without the program's name), runs the command and
/// reports its failure, if any, as one line. Nothing is thrown.
ExitCode runProgram(const std::vector<std::string>& arguments, Context& context) noexcept;

}  // namespace cli
