#include "cli/stats_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <utility>

#include "cli/archive_option.h"
#include "cli/context.h"
#include "search/breakdown.h"

namespace cli {
namespace {

using search::Grouping;

constexpr std::array<std::pair<std::string_view, Grouping>, 5> groupings{
    {{"medium", Grouping::Medium},
     {"ext", Grouping::Extension},
     {"year", Grouping::Year},
     {"size", Grouping::SizeClass},
     {"keywords", Grouping::Keywords}}};

Grouping groupingOf(std::string_view name) {
    const auto* const found =
        std::ranges::find(groupings, name, &std::pair<std::string_view, Grouping>::first);
    return found == groupings.end() ? Grouping::Medium : found->second;
}

std::vector<Cell> cellsOf(const std::string& label, const search::BreakdownLine& line) {
    const std::string atLeast = line.isExact ? "" : "+";
    return {Cell::ofText(label),
            Cell::ofNumber(static_cast<std::int64_t>(line.entries)),
            Cell::ofNumber(static_cast<std::int64_t>(line.files)),
            {Cell::Kind::Number, std::to_string(line.bytes) + atLeast},
            Cell::ofText(line.term)};
}

}  // namespace

void StatsCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    query_.addTo(app, QueryLine::Needed::No);
    std::vector<std::string> names;
    names.reserve(groupings.size());
    for (const auto& [name, grouping] : groupings) {
        names.emplace_back(name);
    }
    app.add_option("--by", by_, "What to count by: medium, ext, year, size or keywords")
        ->check(CLI::IsMember(names).description(""))
        ->type_name("WHAT")
        ->capture_default_str();
    format_.addTo(app);
}

ExitCode StatsCommand::run(Context& context) {
    const auto index = readIndex(context, archive_);
    const std::vector<search::Row> rows = findRows(index, query_.read(context), false);
    const Grouping grouping = groupingOf(by_);
    search::Breakdown breakdown(*index, rows, {grouping});
    breakdown.run(search::Budget::unlimited());
    const auto writer = format_.makeWriter(context);
    writer->begin(
        {{by_, false}, {"entries", true}, {"files", true}, {"bytes", true}, {"query", false}});
    for (const search::BreakdownLine& line : breakdown.lines(grouping)) {
        writer->row(cellsOf(line.label, line));
    }
    // The other formats are for programs, which can add up themselves.
    if (format_.format() == OutputFormat::Text) {
        writer->row(cellsOf("all", breakdown.total()));
    }
    writer->end();
    return ExitCode::Done;
}

}  // namespace cli
