// The built program as a shell sees it: what only a process of its own shows.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/cli/shell.h"

namespace {

using support::ShellResult;

class Vdln : public testing::Test {
  protected:
    ShellResult run(const std::string& command) { return shell.run(command); }
    std::string output(const std::string& command) {
        const ShellResult result = run(command);
        EXPECT_EQ(result.code, 0) << command << "\n" << result.err;
        return result.out;
    }

    void makeOddFolder() {
        for (const char* name :
             {"plain.txt", "Αθήνα/ακρόπολη.jpg", "東京/写真 😀.png", "two\nlines", "tab\there",
              "comma, \"marks\"", "back\\slash", "not utf8 \xE9\xFF", "deep/er/and/deeper/file",
              " blanks ", "-dash", "esc\x1b[31m"}) {
            folder.makeFile(std::string("tree/") + name, name);
        }
        folder.makeFolder("tree/empty");
        folder.makeLink("tree/link", "plain.txt");
        folder.makeLink("tree/link to a folder", "deep");
        folder.makeLink("tree/dangling", "nowhere");
        folder.makeSparseFile("tree/large", 3'000'000'000ULL);
    }

    support::TemporaryFolder folder;
    support::Shell shell{folder};
};

/// A folder large enough that something can happen while it is scanned: $TREE/tree, made once.
class VdlnOnALargeFolder : public Vdln {
  protected:
    static constexpr int entries = 8 * (1 + 3000);

    static void SetUpTestSuite() {
        large = std::make_unique<support::TemporaryFolder>();
        const ShellResult result = support::Shell(*large).run(
            "mkdir tree && cd tree && for d in 1 2 3 4 5 6 7 8; do "
            "mkdir $d && (cd $d && seq 3000 | xargs touch); done");
        ASSERT_EQ(result.code, 0) << result.err;
    }
    static void TearDownTestSuite() { large.reset(); }

    VdlnOnALargeFolder() { output("ln -s '" + large->path() + "' large && $VDLN create a.mdb"); }

    /// Scans in the background, and goes on in the shell when the first entry has been stored.
    ShellResult runDuringScan(const std::string& options, const std::string& commands) {
        return run("$VDLN scan large/tree a.mdb --name x --progress " + options +
                   " 2>err & p=$!\nuntil grep -q entr err 2>/dev/null; do sleep 0.01; done\n" +
                   commands);
    }
    /// The same, tried again from the same archive when the scan was over before the commands came.
    ShellResult breakOffScan(const std::string& options, const std::string& commands) {
        constexpr int attempts = 20;
        output("cp a.mdb before.mdb");
        ShellResult result = runDuringScan(options, commands);
        for (int attempt = 1; result.code == 0 && attempt < attempts; ++attempt) {
            output("cp before.mdb a.mdb");
            result = runDuringScan(options, commands);
        }
        return result;
    }
    int number(const std::string& command) { return std::stoi(output(command)); }
    int storedRecords() { return number("$VDLN records a.mdb | tail -n +2 | wc -l"); }
    int storedCount() { return number("$VDLN media a.mdb --format tsv | tail -n 1 | cut -f 9"); }

    static std::unique_ptr<support::TemporaryFolder> large;
};

std::unique_ptr<support::TemporaryFolder> VdlnOnALargeFolder::large;

using Table = std::vector<std::vector<std::string>>;

/// The fields of a CSV text; NULL and the empty text are the same.
Table parsedCsv(const std::string& text) {
    Table rows;
    std::vector<std::string> row(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"') {
            // A doubled mark inside quotes is one mark.
            if (isQuoted && i + 1 < text.size() && text[i + 1] == '"') {
                row.back() += text[++i];
            } else {
                isQuoted = !isQuoted;
            }
        } else if (!isQuoted && c == ',') {
            row.emplace_back();
        } else if (!isQuoted && c == '\n') {
            rows.push_back(std::move(row));
            row.assign(1, {});
        } else if (isQuoted || c != '\r') {
            row.back() += c;
        }
    }
    return rows;
}

/// The program that the rows are compared with knows no characters beyond 16 bits and writes "??".
std::string as16Bit(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const bool isLong = static_cast<unsigned char>(text[i]) >= 0xF0;
        result += isLong ? "??" : text.substr(i, 1);
        i += isLong ? 4 : 1;
    }
    return result;
}

