#include "cli/check_command.h"
#include "cli/command.h"
#include "cli/create_command.h"
#include "cli/diff_command.h"
#include "cli/drives_command.h"
#include "cli/dump_command.h"
#include "cli/dup_command.h"
#include "cli/export_command.h"
#include "cli/find_command.h"
#include "cli/media_command.h"
#include "cli/records_command.h"
#include "cli/scan_command.h"
#include "cli/stats_command.h"
#include "cli/tag_command.h"

namespace cli {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<CreateCommand>());
    commands.push_back(std::make_unique<DrivesCommand>());
    commands.push_back(std::make_unique<ScanCommand>());
    commands.push_back(std::make_unique<MediaCommand>());
    commands.push_back(std::make_unique<RecordsCommand>());
    commands.push_back(std::make_unique<FindCommand>());
    commands.push_back(std::make_unique<DupCommand>());
    commands.push_back(std::make_unique<DiffCommand>());
    commands.push_back(std::make_unique<StatsCommand>());
    commands.push_back(std::make_unique<TagCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<DumpCommand>());
    commands.push_back(std::make_unique<CheckCommand>());
    return commands;
}

}  // namespace cli
