#pragma once

#include <memory>
#include <vector>

#include "cli/command.h"

namespace cli {

/// Adds the commands that stand on the search engine; none in a program built without it.
void addSearchCommands(std::vector<std::unique_ptr<Command>>& commands);

}  // namespace cli
