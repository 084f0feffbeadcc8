#include "settings/writeini.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "base/failure.h"
#include "platform/file_private_profile.h"
#include "settings/ini.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

namespace settings {
namespace {

const base::Message writeError = {
    "Error with Settings File",
    "There is an error writing to your settings file.  Reinstall program",
    base::MessageButtons::Ok};

class WriteIniTest : public testing::Test {
  protected:
    static constexpr const char* path = "/opt/verdolin/settings/vdln.ini";

    void SetUp() override {
        state.archiveFolder = "D:\\cat\\";
        state.archiveName = "now.mdb";
        for (int number = 1; number <= 5; ++number) {
            state.recentArchives[number] = {"D:\\cat\\", std::to_string(number) + ".mdb"};
        }
    }
    void save() { saveSettings(state, machine.fakeShell, machine.profile, messages); }

    support::FakePlatform machine;
    support::ScriptedMessageBox messages;
    base::ProgramState state;
};

TEST_F(WriteIniTest, WritesCurrentAndThenTheFiveRecentInOrder) {
    save();
    const std::vector<std::string> expected = {
        "recentarchives.current=D:\\cat\\now.mdb", "recentarchives.recent1=D:\\cat\\1.mdb",
        "recentarchives.recent2=D:\\cat\\2.mdb",   "recentarchives.recent3=D:\\cat\\3.mdb",
        "recentarchives.recent4=D:\\cat\\4.mdb",   "recentarchives.recent5=D:\\cat\\5.mdb"};
    EXPECT_EQ(machine.profile.writes, expected);
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(state.settingsPath, path);
}

TEST_F(WriteIniTest, AnEmptyEntryIsAKeyWithAnEmptyValue) {
    state.recentArchives[3] = {};
    save();
    EXPECT_EQ(machine.profile.files[path],
              "[recentarchives]\ncurrent=D:\\cat\\now.mdb\nrecent1=D:\\cat\\1.mdb\n"
              "recent2=D:\\cat\\2.mdb\nrecent3=\nrecent4=D:\\cat\\4.mdb\n"
              "recent5=D:\\cat\\5.mdb\n");
}

TEST_F(WriteIniTest, NothingIsReorderedOrTakenForADouble) {
    for (int number = 1; number <= 5; ++number) {
        state.recentArchives[number] = {"D:\\", number % 2 == 0 ? "same.mdb" : "b.mdb"};
    }
    save();
    base::ProgramState loaded;
    loadSettings(loaded, machine.fakeShell, machine.profile);
    EXPECT_EQ(loaded.recentArchives, state.recentArchives);
}

TEST_F(WriteIniTest, EverythingElseInTheFileStays) {
    machine.profile.files[path] =
        "; by hand\r\n[window]\r\nwidth=12\r\n\r\n[recentarchives]\r\nrecent9=x\r\nRECENT1 = "
        "old\r\n"
        "[drives]\r\np=/home/me\r\n";
    save();
    EXPECT_EQ(machine.profile.files[path],
              "; by hand\r\n[window]\r\nwidth=12\r\n\r\n[recentarchives]\r\nrecent9=x\r\n"
              "RECENT1 = D:\\cat\\1.mdb\r\ncurrent=D:\\cat\\now.mdb\r\nrecent2=D:\\cat\\2.mdb\r\n"
              "recent3=D:\\cat\\3.mdb\r\nrecent4=D:\\cat\\4.mdb\r\nrecent5=D:\\cat\\5.mdb\r\n"
              "[drives]\r\np=/home/me\r\n");
}

TEST_F(WriteIniTest, AKeyThatThePlatformFailsToWriteIsPassedOver) {
    machine.profile.beforeWrite = [](std::string_view key) { return key != "recent2"; };
    save();
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(machine.profile.writes.size(), 6U);
    base::ProgramState loaded;
    loadSettings(loaded, machine.fakeShell, machine.profile);
    EXPECT_EQ(loaded.recentArchives[2], base::ArchiveLocation{});
    EXPECT_EQ(loaded.recentArchives[5].name, "5.mdb");
}

TEST_F(WriteIniTest, AnyOtherFailureStopsThereAndShowsTheMessage) {
    machine.profile.beforeWrite = [](std::string_view key) -> bool {
        if (key == "recent2") {
            throw base::SubscriptFailure("a list of 0 elements has no element 2");
        }
        return true;
    };
    messages.expect(base::MessageAnswer::Ok);
    save();
    EXPECT_EQ(messages.asked, std::vector{writeError});
    EXPECT_EQ(machine.profile.files[path],
              "[recentarchives]\ncurrent=D:\\cat\\now.mdb\nrecent1=D:\\cat\\1.mdb\n");
    EXPECT_EQ(machine.profile.writes.back(), "recentarchives.recent2=D:\\cat\\2.mdb");
}

TEST_F(WriteIniTest, AFailureOutsideTheFamilyIsShownAlike) {
    machine.profile.beforeWrite = [](std::string_view) -> bool {
        throw std::runtime_error("unforeseen");
    };
    messages.expect(base::MessageAnswer::Ok);
    save();
    EXPECT_EQ(messages.asked, std::vector{writeError});
}

TEST_F(WriteIniTest, AnUnknownProgramFolderIsShownAlike) {
    class Homeless : public support::FakeShell {
      public:
        std::string programFolder() override { throw base::FileFailure("nowhere"); }
    } shell;
    messages.expect(base::MessageAnswer::Ok);
    saveSettings(state, shell, machine.profile, messages);
    EXPECT_EQ(messages.asked, std::vector{writeError});
    EXPECT_TRUE(machine.profile.writes.empty());
}

TEST(WriteIniOnDisk, SettingsSurviveTheWayThroughAFile) {
    support::TemporaryFolder folder;
    folder.makeFolder("settings");
    support::FakeShell shell;
    shell.folder = folder.path();
    platform::FilePrivateProfile profile;
    support::ScriptedMessageBox messages;
    base::ProgramState state;
    state.archiveFolder = "d:\\Ærø\\";
    state.archiveName = " catalogue.mdb ";
    state.recentArchives[1] = {"d:\\Ærø\\", "\"quoted\""};
    state.recentArchives[5] = {"d:\\日本\\", "語.mdb"};
    saveSettings(state, shell, profile, messages);
    base::ProgramState loaded;
    loadSettings(loaded, shell, profile);
    EXPECT_EQ(loaded.currentArchive(), state.currentArchive());
    EXPECT_EQ(loaded.recentArchives, state.recentArchives);
}

TEST(WriteIniOnDisk, AFolderThatIsNotThereIsPassedOverInSilence) {
    support::TemporaryFolder folder;
    support::FakeShell shell;
    shell.folder = folder.pathOf("missing");
    platform::FilePrivateProfile profile;
    support::ScriptedMessageBox messages;
    base::ProgramState state;
    saveSettings(state, shell, profile, messages);
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_FALSE(folder.exists("missing"));
}

}  // namespace
}  // namespace settings
