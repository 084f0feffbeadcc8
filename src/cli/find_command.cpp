#include "cli/find_command.h"

#include <CLI/CLI.hpp>

#include "base/archive_location.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "search/index_loader.h"
#include "search/query_parser.h"
#include "search/search_run.h"

namespace cli {

void FindCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    app.add_option("QUERY", words_, "What to look for")->type_name("");
    format_.addTo(app);
}

ExitCode FindCommand::run(Context& context) {
    const auto index = search::loadIndex(context.engine, base::splitArchivePath(archive_));
    std::string line;
    for (const std::string& word : words_) {
        line += (line.empty() ? "" : " ") + word;
    }
    const auto rows = search::findRows(index, search::parseQuery(line, 0));
    const auto writer = format_.makeWriter(context);
    std::vector<Column> columns;
    for (const search::ResultColumn column : search::allResultColumns) {
        columns.push_back({std::string(search::columnTitle(column)), search::isNumber(column)});
    }
    writer->begin(columns);
    for (const search::Row row : rows) {
        std::vector<Cell> cells;
        for (const search::ResultColumn column : search::allResultColumns) {
            cells.push_back(Cell::ofText(search::cellText(*index, row, column)));
        }
        writer->row(cells);
    }
    writer->end();
    return rows.empty() ? ExitCode::Failed : ExitCode::Done;
}

}  // namespace cli
