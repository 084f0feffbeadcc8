#include "cli/check_command.h"
#include "cli/command.h"
#include "cli/create_command.h"
#include "cli/drives_command.h"
#include "cli/dump_command.h"
#include "cli/media_command.h"
#include "cli/records_command.h"
#include "cli/scan_command.h"
#include "cli/search_commands.h"

namespace cli {

std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<CreateCommand>());
    commands.push_back(std::make_unique<DrivesCommand>());
    commands.push_back(std::make_unique<ScanCommand>());
    commands.push_back(std::make_unique<MediaCommand>());
    commands.push_back(std::make_unique<RecordsCommand>());
    addSearchCommands(commands);
    commands.push_back(std::make_unique<DumpCommand>());
    commands.push_back(std::make_unique<CheckCommand>());
    return commands;
}

}  // namespace cli
