#include "cli/drives_command.h"

#include <CLI/CLI.hpp>

#include "cli/context.h"
#include "platform/drives.h"
#include "platform/platform.h"
#include "scan/driveinfoapi.h"

namespace cli {
namespace {

const std::vector<Column> columns{{"drive", false},    {"label", false},    {"type", false},
                                  {"size (Mb)", true}, {"free (Mb)", true}, {"folder", false}};

std::string designator(const platform::DriveListEntry& drive) {
    return std::string(1, drive.letter) + ":";
}

/// A drive without a medium has no sizes.
std::vector<Cell> cellsOf(const platform::DriveListEntry& drive, platform::Drives& drives) {
    std::vector<Cell> cells{Cell::ofText(designator(drive)),
                            Cell::ofText(drive.label),
                            Cell::ofText(scan::driveTypeName(drive.type)),
                            Cell(),
                            Cell(),
                            Cell::ofText(drive.folder)};
    platform::DiskSpace space;
    if (drives.getDiskFreeSpace(designator(drive), space)) {
        cells[3] = Cell::ofNumber(scan::megabytes(space.totalBytes));
        cells[4] = Cell::ofNumber(scan::megabytes(space.totalFree));
    }
    return cells;
}

}  // namespace

void DrivesCommand::addOptions(CLI::App& app) { format_.addTo(app); }

ExitCode DrivesCommand::run(Context& context) {
    platform::Drives& drives = context.platform.drives();
    const auto writer = format_.makeWriter(context);
    writer->begin(columns);
    for (const platform::DriveListEntry& drive : drives.list()) {
        writer->row(cellsOf(drive, drives));
    }
    writer->end();
    return ExitCode::Done;
}

}  // namespace cli
