#include "cli/media_command.h"

#include <CLI/CLI.hpp>

#include "archive/archive_table.h"
#include "base/archive_location.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "cli/row_printer.h"

namespace cli {

void MediaCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    format_.addTo(app);
}

ExitCode MediaCommand::run(Context& context) {
    archive::ArchiveTable media(context.engine, base::splitArchivePath(archive_), "media",
                                jet::LockType::ReadOnly);
    printRows(media.rows(), *format_.makeWriter(context));
    media.close();
    return ExitCode::Done;
}

}  // namespace cli
