#include "cli/search_commands.h"

#include "cli/diff_command.h"
#include "cli/dup_command.h"
#include "cli/export_command.h"
#include "cli/find_command.h"
#include "cli/stats_command.h"
#include "cli/tag_command.h"

namespace cli {

void addSearchCommands(std::vector<std::unique_ptr<Command>>& commands) {
    commands.push_back(std::make_unique<FindCommand>());
    commands.push_back(std::make_unique<DupCommand>());
    commands.push_back(std::make_unique<DiffCommand>());
    commands.push_back(std::make_unique<StatsCommand>());
    commands.push_back(std::make_unique<TagCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
}

}  // namespace cli
