#include "tests/cli/companion.h"

namespace {

using support::Outcome;

class ScanCommand : public support::CompanionTest {
  protected:
    ScanCommand() {
        machine.disk.addFolder("d:\\a");
        machine.disk.addFolder("d:\\b");
        machine.disk.addFile("d:\\f", 5);
        machine.disk.addFile("d:\\a\\g");
    }

    Outcome tryScan(const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments{"scan", "d:", archive, "--name", "Name"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return companion.run(arguments);
    }
    /// Does something when a folder is listed for the first time.
    void whenListed(const std::string& folder, const std::function<void()>& action) {
        machine.disk.beforeOperation = [this, folder, action](std::string_view operation,
                                                              std::string_view path) {
            if (operation == "findFirst" && path == folder + "*" &&
                machine.disk.listings[folder + "*"] == 1) {
                action();
            }
        };
    }

    const std::vector<std::string> allRecords{"a|1:", "b|1:", "f|1:", "g|1:\\\\a"};
};

TEST_F(ScanCommand, StoresEveryEntryInTheOrderOfTheWalk) {
    EXPECT_EQ(scan(), "medium 1: 4 entries (2 folders, 2 files)\n");
    EXPECT_EQ(records(), allRecords);
    EXPECT_EQ(medium(numberFilesField), "4");
}

TEST_F(ScanCommand, TheMediumHasTheDrivesLabelAndTheGivenName) {
    scan("My name");
    EXPECT_EQ(medium(labelField), "DISK");
    EXPECT_EQ(medium(nameField), "My name");
    EXPECT_EQ(medium(typeField), "Removable");
}

TEST_F(ScanCommand, AnEmptyNameIsAName) {
    EXPECT_EQ(tryScan({"--label", ""}).code, 0);
    EXPECT_EQ(companion.run({"scan", "d:", archive, "--name", ""}).code, 0);
    EXPECT_EQ(records().size(), 8U);
}

TEST_F(ScanCommand, AGivenLabelTakesThePlaceOfTheDrives) {
    EXPECT_EQ(tryScan({"--label", "Written on it"}).code, 0);
    EXPECT_EQ(medium(labelField), "Written on it");
}

TEST_F(ScanCommand, ADriveIsNamedInAnyForm) {
    for (const char* what : {"d:", "D:", "d:\\", "D:/"}) {
        EXPECT_EQ(companion.run({"scan", what, archive, "--name", "x"}).code, 0) << what;
    }
    EXPECT_EQ(records({"--media", "4"}).size(), 4U);
}

TEST_F(ScanCommand, AFolderIsScannedAsADrive) {
    machine.disk.addFile("z:\\only.txt");
    EXPECT_EQ(companion.output({"scan", "/home/me/Photos/", archive, "--name", "x"}),
              "medium 1: 1 entries (0 folders, 1 files)\n");
    EXPECT_EQ(records(), (std::vector<std::string>{"only.txt|1:"}));
}

TEST_F(ScanCommand, AnEmptyDriveIsAMediumWithoutRecords) {
    machine.disk.remove("d:\\");
    machine.disk.addFolder("d:\\");
    EXPECT_EQ(scan(), "medium 1: 0 entries (0 folders, 0 files)\n");
    EXPECT_EQ(medium(numberFilesField), "0");
}

TEST_F(ScanCommand, AMissingArchiveIsNotCreated) {
    const Outcome outcome = companion.run({"scan", "d:", "/none.mdb", "--name", "x"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: /none.mdb: there is no such archive; \"vdln create\" creates one\n");
    EXPECT_FALSE(files.exists("/none.mdb"));
}

TEST_F(ScanCommand, ADriveThatIsNotThereIsOneLine) {
    const Outcome outcome = companion.run({"scan", "q:", archive, "--name", "x"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "vdln: q:: there is no such drive; \"vdln drives\" lists them\n");
}

TEST_F(ScanCommand, AFolderThatIsNotThereIsOneLine) {
    machine.machineDrives.knownFolders = {"/other"};
    const Outcome outcome = companion.run({"scan", "/none", archive, "--name", "x"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "vdln: /none: there is no such folder\n");
}

TEST_F(ScanCommand, ADriveThatIsNotReadyLeavesTheArchiveAsItWas) {
    machine.machineDrives.at('d').ready = false;
    const std::string before = files.read(archive);
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err, "");
    EXPECT_EQ(files.read(archive), before);
}

TEST_F(ScanCommand, ADriveWithoutKnownSizeSaysSo) {
    machine.machineDrives.at('d').spaceKnown = false;
    EXPECT_EQ(tryScan().err, "vdln: d:: its size and free space cannot be read\n");
    EXPECT_EQ(records().size(), 0U);
}

TEST_F(ScanCommand, ARootThatCannotBeListedIsAFailure) {
    machine.disk.at("d:\\").listable = false;
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "vdln: d:: it cannot be read: the folder cannot be listed\n");
    EXPECT_EQ(companion.output({"dump", archive}), "table\trows\nmain\t0\nmedia\t0\n");
}

TEST_F(ScanCommand, AReadOnlyArchiveIsLeftAsItWas) {
    const std::string before = files.read(archive);
    files.unwritable.insert(archive);
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "vdln: " + archive + ": the file may not be written\n");
    EXPECT_EQ(files.read(archive), before);
}

TEST_F(ScanCommand, AFolderThatCannotBeListedIsNamedOnce) {
    machine.disk.at("d:\\b").listable = false;
    machine.disk.addFile("d:\\b\\hidden");
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 3);
    EXPECT_EQ(outcome.err, "vdln: d:/b: what is in it was left out: the folder cannot be listed\n");
    EXPECT_EQ(outcome.out, "medium 1: 4 entries (2 folders, 2 files)\n");
}

TEST_F(ScanCommand, ATextThatDoesNotFitIsLeftOutAndNamed) {
    const std::string name(256, 'x');
    machine.disk.addFile("d:\\a\\" + name);
    machine.disk.addFile("d:\\a\\h");
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 3);
    EXPECT_TRUE(outcome.err.starts_with("vdln: d:/a/" + name + ": left out: ")) << outcome.err;
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1);
    EXPECT_EQ(outcome.out, "medium 1: 5 entries (2 folders, 3 files)\n");
    EXPECT_EQ(records().back(), "h|1:\\\\a");
    EXPECT_EQ(medium(numberFilesField), "5");
}