TEST_F(Vdln, ExitCodes) {
    EXPECT_EQ(run("$VDLN create a.mdb").code, 0);
    EXPECT_EQ(run("$VDLN create a.mdb").code, 1);
    EXPECT_EQ(run("$VDLN create").code, 2);
    EXPECT_EQ(run("$VDLN --version").code, 0);
    EXPECT_EQ(run("$VDLN scan none a.mdb --name x").code, 1);
    folder.makeFile("tree/" + std::string(200, 'x') + "/" + std::string(200, 'y') + "/z");
    EXPECT_EQ(run("$VDLN scan tree a.mdb --name x").code, 3);
}

TEST_F(Vdln, ForceReplacesTheFileThatALinkLeadsTo) {
    output("echo old >real.mdb && ln -s real.mdb a.mdb && $VDLN create a.mdb --force");
    EXPECT_EQ(output("test -L a.mdb && $VDLN media real.mdb | wc -l"), "1\n");
}

TEST_F(Vdln, AsManyRecordsAsFindFindsEntries) {
    makeOddFolder();
    output("$VDLN create a.mdb && $VDLN scan tree a.mdb --name Odd");
    EXPECT_EQ(output("find tree -mindepth 1 -printf x | wc -c"),
              output("expr $($VDLN records a.mdb | wc -l) - 1"));
    EXPECT_EQ(output("find tree -mindepth 1 -type d -printf x | wc -c"),
              output("expr $($VDLN records a.mdb --kind folder | wc -l) - 1"));
}

TEST_F(Vdln, MdbExportReadsTheSameRows) {
    if (run("command -v mdb-export").code != 0) {
        GTEST_SKIP() << "mdb-export is not installed";
    }
    makeOddFolder();
    output("$VDLN create a.mdb && $VDLN scan tree a.mdb --name 'Odd names' --label Λ");
    output("touch tree/new && $VDLN scan tree a.mdb --name x --label Λ --update 1");
    for (const auto& [command, table] :
         {std::pair("records a.mdb", "main"), std::pair("media a.mdb", "media")}) {
        const std::string ours = output("$VDLN " + std::string(command) + " --format csv");
        EXPECT_EQ(ours, output("$VDLN dump a.mdb " + std::string(table) + " --format csv"));
        EXPECT_EQ(parsedCsv(as16Bit(ours)),
                  parsedCsv(output("mdb-export a.mdb " + std::string(table))));
        EXPECT_GT(parsedCsv(ours).size(), 1U);
    }
}

TEST_F(VdlnOnALargeFolder, AnInterruptedScanKeepsWhatIsStored) {
    const ShellResult result =
        breakOffScan("", "kill -INT $p; wait $p; code=$?; tail -n 1 err; exit $code");
    EXPECT_EQ(result.code, 1);
    const int stored = storedRecords();
    EXPECT_GT(stored, 0);
    EXPECT_LT(stored, entries);
    EXPECT_EQ(result.out, "vdln: large/tree: the scan was interrupted; medium 1 keeps the " +
                              std::to_string(stored) + " entries stored so far\n");
    EXPECT_EQ(storedCount(), stored);
}

TEST_F(VdlnOnALargeFolder, AKilledUpdateLeavesAnArchiveThatTheNextOneMends) {
    output("$VDLN scan large/tree a.mdb --name x");
    EXPECT_EQ(breakOffScan("--update 1", "kill -KILL $p; wait $p").code, 128 + 9);
    EXPECT_EQ(number("$VDLN records a.mdb | tail -n +2 | cut -f 1,2 | sort -u | wc -l"), entries);
    output("$VDLN scan large/tree a.mdb --name x --update 1");
    EXPECT_EQ(storedRecords(), entries);
    EXPECT_EQ(storedCount(), entries);
}

TEST_F(VdlnOnALargeFolder, AClosedPipeIsAFailureAndNoEndBySignal) {
    output("$VDLN scan large/tree a.mdb --name x");
    const ShellResult result =
        run("{ $VDLN records a.mdb 2>err; echo $? >code; } | head -n 1 >line; cat code err");
    EXPECT_EQ(result.out, "1\nvdln: standard output: Broken pipe\n");
}

