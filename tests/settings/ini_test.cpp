#include "settings/ini.h"

#include <gtest/gtest.h>

#include <string>

#include "base/program_state.h"
#include "platform/file_private_profile.h"
#include "tests/support/fake_platform.h"
#include "tests/support/temporary_folder.h"

namespace settings {
namespace {

class IniTest : public testing::Test {
  protected:
    static constexpr const char* path = "/opt/verdolin/settings/vdln.ini";

    void load(const std::string& fileText) {
        machine.profile.files[path] = fileText;
        loadSettings(state, machine.fakeShell, machine.profile);
    }

    support::FakePlatform machine;
    base::ProgramState state;
};

TEST_F(IniTest, SettingsPathLiesBelowTheProgramFolder) {
    EXPECT_EQ(settingsPath(machine.fakeShell), path);
}

TEST_F(IniTest, SettingsPathHasTheMachinesSeparator) {
    machine.fakeShell.folder = "C:\\Verdolin";
    machine.fakeShell.separator = '\\';
    EXPECT_EQ(settingsPath(machine.fakeShell), "C:\\Verdolin\\settings\\vdln.ini");
}

TEST_F(IniTest, SettingsPathIsWorkedOutAnewAtEveryReading) {
    load("");
    EXPECT_EQ(state.settingsPath, path);
    machine.fakeShell.folder = "/elsewhere";
    machine.profile.files["/elsewhere/settings/vdln.ini"] =
        "[recentarchives]\ncurrent=d:\\there\\b.mdb\n";
    loadSettings(state, machine.fakeShell, machine.profile);
    EXPECT_EQ(state.settingsPath, "/elsewhere/settings/vdln.ini");
    EXPECT_EQ(state.archiveName, "b.mdb");
}

TEST_F(IniTest, WithoutAFileEverythingIsEmpty) {
    state.archiveFolder = "/old/";
    state.archiveName = "old.mdb";
    state.recentArchives[5] = {"/old/", "old.mdb"};
    loadSettings(state, machine.fakeShell, machine.profile);
    EXPECT_EQ(state.currentArchive(), base::ArchiveLocation{});
    for (int number = 1; number <= base::ProgramState::recentCount; ++number) {
        EXPECT_EQ(state.recentArchives[number], base::ArchiveLocation{}) << number;
    }
}

TEST_F(IniTest, AMissingSectionReadsAsAllKeysMissing) {
    load("[other]\ncurrent=/x/y.mdb\nrecent1=/x/y.mdb\n");
    EXPECT_EQ(state.currentArchive(), base::ArchiveLocation{});
    EXPECT_EQ(state.recentArchives[1], base::ArchiveLocation{});
}

TEST_F(IniTest, AValueIsSplitAtTheLastBackslash) {
    load("[recentarchives]\ncurrent=D:\\cat\\disks.mdb\n");
    EXPECT_EQ(state.archiveFolder, "D:\\cat\\");
    EXPECT_EQ(state.archiveName, "disks.mdb");
}

TEST_F(IniTest, AValueWithoutASeparatorIsAllFileName) {
    load("[recentarchives]\nrecent2=disks.mdb\n");
    EXPECT_EQ(state.recentArchives[2], (base::ArchiveLocation{"", "disks.mdb"}));
}

TEST_F(IniTest, AValueThatEndsInASeparatorIsAllFolder) {
    load("[recentarchives]\nrecent2=D:\\cat\\\n");
    EXPECT_EQ(state.recentArchives[2], (base::ArchiveLocation{"D:\\cat\\", ""}));
}

#ifndef _WIN32
TEST_F(IniTest, ASlashSplitsWhereItIsTheMachinesSeparator) {
    load("[recentarchives]\ncurrent=/home/me/cat/disks.mdb\nrecent1=/home/a\\b.mdb\n");
    EXPECT_EQ(state.currentArchive(), (base::ArchiveLocation{"/home/me/cat/", "disks.mdb"}));
    EXPECT_EQ(state.recentArchives[1], (base::ArchiveLocation{"/home/a\\", "b.mdb"}));
}
#endif

TEST_F(IniTest, EveryKeyGoesToItsOwnPlace) {
    load(
        "[recentarchives]\nrecent5=e\\5\nrecent4=d\\4\nrecent3=c\\3\nrecent2=b\\2\n"
        "recent1=a\\1\ncurrent=z\\0\n");
    EXPECT_EQ(state.currentArchive(), (base::ArchiveLocation{"z\\", "0"}));
    const char* const folders[] = {"", "a\\", "b\\", "c\\", "d\\", "e\\"};
    for (int number = 1; number <= 5; ++number) {
        EXPECT_EQ(state.recentArchives[number],
                  (base::ArchiveLocation{folders[number], std::to_string(number)}));
    }
}

TEST_F(IniTest, AnEmptyValueIsAnEmptyEntry) {
    load("[recentarchives]\ncurrent=\nrecent3=\n");
    EXPECT_EQ(state.currentArchive(), base::ArchiveLocation{});
    EXPECT_EQ(state.recentArchives[3], base::ArchiveLocation{});
}

TEST_F(IniTest, TheWordNoneReadsAsAMissingKey) {
    load("[recentarchives]\ncurrent=none\nrecent1=None\n");
    EXPECT_EQ(state.currentArchive(), base::ArchiveLocation{});
    EXPECT_EQ(state.recentArchives[1], (base::ArchiveLocation{"", "None"}));
}

TEST_F(IniTest, AValueOf254CharactersIsWhole) {
    const std::string value = "D:\\" + std::string(251, 'x');
    load("[recentarchives]\ncurrent=" + value + "\n");
    EXPECT_EQ(state.currentArchive().fullPath(), value);
}

TEST_F(IniTest, LongerValuesAreCutTo254Characters) {
    for (const std::size_t length : {255, 300}) {
        const std::string value = "D:\\" + std::string(length - 3, 'x');
        load("[recentarchives]\ncurrent=" + value + "\n");
        EXPECT_EQ(state.currentArchive().fullPath(), value.substr(0, 254)) << length;
    }
}

TEST_F(IniTest, TheCutCountsCharactersAndLeavesThemWhole) {
    std::string value = "D:\\";
    for (int i = 0; i < 300; ++i) {
        value += "é";
    }
    load("[recentarchives]\ncurrent=" + value + "\n");
    EXPECT_EQ(state.currentArchive().fullPath(), value.substr(0, 3 + 2 * 251));
}

TEST_F(IniTest, ReadingLeavesTheFileAlone) {
    const std::string text = "; mine\n[recentarchives]\ncurrent = \"a\\b.mdb\"\n";
    load(text);
    EXPECT_EQ(machine.profile.files[path], text);
    EXPECT_TRUE(machine.profile.writes.empty());
    EXPECT_EQ(state.archiveName, "b.mdb");
}

TEST(IniOnDisk, ReadsTheRealFile) {
    support::TemporaryFolder folder;
    folder.makeFile("settings/vdln.ini", "[RecentArchives]\r\nCURRENT=/a/b.mdb\r\n");
    support::FakeShell shell;
    shell.folder = folder.path();
    platform::FilePrivateProfile profile;
    base::ProgramState state;
    loadSettings(state, shell, profile);
    EXPECT_EQ(state.currentArchive().fullPath(), "/a/b.mdb");
}

}  // namespace
}  // namespace settings
