#include "cli/scan_command.h"

#include <CLI/CLI.hpp>

#include "base/archive_location.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "cli/medium_scan.h"
#include "cli/messages.h"

namespace cli {

void ScanCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "WHAT", "A drive such as d:, or a folder", what_);
    addArchiveArgument(app, "ARCHIVE", "The archive's file, which must exist", archive_);
    app.add_option("--name", mediaName_, "Your name for the medium; an update keeps the stored one")
        ->required()
        ->type_name("NAME");
    app.add_option("--label", label_, "Take this label in the place of the volume's own")
        ->type_name("LABEL");
    CLI::Option* const update =
        app.add_option("--update", update_, "Replace the records of this medium")
            ->type_name("MEDIAID");
    app.add_flag("--yes", isConfirmed_, "Update also when the stored medium looks like another one")
        ->needs(update);
    CLI::Option* const progress = app.add_flag("--progress", forcesProgress_,
                                               "Show progress also where there is no terminal");
    app.add_flag("--quiet", isQuiet_, "Show no progress")->excludes(progress);
}

ExitCode ScanCommand::run(Context& context) {
    ScanRequest request;
    request.what = what_;
    request.archive = base::splitArchivePath(archive_);
    request.name = mediaName_;
    request.label = label_;
    request.update = update_;
    request.isConfirmed = isConfirmed_;
    request.progress = shownProgress(context);
    return MediumScan(context, std::move(request)).run();
}

ProgressLine::Shown ScanCommand::shownProgress(const Context& context) const {
    const bool isShown = forcesProgress_ || (!isQuiet_ && context.messages.isTerminal());
    return isShown ? ProgressLine::Shown::Yes : ProgressLine::Shown::No;
}

}  // namespace cli
