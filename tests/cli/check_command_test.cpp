#include "tests/cli/companion.h"

namespace {

using support::Outcome;

class CheckCommand : public support::RealCompanionTest {
  protected:
    CheckCommand() {
        folder.makeFile("tree/one.txt", "1");
        folder.makeFile("tree/sub/two.txt", "22");
        companion.output({"create", archive});
        companion.output({"scan", folder.pathOf("tree"), archive, "--name", "Tree"});
    }

    const std::string archive = folder.pathOf("a.mdb");
};

TEST_F(CheckCommand, FindsANewArchiveSound) {
    // 16 pages of the engine, 5 of the two tables, one of rows for each of them; 24 rows of the
    // engine, 6 for the two tables, one medium and three entries.
    EXPECT_EQ(companion.output({"check", archive}), "23 pages, 6 tables, 34 rows: sound\n");
}

TEST_F(CheckCommand, FindsAnArchiveOfTheOlderFormatSound) {
    const std::string older = folder.pathOf("older.mdb");
    companion.output({"create", older, "--format", "jet3"});
    companion.output({"scan", folder.pathOf("tree"), older, "--name", "Tree"});
    EXPECT_EQ(companion.output({"check", older}), "25 pages, 6 tables, 34 rows: sound\n");
}

TEST_F(CheckCommand, SaysWhatIsDamagedAndWhere) {
    // The kind of page 22, the first with rows of `main`.
    std::string bytes = folder.read("a.mdb");
    bytes.at(22 * 4096) = 9;
    folder.makeFile("a.mdb", bytes);
    const Outcome outcome = companion.run({"check", archive});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.out.find("page 22: damaged: "), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.err, "vdln: " + archive + ": the database is damaged\n");
}

TEST_F(CheckCommand, SaysWhatAFileIsThatIsNoDatabase) {
    const Outcome outcome = companion.run({"check", folder.pathOf("tree/one.txt")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "vdln: " + folder.pathOf("tree/one.txt") +
                               ": this is no Jet database but another kind of file\n");
}

TEST_F(CheckCommand, ChangesNothing) {
    const std::string before = folder.read("a.mdb");
    companion.output({"check", archive});
    EXPECT_EQ(folder.read("a.mdb"), before);
}

}  // namespace