TEST_F(VdlnOnALargeFolder, AFolderThatVanishesInMidWalkIsAFailure) {
    const ShellResult result =
        breakOffScan("",
                     "mv large/tree large/gone; wait $p; code=$?; mv large/gone large/tree\n"
                     "grep ^vdln: err; exit $code");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "vdln: " + large->path() +
                              "/tree: No such file or directory; medium 1 keeps the " +
                              std::to_string(storedRecords()) + " entries stored so far\n");
    EXPECT_EQ(storedCount(), storedRecords());
}

TEST_F(VdlnOnALargeFolder, TwoScansAtATimeDoNotMix) {
    const ShellResult result =
        runDuringScan("", "$VDLN scan large/tree a.mdb --name second; wait $p");
    EXPECT_EQ(result.code, 0);
    // The second waits for a while; its turn comes, or it says that it did not.
    const std::string media = output("$VDLN media a.mdb --format tsv | tail -n +2 | cut -f 1,9");
    if (result.err.empty()) {
        EXPECT_EQ(media, "1\t24008\n2\t24008\n");
    } else {
        EXPECT_EQ(result.err, "vdln: a.mdb: the file is in use by another program\n");
        EXPECT_EQ(media, "1\t24008\n");
    }
}

TEST_F(VdlnOnALargeFolder, TaggingDuringAScanHarmsNeither) {
    output("mkdir small && touch small/a small/b small/c && $VDLN scan small a.mdb --name small");
    // One after the other as long as the scan runs: each is done whole, or finds the file in use.
    const ShellResult result = runDuringScan(
        "",
        "n=0; while kill -0 $p 2>/dev/null; do n=$((n+1))\n"
        "$VDLN tag a.mdb medium:1 file: --keywords word$n --notes1 note$n >said 2>why\n"
        "code=$?; case $code in 0) echo $n ;; 1) grep -q 'in use' why || exit 9 ;;"
        " *) exit 8 ;; esac; done; wait $p");
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    EXPECT_EQ(run("$VDLN check a.mdb").code, 0);
    EXPECT_EQ(storedRecords(), entries + 3);
    EXPECT_EQ(number("$VDLN find a.mdb -c medium:2 !has:kw !has:note"), entries);
    output("$VDLN tag a.mdb medium:1 file: --keywords last --notes1 last");
    EXPECT_EQ(number("$VDLN find a.mdb -c medium:1 kw:last note:last"), 3);
    EXPECT_EQ(run("$VDLN check a.mdb").code, 0);
}

TEST_F(Vdln, AFullDiskBehindStandardOutputIsAFailure) {
    output("$VDLN create a.mdb");
    for (const char* command : {"records a.mdb", "drives", "--help", "dump a.mdb"}) {
        const ShellResult result = run("$VDLN " + std::string(command) + " >/dev/full");
        EXPECT_EQ(result.code, 1) << command;
        EXPECT_EQ(result.err, "vdln: standard output: No space left on device\n") << command;
    }
}

TEST_F(Vdln, AClosedStandardOutputDoesNotGetIntoTheArchive) {
    makeOddFolder();
    output("$VDLN create a.mdb");
    EXPECT_EQ(run("$VDLN scan tree a.mdb --name x >&-").code, 1);
    EXPECT_EQ(output("$VDLN dump a.mdb | tail -n 1"), "media\t1\n");
    EXPECT_EQ(output("head -c 19 a.mdb | tail -c 15"), "Standard Jet DB");
}

TEST_F(Vdln, AnUnreadableFolderIsNamed) {
    folder.makeFile("tree/open/file");
    folder.makeFile("tree/shut/file");
    folder.setPermissions("tree/shut", 0);
    output("$VDLN create a.mdb");
    // The superuser reads everything.
    const ShellResult result =
        run("if [ \"$(id -u)\" = 0 ]; then\n"
            "  chmod 755 . && chmod 666 a.mdb\n"
            "  command -v setpriv >/dev/null || exit 77\n"
            "  set -- setpriv --reuid=65534 --regid=65534 --clear-groups\n"
            "fi\n"
            "\"$@\" test -x $VDLN || exit 77\n"
            "\"$@\" $VDLN scan tree a.mdb --name x");
    folder.setPermissions("tree/shut", 0755);
    if (result.code == 77) {
        GTEST_SKIP() << "no way to run as an ordinary user";
    }
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, "vdln: tree/shut: what is in it was left out: Permission denied\n");
    EXPECT_EQ(result.out, "medium 1: 3 entries (2 folders, 1 files)\n");
}

}  // namespace
