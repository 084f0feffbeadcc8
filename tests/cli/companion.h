#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cli/context.h"
#include "cli/interruption.h"
#include "cli/messages.h"
#include "cli/program.h"
#include "jet/engine.h"
#include "platform/platform.h"
#include "tests/archive/memory_files.h"
#include "tests/support/fake_platform.h"
#include "tests/support/temporary_folder.h"

namespace support {

/// An interruption that a test asks for.
class ScriptedInterruption : public cli::Interruption {
  public:
    void watch() override { isWatched = true; }
    bool isRequested() const override { return isRequestedNow; }

    bool isWatched = false;
    bool isRequestedNow = false;
};

/// What a call of the companion gave.
struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

/// Runs the companion's commands in this process, each with an engine of its own as a process has.
class Companion {
  public:
    explicit Companion(platform::Platform& platform) : platform_(platform) {}

    Outcome run(const std::vector<std::string>& arguments) {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        jet::Engine engine(platform_.files());
        cli::Messages messages(err, errIsTerminal, [this] { return columns; });
        cli::Context context{platform_,    engine,        in,     out, messages, interruption,
                             inIsTerminal, outIsTerminal, "9.8.7"};
        const cli::ExitCode code = cli::runProgram(arguments, context);
        return {static_cast<int>(code), out.str(), err.str()};
    }

    /// The standard output of a call that must succeed.
    std::string output(const std::vector<std::string>& arguments) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }

    std::string input;
    bool inIsTerminal = false;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    int columns = 80;
    ScriptedInterruption interruption;

  private:
    platform::Platform& platform_;
};

/// A machine in memory with the drive d: "DISK", an empty archive "/a.mdb", and the companion.
class CompanionTest : public testing::Test {
  protected:
    CompanionTest() {
        machine.opener = &files;
        FakeDrive& drive = machine.machineDrives.add('d', "DISK", 1);
        drive.folder = "/media/disk";
        drive.totalBytes = 700ULL << 20;
        drive.totalFree = 100ULL << 20;
        machine.disk.addFolder("d:\\");
        companion.output({"create", archive});
    }

    /// Scans d: as a new medium; it must succeed.
    std::string scan(const std::string& name = "Name") {
        return companion.output({"scan", "d:", archive, "--name", name});
    }
    /// "name|path" of every record, one a line, in the order of the table.
    std::vector<std::string> records(const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments{"records", archive};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return firstColumns(companion.output(arguments), 2);
    }
    /// One field of the only row of table `media`.
    std::string medium(std::size_t field) {
        std::istringstream lines(companion.output({"media", archive, "--format", "tsv"}));
        std::string line;
        std::getline(lines, line);
        std::getline(lines, line);
        return fields(line).at(field);
    }

    static std::vector<std::string> fields(const std::string& line) {
        std::vector<std::string> result(1);
        for (const char c : line) {
            if (c == '\t') {
                result.emplace_back();
            } else {
                result.back() += c;
            }
        }
        return result;
    }
    static std::vector<std::string> firstColumns(const std::string& tsv, std::size_t count) {
        std::vector<std::string> result;
        std::istringstream lines(tsv);
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line)) {
            const std::vector<std::string> all = fields(line);
            std::string& row = result.emplace_back(all.at(0));
            for (std::size_t i = 1; i < count; ++i) {
                row += "|" + all.at(i);
            }
        }
        return result;
    }

    static constexpr std::size_t labelField = 1;
    static constexpr std::size_t nameField = 2;
    static constexpr std::size_t sizeField = 3;
    static constexpr std::size_t typeField = 4;
    static constexpr std::size_t archiveDateField = 6;
    static constexpr std::size_t archiveUpdateField = 7;
    static constexpr std::size_t numberFilesField = 8;

    const std::string archive = "/verdolin-memory/a.mdb";
    MemoryFiles files;
    FakePlatform machine;
    Companion companion{machine};
};

/// The machine that the tests run on, with a temporary folder.
class RealCompanionTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::unique_ptr<platform::Platform> machine =
        platform::createPlatform(folder.pathOf("no settings.ini"));
    Companion companion{*machine};
};

}  // namespace support
