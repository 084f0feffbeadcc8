#include "cli/dump_command.h"

#include <CLI/CLI.hpp>

#include "archive/archive_table.h"
#include "base/archive_location.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "cli/row_printer.h"
#include "jet/database.h"

namespace cli {

void DumpCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "FILE", "Any Jet file, not only an archive", file_);
    app.add_option("TABLE", table_, "The table whose rows are printed; without it the names of all")
        ->type_name("");
    app.add_flag("--system", showsSystem_, "List the system's own tables as well");
    format_.addTo(app);
}

ExitCode DumpCommand::run(Context& context) {
    if (table_) {
        printTable(context);
    } else {
        printTables(context);
    }
    return ExitCode::Done;
}

void DumpCommand::printTables(Context& context) const {
    jet::Database database = jet::Database::open(context.engine, file_);
    const auto writer = format_.makeWriter(context);
    writer->begin({{"table", false}, {"rows", true}});
    for (const jet::TableSummary& table : database.tables()) {
        if (!table.system || showsSystem_) {
            writer->row({Cell::ofText(table.name), Cell::ofNumber(table.rowCount)});
        }
    }
    writer->end();
    database.close();
}

void DumpCommand::printTable(Context& context) const {
    archive::ArchiveTable table(context.engine, base::splitArchivePath(file_), *table_,
                                jet::LockType::ReadOnly);
    printRows(table.rows(), *format_.makeWriter(context));
    table.close();
}

}  // namespace cli
