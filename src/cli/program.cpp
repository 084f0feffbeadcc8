#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <memory>
#include <new>

#include "base/failure.h"
#include "cli/checked_output.h"
#include "cli/command.h"
#include "cli/context.h"
#include "cli/messages.h"

namespace cli {
namespace {

constexpr const char* exitCodes =
    "Results go to standard output, messages and progress to standard error.\n"
    "Exit status: 0 done, 1 failed, 2 wrong usage, 3 done but some entries were left out\n"
    "or stored inexactly.";

/// The command line and the command that it names.
class CommandLine {
  public:
    explicit CommandLine(const std::string& version)
        : app_("Catalogues removable and fixed media in archives.", "vdln"),
          commands_(allCommands()) {
        app_.require_subcommand(1);
        // The same command line means the same everywhere: "/a.mdb" is a path, never an option.
        app_.allow_windows_style_options(false);
        app_.footer(exitCodes);
        app_.set_version_flag("--version", "vdln " + version, "Print the version and exit");
        app_.set_help_flag("-h,--help", "Print this help and exit");
        for (const auto& command : commands_) {
            CLI::App* const part = app_.add_subcommand(command->name(), command->description());
            part->set_version_flag("--version", "vdln " + version, "Print the version and exit");
            command->addOptions(*part);
        }
    }

    void parse(std::vector<std::string> arguments) {
        if (!arguments.empty() && !arguments[0].starts_with('-') && !isCommand(arguments[0])) {
            throw CLI::ValidationError("there is no command " + arguments[0]);
        }
        if (!arguments.empty() && takesQuery(arguments[0])) {
            keepBrackets(arguments);
        }
        std::ranges::reverse(arguments);
        app_.parse(std::move(arguments));
    }

    /// After parse().
    Command& command() {
        const std::string name = app_.get_subcommands().at(0)->get_name();
        return **std::ranges::find(commands_, name, [](const auto& each) { return each->name(); });
    }

    std::string help() const { return app_.help(); }

    /// "vdln scan": as far as the command line was understood.
    std::string understood() const {
        const auto parts = app_.get_subcommands();
        return parts.empty() ? "vdln" : "vdln " + parts.front()->get_name();
    }

  private:
    bool takesQuery(const std::string& name) const {
        return std::ranges::any_of(commands_, [&](const auto& each) {
            return each->name() == name && each->takesQuery();
        });
    }

    /// The library takes "[x]" among several words for a list; a blank before it, which means
    /// nothing in a query, keeps it a text. Values of options stay as they are.
    static void keepBrackets(std::vector<std::string>& arguments) {
        for (std::size_t i = 2; i < arguments.size(); ++i) {
            const bool isValue = arguments[i - 1].starts_with('-') && arguments[i - 1] != "--";
            if (!isValue && arguments[i].starts_with('[')) {
                arguments[i].insert(0, " ");
            }
        }
    }

    bool isCommand(const std::string& name) const {
        return std::ranges::any_of(commands_,
                                   [&](const auto& each) { return each->name() == name; });
    }

    CLI::App app_;
    std::vector<std::unique_ptr<Command>> commands_;
};

ExitCode parseAndRun(const std::vector<std::string>& arguments, Context& context) {
    CommandLine line(context.version);
    try {
        line.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        writeChecked(context.out, line.help());
        return ExitCode::Done;
    } catch (const CLI::CallForVersion& version) {
        writeChecked(context.out, std::string(version.what()) + "\n");
        return ExitCode::Done;
    } catch (const CLI::ParseError& error) {
        context.messages.report("wrong usage: " + std::string(error.what()) + " (see " +
                                line.understood() + " --help)");
        return ExitCode::WrongUsage;
    }
    return line.command().run(context);
}

ExitCode runAndFlush(const std::vector<std::string>& arguments, Context& context) {
    const ExitCode code = parseAndRun(arguments, context);
    // What is still in the stream's memory may be what the disk has no room for.
    flushChecked(context.out);
    return code;
}

}  // namespace

ExitCode runProgram(const std::vector<std::string>& arguments, Context& context) noexcept {
    try {
        return runAndFlush(arguments, context);
    } catch (const base::Failure& failure) {
        context.messages.report(failure.text());
    } catch (const std::bad_alloc&) {
        context.messages.report("memory: there is not enough of it");
    } catch (const std::exception& error) {
        context.messages.report("internal error: " + std::string(error.what()));
    }
    return ExitCode::Failed;
}

}  // namespace cli
