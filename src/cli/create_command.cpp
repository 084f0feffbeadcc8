#include "cli/create_command.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "cli/archive_files.h"
#include "cli/archive_option.h"
#include "cli/context.h"
#include "cli/messages.h"

namespace cli {
namespace {

bool hasUsualExtension(const std::string& path) {
    constexpr std::string_view extension = ".mdb";
    return path.size() > extension.size() &&
           base::equalIgnoringCase(std::string_view(path).substr(path.size() - extension.size()),
                                   extension);
}

}  // namespace

void CreateCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file, usually with the extension .mdb",
                       archive_);
    app.add_flag("--force", replaces_, "Replace a file that is there already");
    app.add_option("--format", format_,
                   "jet4 stores any name; jet3 is for programs that read no other format, and has "
                   "only the characters of code page 1252")
        ->check(CLI::IsMember(std::vector<std::string>{"jet3", "jet4"}).description(""))
        ->type_name("FORMAT")
        ->capture_default_str();
}

ExitCode CreateCommand::run(Context& context) {
    create(context);
    if (!hasUsualExtension(archive_)) {
        context.messages.report(
            archive_ + ": created; other programs look for archives by the extension .mdb");
    }
    return ExitCode::Done;
}

jet::FileFormat CreateCommand::format() const {
    return format_ == "jet3" ? jet::FileFormat::Jet3 : jet::FileFormat::Jet4;
}

void CreateCommand::create(Context& context) const {
    if (replaces_) {
        replaceArchive(context, archive_, format());
        return;
    }
    try {
        createNewArchive(context, archive_, format());
    } catch (const base::EngineFailure& failure) {
        if (failure.fault() == base::EngineFault::Exists && isReplaceable(archive_)) {
            throw base::EngineFailure(failure.fault(), failure.text() + "; --force replaces it");
        }
        throw;
    }
}

}  // namespace cli
