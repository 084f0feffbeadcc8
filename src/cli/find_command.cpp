#include "cli/find_command.h"

#include <CLI/CLI.hpp>

#include "base/failure.h"
#include "cli/archive_option.h"
#include "cli/checked_output.h"
#include "cli/context.h"
#include "cli/messages.h"
#include "cli/visible_text.h"

namespace cli {
namespace {

std::string refuseUnknownSort(const std::string& text) {
    const std::string name = text.substr(text.starts_with('-') ? 1 : 0);
    return search::columnOfKey(name) ? std::string() : "there is no column " + name;
}

}  // namespace

void FindCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    query_.addTo(app, QueryLine::Needed::Yes);
    printer_.addTo(app);
    app.add_option("--limit", limit_, "At most so many entries")
        ->check(CLI::PositiveNumber.description(""))
        ->type_name("N");
    app.add_option("--sort", sort_,
                   "Order by this column; with - before it (--sort=-size) the other way round")
        ->check(CLI::Validator(refuseUnknownSort, ""))
        ->type_name("COLUMN");
    CLI::Option* const nul = app.add_flag(
        "-0", separatesByNul_, "Print nothing but paths, each followed by a NUL character");
    app.add_flag("-c", countsOnly_, "Print nothing but the number of entries")->excludes(nul);
    app.footer("Exit status: 0 something was found, 1 nothing was found, 2 failed.");
}

ExitCode FindCommand::run(Context& context) {
    try {
        const ExitCode code = find(context);
        flushChecked(context.out);
        return code;
    } catch (const base::Failure& failure) {
        context.messages.report(failure.text());
        return ExitCode::SearchFailed;
    }
}

ExitCode FindCommand::find(Context& context) const {
    const auto index = readIndex(context, archive_);
    search::Query query = query_.read(context);
    if (limit_) {
        query.limit = limit_;
    }
    if (!sort_.empty()) {
        const bool isDescending = sort_.front() == '-';
        query.sort = {{*search::columnOfKey(sort_.substr(isDescending ? 1 : 0)), isDescending}};
    }
    const bool needsCopies = !countsOnly_ && !separatesByNul_ && printer_.showsCopies();
    const std::vector<search::Row> rows = findRows(index, query, needsCopies);
    print(context, *index, rows);
    return rows.empty() ? ExitCode::NothingFound : ExitCode::Done;
}

void FindCommand::print(Context& context, const search::Index& index,
                        const std::vector<search::Row>& rows) const {
    if (countsOnly_) {
        writeChecked(context.out, std::to_string(rows.size()) + "\n");
    } else if (separatesByNul_) {
        for (const search::Row row : rows) {
            const std::string path = index.wholePath(row);
            writeChecked(context.out, (context.outIsTerminal ? visibleText(path) : path) + '\0');
        }
    } else if (!rows.empty() || !printer_.isForPeople()) {
        printer_.print(context, index, rows);
    }
}

}  // namespace cli
