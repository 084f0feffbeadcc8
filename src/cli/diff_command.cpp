#include "cli/diff_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

#include "base/failure.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "cli/index_scan.h"
#include "cli/query_line.h"
#include "search/media_comparison.h"
#include "search/text_fold.h"

namespace cli {
namespace {

using search::Difference;

std::string kindText(Difference::Kind kind) {
    switch (kind) {
        case Difference::Kind::Added:
            return "added";
        case Difference::Kind::Removed:
            return "removed";
        case Difference::Kind::Changed:
            return "changed";
        case Difference::Kind::Moved:
            break;
    }
    return "moved";
}

Cell pathCell(const search::Index& index, search::Row row) {
    return row == Difference::none ? Cell() : Cell::ofText(search::pathOnMedium(index, row));
}

Cell sizeCell(const search::Index& index, search::Row row) {
    if (row == Difference::none || index.isFolder(row)) {
        return {};
    }
    return {Cell::Kind::Number,
            std::to_string(index.leastSize(row)) + (index.isSizeKnown(row) ? "" : "+")};
}

Cell dateCell(const search::Index& index, search::Row row) {
    return row == Difference::none ? Cell() : Cell::ofText(index.modifiedText(row));
}

}  // namespace

void DiffCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    addArchiveArgument(app, "LEFT", "A medium: its number, name or label", left_);
    addArchiveArgument(app, "RIGHT", "Another medium, or a folder, or a drive such as d:", right_);
    format_.addTo(app);
}

ExitCode DiffCommand::run(Context& context) {
    const auto left = readIndex(context, archive_);
    const std::int32_t leftId = requireMedium(*left, left_);
    const auto medium = mediumNamed(*left, right_);
    const ScannedIndex right = medium ? ScannedIndex{left, false} : scanIndex(context, right_);
    const auto differences =
        search::compareMedia({*left, leftId}, {*right.index, medium.value_or(0)});
    const auto writer = format_.makeWriter(context);
    writer->begin({{"difference", false},
                   {"left", false},
                   {"right", false},
                   {"leftsize", true},
                   {"rightsize", true},
                   {"leftmodified", false},
                   {"rightmodified", false}});
    for (const Difference& difference : differences) {
        writer->row({Cell::ofText(kindText(difference.kind)), pathCell(*left, difference.left),
                     pathCell(*right.index, difference.right), sizeCell(*left, difference.left),
                     sizeCell(*right.index, difference.right), dateCell(*left, difference.left),
                     dateCell(*right.index, difference.right)});
    }
    writer->end();
    return right.isIncomplete ? ExitCode::Incomplete : ExitCode::Done;
}

/// The medium of that number, or the only one of that name or label.
std::optional<std::int32_t> DiffCommand::mediumNamed(const search::Index& index,
                                                     const std::string& name) const {
    std::int32_t id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    const bool isNumber = error == std::errc() && end == name.data() + name.size();
    const std::string folded = search::foldedText(name);
    std::optional<std::int32_t> found;
    for (const base::MediaInfo& medium : index.media()) {
        if (isNumber && medium.mediaId == id) {
            return id;
        }
        if (search::foldedText(medium.mediaName) == folded ||
            search::foldedText(medium.mediaLabel) == folded) {
            if (found) {
                throw base::InvalidArgumentFailure(archive_ + ": several media are called " + name +
                                                   "; \"vdln media\" lists their numbers");
            }
            found = medium.mediaId;
        }
    }
    return found;
}

std::int32_t DiffCommand::requireMedium(const search::Index& index, const std::string& name) const {
    const auto medium = mediumNamed(index, name);
    if (!medium) {
        throw base::InvalidArgumentFailure(archive_ + ": there is no medium " + name +
                                           "; \"vdln media\" lists them");
    }
    return *medium;
}

}  // namespace cli
