#include "cli/check_command.h"

#include <CLI/CLI.hpp>

#include "cli/archive_option.h"
#include "cli/checked_output.h"
#include "cli/context.h"
#include "cli/messages.h"
#include "cli/visible_text.h"
#include "jet/checker.h"
#include "platform/platform.h"

namespace cli {
namespace {

using Kind = jet::CheckFinding::Kind;

std::string_view kindText(Kind kind) {
    switch (kind) {
        case Kind::Damage:
            return "damaged";
        case Kind::Unfinished:
            return "unfinished";
        case Kind::LostSpace:
            return "lost space";
    }
    return "";
}

std::string summaryOf(const jet::CheckReport& report) {
    return std::to_string(report.pageCount) + " pages, " + std::to_string(report.tableCount) +
           " tables, " + std::to_string(report.rowCount) + " rows: " +
           (report.isSound() ? "sound"
                             : std::to_string(report.count(Kind::Damage)) + " damaged, " +
                                   std::to_string(report.count(Kind::Unfinished)) + " unfinished") +
           "\n";
}

}  // namespace

void CheckCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "FILE", "The database file", file_);
}

ExitCode CheckCommand::run(Context& context) {
    const jet::CheckReport report = jet::checkDatabase(context.platform.files(), file_);
    for (const jet::CheckFinding& finding : report.findings()) {
        writeChecked(context.out, "page " + std::to_string(finding.page) + ": " +
                                      std::string(kindText(finding.kind)) + ": " +
                                      visibleText(finding.text) + "\n");
    }
    if (report.leftOut() > 0) {
        writeChecked(context.out,
                     "and " + std::to_string(report.leftOut()) + " more of the kind\n");
    }
    writeChecked(context.out, summaryOf(report));
    if (report.isSound()) {
        return ExitCode::Done;
    }
    context.messages.report(
        file_ + (report.isIntact()
                     ? ": a program ended in the middle of a change; the next one mends that"
                     : ": the database is damaged"));
    return ExitCode::Failed;
}

}  // namespace cli
