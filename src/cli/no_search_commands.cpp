#include "cli/search_commands.h"

// Stands in for search_commands.cpp in a program built without the search engine.

namespace cli {

void addSearchCommands(std::vector<std::unique_ptr<Command>>&) {}

}  // namespace cli
