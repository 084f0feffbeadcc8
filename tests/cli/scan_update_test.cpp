#include <algorithm>
#include <set>

#include "tests/cli/companion.h"

namespace {

using support::Outcome;

class ScanUpdate : public support::CompanionTest {
  protected:
    ScanUpdate() {
        machine.disk.addFolder("d:\\a");
        machine.disk.addFile("d:\\gone");
        machine.disk.addFile("d:\\stays");
        scan("First");
        machine.disk.remove("d:\\gone");
        machine.disk.addFile("d:\\new");
        machine.fixedClock.now = {2005, 6, 7, 8, 9, 10};
    }

    Outcome update(const std::vector<std::string>& options = {}, const char* name = "First") {
        std::vector<std::string> arguments{"scan", "d:", archive, "--name", name, "--update", "1"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return companion.run(arguments);
    }
    void makeLookDifferent() {
        machine.machineDrives.at('d').label = "OTHER";
        machine.machineDrives.at('d').totalBytes = 800ULL << 20;
    }
    void sitAtATerminal(const std::string& answer) {
        companion.inIsTerminal = true;
        companion.errIsTerminal = true;
        companion.input = answer;
    }
    void expectReplaced() {
        EXPECT_EQ(records(), (std::vector<std::string>{"a|1:", "stays|1:", "new|1:"}));
        EXPECT_EQ(medium(numberFilesField), "3");
        EXPECT_EQ(medium(archiveUpdateField), "06/07/2005 08:09:10");
    }
    void addFiles(int from, int to) {
        for (int i = from; i < to; ++i) {
            machine.disk.addFile("d:\\a\\file " + std::to_string(i));
        }
    }

    static constexpr const char* question =
        "Update Existing Media's Data\n\nThe following notices indicate that perhaps you have "
        "mistakenly chosen to update an existing media's data with the one that was just scanned. "
        "\n\rMedia Label does not match.\n\rMedia Size does not match.\n\rDo you wish to proceed "
        "with the update? [Yes/No/Cancel] ";
};

TEST_F(ScanUpdate, ReplacesTheRecordsOfTheMedium) {
    const Outcome outcome = update();
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "medium 1: 3 entries (1 folders, 2 files)\n");
    expectReplaced();
}

TEST_F(ScanUpdate, KeepsWhatIsStoredOfTheMediumButDateAndCount) {
    makeLookDifferent();
    EXPECT_EQ(update({"--yes"}, "Another name").code, 0);
    EXPECT_EQ(medium(labelField), "DISK");
    EXPECT_EQ(medium(nameField), "First");
    EXPECT_EQ(medium(sizeField), "700");
    EXPECT_EQ(medium(archiveDateField), "03/07/2001 09:05:00");
    expectReplaced();
}

TEST_F(ScanUpdate, LeavesOtherMediaAlone) {
    scan("Second");
    const std::vector<std::string> second = records({"--media", "2"});
    EXPECT_EQ(update().code, 0);
    EXPECT_EQ(records({"--media", "2"}), second);
    EXPECT_EQ(records({"--media", "1"}).size(), 3U);
}

TEST_F(ScanUpdate, AsksNothingWhereNothingDiffers) {
    sitAtATerminal("");
    const Outcome outcome = update({"--quiet"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ScanUpdate, AsksWhereTheMediumLooksLikeAnotherOne) {
    makeLookDifferent();
    sitAtATerminal("yes\n");
    const Outcome outcome = update({"--quiet"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, question);
    expectReplaced();
}

TEST_F(ScanUpdate, AnyOtherAnswerChangesNothing) {
    makeLookDifferent();
    const std::string before = files.read(archive);
    for (const char* answer : {"no\n", "cancel\n", "\n", "", "sure\n"}) {
        sitAtATerminal(answer);
        const Outcome outcome = update();
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err,
                  question + std::string("vdln: medium 1: nothing was changed: the update was "
                                         "not confirmed\n"));
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(files.read(archive), before);
    }
}

TEST_F(ScanUpdate, WithoutATerminalNothingIsChanged) {
    makeLookDifferent();
    const std::string before = files.read(archive);
    companion.input = "yes\n";
    const Outcome outcome = update();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: medium 1: nothing was changed: the drive's label, type or size is not the "
              "stored one, and there is no terminal to ask on; --yes updates it\n");
    EXPECT_EQ(files.read(archive), before);
}

TEST_F(ScanUpdate, YesAnswersTheQuestion) {
    makeLookDifferent();
    const Outcome outcome = update({"--yes"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    expectReplaced();
}

TEST_F(ScanUpdate, AMediumThatIsNotThereIsOneLine) {
    const std::string before = files.read(archive);
    const Outcome outcome =
        companion.run({"scan", "d:", archive, "--name", "x", "--update", "7", "--yes"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: " + archive + ": there is no medium 7; \"vdln media\" lists them\n");
    EXPECT_EQ(files.read(archive), before);
}

TEST_F(ScanUpdate, AnInterruptionLosesNoEarlierRecord) {
    machine.disk.beforeOperation = [this](std::string_view operation, std::string_view path) {
        companion.interruption.isRequestedNow |= operation == "typeName" && path == "d:\\a";
    };
    const Outcome outcome = update();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: d:: the scan was interrupted; medium 1 keeps the 1 entries stored so far "
              "beside 3 earlier ones; the same update again replaces them all\n");
    companion.interruption.isRequestedNow = false;
    EXPECT_EQ(records(), (std::vector<std::string>{"a|1:", "gone|1:", "stays|1:", "a|1:"}));
    EXPECT_EQ(medium(numberFilesField), "4");
}

TEST_F(ScanUpdate, TheNextUpdateMendsAnInterruptedOne) {
    machine.disk.beforeOperation = [this](std::string_view operation, std::string_view path) {
        companion.interruption.isRequestedNow |= operation == "typeName" && path == "d:\\a";
    };
    update();
    companion.interruption.isRequestedNow = false;
    machine.disk.beforeOperation = nullptr;
    EXPECT_EQ(update().code, 0);
    expectReplaced();
}

TEST_F(ScanUpdate, AVanishedDriveLosesNoEarlierRecord) {
    machine.disk.beforeOperation = [this](std::string_view operation, std::string_view path) {
        if (operation == "findFirst" && path == "d:\\a\\*") {
            machine.disk.beforeOperation = nullptr;
            machine.machineDrives.remove('d');
            machine.disk.remove("d:\\");
        }
    };
    EXPECT_EQ(update().code, 1);
    const std::vector<std::string> kept = records();
    EXPECT_EQ(std::ranges::count(kept, "gone|1:"), 1);
    EXPECT_EQ(medium(numberFilesField), std::to_string(kept.size()));
}

TEST_F(ScanUpdate, AFullDiskLosesNoEarlierRecord) {
    addFiles(0, 2000);
    ASSERT_EQ(update().code, 0);
    const std::vector<std::string> before = records();
    addFiles(2000, 3000);
    files.capacity = files.read(archive).size() + 100'000;
    EXPECT_EQ(update().code, 1);
    const std::vector<std::string> kept = records();
    const std::multiset<std::string> all(kept.begin(), kept.end());
    for (const std::string& row : before) {
        EXPECT_GE(all.count(row), 1U) << row;
    }
    EXPECT_EQ(medium(numberFilesField), std::to_string(kept.size()));
}

TEST_F(ScanUpdate, OldAndNewRecordsAreToldApartOnSharedPages) {
    // Holes in the middle of the table: what is stored next goes into them, between the old rows.
    addFiles(0, 500);
    ASSERT_EQ(update().code, 0);
    scan("Second");
    addFiles(500, 600);
    ASSERT_EQ(update().code, 0);
    const std::vector<std::string> second = records({"--media", "2"});
    for (int round = 0; round < 4; ++round) {
        machine.disk.remove("d:\\a\\file " + std::to_string(round));
        ASSERT_EQ(update().code, 0);
        const std::vector<std::string> first = records({"--media", "1"});
        EXPECT_EQ(std::set(first.begin(), first.end()).size(), first.size());
        EXPECT_EQ(first.size(), 603U - static_cast<std::size_t>(round) - 1);
        EXPECT_EQ(records({"--media", "2"}), second);
    }
    EXPECT_EQ(medium(numberFilesField), "599");
}

}  // namespace
