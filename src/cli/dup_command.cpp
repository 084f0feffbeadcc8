#include "cli/dup_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/archive_option.h"
#include "cli/context.h"

namespace cli {
namespace {

void printGroup(const search::Index& index, const search::DuplicateGroup& group,
                std::int64_t number, TableWriter& writer) {
    const std::string atLeast = group.isExact ? "" : "+";
    for (const search::Row row : group.rows) {
        writer.row({Cell::ofNumber(number),
                    Cell::ofText(group.isFolder ? "folder" : "file"),
                    {Cell::Kind::Number, std::to_string(group.bytes) + atLeast},
                    {Cell::Kind::Number, std::to_string(group.wasted) + atLeast},
                    Cell::ofNumber(index.medium(row).mediaId),
                    Cell::ofText(index.wholePath(row))});
    }
}

std::string refuseUnknownParts(const std::string& list) {
    for (const std::string& part : listedNames(list)) {
        if (part != "name" && part != "size" && part != "date") {
            return "\"" + part + "\" is neither name, size nor date";
        }
    }
    return {};
}

}  // namespace

void DupCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    query_.addTo(app, QueryLine::Needed::No);
    app.add_option("--by", by_, "What duplicates have in common: name, size, date")
        ->check(CLI::Validator(refuseUnknownParts, ""))
        ->type_name("WHAT")
        ->capture_default_str();
    format_.addTo(app);
}

search::SameBy DupCommand::sameBy() const {
    const std::vector<std::string> given = listedNames(by_);
    const auto isGiven = [&given](const char* what) {
        return std::ranges::find(given, what) != given.end();
    };
    return {isGiven("name"), isGiven("size"), isGiven("date")};
}

ExitCode DupCommand::run(Context& context) {
    const auto index = readIndex(context, archive_);
    std::vector<search::Row> rows = findRows(index, query_.read(context), false);
    std::ranges::sort(rows);
    search::DuplicateSearch duplicates(*index, std::move(rows), sameBy());
    duplicates.run(search::Budget::unlimited());
    const auto writer = format_.makeWriter(context);
    writer->begin({{"group", true},
                   {"kind", false},
                   {"size", true},
                   {"wasted", true},
                   {"mediaid", true},
                   {"path", false}});
    std::int64_t number = 0;
    for (const search::DuplicateGroup& group : duplicates.groups()) {
        printGroup(*index, group, ++number, *writer);
    }
    writer->end();
    return ExitCode::Done;
}

}  // namespace cli