TEST_F(ScanCommand, ANameOf255CharactersFits) {
    machine.disk.addFile("d:\\" + std::string(255, 'x'));
    EXPECT_EQ(tryScan().code, 0);
}

TEST_F(ScanCommand, APathThatDoesNotFitLeavesOutWhatIsBelow) {
    const std::string deep = "d:\\" + std::string(150, 'x') + "\\" + std::string(150, 'y');
    machine.disk.addFile(deep + "\\z");
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 3);
    EXPECT_NE(outcome.err.find("/z: left out: "), std::string::npos);
    EXPECT_EQ(outcome.out, "medium 1: 6 entries (4 folders, 2 files)\n");
}

TEST_F(ScanCommand, ASizeThatDoesNotFitIsCutAndNamed) {
    constexpr std::uint64_t size = (0x7FFFFFFFULL << 32) | 0x80000001ULL;
    machine.disk.addFile("d:\\big", size);
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 3);
    EXPECT_EQ(outcome.err, "vdln: d:/big: its size does not fit the archive and is stored as 2\n");
    EXPECT_NE(companion.output({"records", archive}).find("\nbig\t1:\tfile\tFile\t2\t"),
              std::string::npos);
}

TEST_F(ScanCommand, AFileOfTwoGigabytesIsExactByTheSizeRule) {
    machine.disk.addFile("d:\\two", 2'147'483'648ULL);
    EXPECT_EQ(tryScan().code, 0);
    EXPECT_NE(companion.output({"records", archive}).find("\t-2147483648\t"), std::string::npos);
}

TEST_F(ScanCommand, AnyNumberOfEntriesIsStored) {
    support::FakeEntry& folder = machine.disk.addFolder("d:\\many");
    for (int i = 0; i < 33'000; ++i) {
        auto file = std::make_shared<support::FakeEntry>();
        file->name = "file " + std::to_string(i);
        file->typeName = "File";
        folder.children.push_back(std::move(file));
    }
    machine.disk.listsDotEntries = false;
    // One look-up of attributes in so large a folder would be quadratic.
    class Lister : public support::FakeDirectoryLister {
      public:
        using FakeDirectoryLister::FakeDirectoryLister;
        std::uint32_t attributes(std::string_view path) override {
            const bool isFile = path.find("\\file ") != std::string_view::npos;
            return isFile ? 0x80 : FakeDirectoryLister::attributes(path);
        }
        std::string typeName(std::string_view /*path*/) override { return "File"; }
    };
    class Machine : public support::FakePlatform {
      public:
        std::unique_ptr<platform::DirectoryLister> createDirectoryLister() override {
            return std::make_unique<Lister>(disk);
        }
    } large;
    large.disk = machine.disk;
    large.opener = &files;
    large.machineDrives.add('d', "DISK", 1).folder = "/media/disk";
    support::Companion other(large);
    EXPECT_EQ(other.output({"scan", "d:", archive, "--name", "x"}),
              "medium 1: 33005 entries (3 folders, 33002 files)\n");
    EXPECT_EQ(medium(numberFilesField), "33005");
}

TEST_F(ScanCommand, AnInterruptionKeepsWhatIsStored) {
    whenListed("d:\\a\\", [this] { companion.interruption.isRequestedNow = true; });
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "vdln: d:: the scan was interrupted; medium 1 keeps the 4 entries stored so far\n");
    EXPECT_TRUE(companion.interruption.isWatched);
    companion.interruption.isRequestedNow = false;
    EXPECT_EQ(records(), allRecords);
    EXPECT_EQ(medium(numberFilesField), "4");
}

