#include "cli/records_command.h"

#include <CLI/CLI.hpp>

#include "archive/archive_table.h"
#include "base/archive_location.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "cli/row_filter.h"
#include "cli/row_printer.h"

namespace cli {

void RecordsCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    app.add_option("--media", mediaId_, "Only the records of this medium")->type_name("ID");
    app.add_option("--kind", kind_, "Only these records: folder or file")
        ->check(CLI::IsMember({"folder", "file"}).description(""))
        ->type_name("KIND");
    format_.addTo(app);
}

ExitCode RecordsCommand::run(Context& context) {
    archive::ArchiveTable records(context.engine, base::splitArchivePath(archive_), "main",
                                  jet::LockType::ReadOnly);
    records.rows().setFilter(filter());
    printRows(records.rows(), *format_.makeWriter(context));
    records.close();
    return ExitCode::Done;
}

std::string RecordsCommand::filter() const {
    const std::string medium = mediaId_ ? mediumFilter(*mediaId_) : std::string();
    const std::string kind = kind_ ? "folder='" + *kind_ + "'" : std::string();
    return medium + (medium.empty() || kind.empty() ? "" : " AND ") + kind;
}

}  // namespace cli
