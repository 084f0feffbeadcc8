#include "cli/export_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "base/failure.h"
#include "cli/archive_option.h"
#include "cli/query_line.h"
#include "search/copies.h"

namespace cli {

void ExportCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    printer_.addTo(app);
    app.add_option("--media", mediaId_, "Only the entries of this medium")->type_name("ID");
}

ExitCode ExportCommand::run(Context& context) {
    const auto index = readIndex(context, archive_);
    if (printer_.showsCopies()) {
        index->copies().finish();
    }
    std::vector<search::Row> rows;
    for (search::Row row = 0; row < index->size(); ++row) {
        if (!mediaId_ || index->medium(row).mediaId == *mediaId_) {
            rows.push_back(row);
        }
    }
    if (rows.empty()) {
        requireMedium(*index);
    }
    printer_.print(context, *index, rows);
    return ExitCode::Done;
}

void ExportCommand::requireMedium(const search::Index& index) const {
    if (mediaId_ && std::ranges::find(index.media(), *mediaId_, &base::MediaInfo::mediaId) ==
                        index.media().end()) {
        throw base::InvalidArgumentFailure(archive_ + ": there is no medium " +
                                           std::to_string(*mediaId_) +
                                           "; \"vdln media\" lists them");
    }
}

}  // namespace cli