TEST_F(ScanCommand, AnInterruptionStopsAtTheNextEntry) {
    machine.disk.beforeOperation = [this](std::string_view operation, std::string_view path) {
        companion.interruption.isRequestedNow |= operation == "typeName" && path == "d:\\b";
    };
    EXPECT_EQ(tryScan().code, 1);
    companion.interruption.isRequestedNow = false;
    EXPECT_EQ(records(), (std::vector<std::string>{"a|1:", "b|1:"}));
    EXPECT_EQ(medium(numberFilesField), "2");
}

TEST_F(ScanCommand, ADriveThatVanishesIsAFailureThatKeepsWhatIsStored) {
    whenListed("d:\\a\\", [this] {
        machine.machineDrives.remove('d');
        machine.disk.remove("d:\\");
    });
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "vdln: d:: the drive is no longer there; medium 1 keeps the 3 entries "
              "stored so far\n");
    EXPECT_EQ(records(), (std::vector<std::string>{"a|1:", "b|1:", "f|1:"}));
    EXPECT_EQ(medium(numberFilesField), "3");
}

TEST_F(ScanCommand, ALetterThatGoesToAnotherDriveIsNoticed) {
    whenListed("d:\\b\\", [this] { machine.machineDrives.at('d').folder = "/media/other"; });
    EXPECT_EQ(tryScan().err,
              "vdln: d:: the drive is no longer there; medium 1 keeps the 4 entries "
              "stored so far\n");
}

TEST_F(ScanCommand, AFullDiskKeepsWhatHasReachedIt) {
    for (int i = 0; i < 3000; ++i) {
        machine.disk.addFile("d:\\a\\file " + std::to_string(i));
    }
    files.capacity = files.read(archive).size() + 200'000;
    const Outcome outcome = tryScan();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1);
    const std::size_t stored = records().size();
    EXPECT_GE(stored, 500U);
    EXPECT_LT(stored, 3000U);
    EXPECT_EQ(outcome.err, "vdln: " + archive + ": no space left on the device; medium 1 now has " +
                               std::to_string(stored) + " entries\n");
    EXPECT_EQ(medium(numberFilesField), std::to_string(stored));
}

TEST_F(ScanCommand, ProgressIsShownOnATerminalOrWhenAsked) {
    EXPECT_EQ(tryScan().err, "");
    EXPECT_EQ(tryScan({"--progress"}).err, "1 entry: d:/\n");
    companion.errIsTerminal = true;
    EXPECT_EQ(tryScan({"--quiet"}).err, "");
    EXPECT_EQ(tryScan().err, "\r\x1b[K1 entry: d:/\r\x1b[K");
}

TEST_F(ScanCommand, AMessageNamesWhatWasFoundHarmlessly) {
    const std::string name = "\x1b]0;" + std::string(260, 'x');
    machine.disk.addFile("d:\\" + name);
    EXPECT_EQ(tryScan().err.find('\x1b'), std::string::npos);
}

TEST_F(ScanCommand, TheNextMediumGetsTheNextNumber) {
    scan();
    EXPECT_EQ(scan(), "medium 2: 4 entries (2 folders, 2 files)\n");
    EXPECT_EQ(records().size(), 8U);
}

}  // namespace
