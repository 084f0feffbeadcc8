#include "cli/program.h"

#include "tests/cli/companion.h"

namespace {

using support::Outcome;

class Program : public support::CompanionTest {};

const std::vector<std::string> commandNames{"create", "drives", "scan", "media", "records", "dump"};

TEST_F(Program, EveryCommandHasHelpAndVersion) {
    for (const std::string& name : commandNames) {
        const Outcome help = companion.run({name, "--help"});
        EXPECT_EQ(help.code, 0);
        EXPECT_NE(help.out.find("Usage: vdln " + name), std::string::npos) << help.out;
        EXPECT_EQ(help.err, "");
        EXPECT_EQ(companion.output({name, "--version"}), "vdln 9.8.7\n");
    }
    EXPECT_EQ(companion.output({"--version"}), "vdln 9.8.7\n");
}

TEST_F(Program, HelpNamesEveryCommand) {
    const std::string help = companion.output({"--help"});
    for (const std::string& name : commandNames) {
        EXPECT_NE(help.find("\n  " + name + " "), std::string::npos) << name;
    }
}

TEST_F(Program, WrongUsageIsTwoWithOneLineThatSaysWhatIsWrong) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{}, "A subcommand is required (see vdln --help)"},
        {{"burn"}, "there is no command burn (see vdln --help)"},
        {{"--burn"}, "A subcommand is required (see vdln --help)"},
        {{"create"}, "ARCHIVE is required (see vdln create --help)"},
        {{"create", ""}, "ARCHIVE: the path is empty (see vdln create --help)"},
        {{"scan", "d:", archive}, "--name is required (see vdln scan --help)"},
        {{"scan", "d:", archive, "--name", "x", "--yes"},
         "--yes requires --update (see vdln scan --help)"},
        {{"scan", "d:", archive, "--name", "x", "--quiet", "--progress"},
         "--progress excludes --quiet (see vdln scan --help)"},
        {{"media", archive, "--format", "xml"},
         "--format: xml not in {text,tsv,csv,json} (see vdln media --help)"},
        {{"records", archive, "--media", "one"},
         "Could not convert: --media = one (see vdln records --help)"},
        {{"records", archive, "--kind", "link"},
         "--kind: link not in {folder,file} (see vdln records --help)"},
        {{"records", archive, "more"},
         "The following argument was not expected: more (see vdln records --help)"},
    };
    for (const auto& [arguments, message] : cases) {
        const Outcome outcome = companion.run(arguments);
        EXPECT_EQ(outcome.code, 2);
        EXPECT_EQ(outcome.err, "vdln: wrong usage: " + message + "\n");
        EXPECT_EQ(outcome.out, "");
    }
}

TEST_F(Program, AMissingArchiveIsOneLine) {
    for (const char* command : {"media", "records", "dump"}) {
        const Outcome outcome = companion.run({command, "/none.mdb"});
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err, "vdln: /none.mdb: there is no such file\n");
    }
}

TEST_F(Program, AFileThatIsNoJetFileIsOneLine) {
    files.write("/text.mdb", "just a text\n");
    for (const char* command : {"media", "records", "dump"}) {
        const Outcome outcome = companion.run({command, "/text.mdb"});
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err,
                  "vdln: /text.mdb: this is no Jet database but another kind of file\n");
        EXPECT_EQ(outcome.out, "");
    }
}

}  // namespace
