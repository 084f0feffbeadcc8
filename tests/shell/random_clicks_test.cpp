#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/record_rows.h"
#include "jet/checker.h"
#include "jet/engine.h"
#include "platform/file_private_profile.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_main.h"
#include "shell/window_message_box.h"
#include "tests/shell/test_application.h"
#include "tests/support/fake_platform.h"
#include "tests/support/random_user.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/unsynced_files.h"

// Everything that the windows offer, in any order and in the middle of everything else: nothing may
// crash or hang, and the archives hold nothing but whole rows afterwards.

namespace shell {
namespace {

constexpr const char* archiveNames[] = {"first.mdb", "second.mdb", "third.mdb"};
constexpr int archiveCount = 3;
constexpr int longestRun = 400;

/// Chooses one of a few archives, or nothing.
class RandomFileDialogs : public open::FileDialogs {
  public:
    RandomFileDialogs(support::RandomUser& user, const support::TemporaryFolder& folder)
        : user_(user), folder_(folder) {}

    std::optional<std::string> showOpen(const open::FileDialogRequest&) override {
        return choose();
    }
    std::optional<std::string> showSave(const open::FileDialogRequest&) override {
        return choose();
    }

  private:
    std::optional<std::string> choose() {
        if (user_.chance(4)) {
            return std::nullopt;
        }
        return folder_.pathOf(archiveNames[user_.number(archiveCount)]);
    }

    support::RandomUser& user_;
    const support::TemporaryFolder& folder_;
};

class Machine : public support::FakePlatform {
  public:
    Machine() : real_(platform::createPlatform()), files_(real_->files()) {
        opener = &files_;
        fill('d', 4, 6);
        fill('e', 1, 3);
        machineDrives.add('d', "HOLIDAY", 2);
        machineDrives.add('e', "", 5);
        machineDrives.add('f', "", 5).ready = false;
    }
    platform::PrivateProfile& privateProfile() override { return settingsFiles; }

    platform::FilePrivateProfile settingsFiles;

  private:
    void fill(char drive, int folders, int files) {
        const std::string root{drive, ':', '\\'};
        for (int folder = 0; folder < folders; ++folder) {
            const std::string path = root + "folder" + std::to_string(folder);
            disk.addFolder(path);
            for (int file = 0; file < files; ++file) {
                disk.addFile(path + "\\file" + std::to_string(file), 100);
            }
        }
        disk.addFile(root + "readme", 7);
    }

    std::unique_ptr<platform::Platform> real_;
    support::UnsyncedFiles files_;
};

/// One run of the program, from its splash window to its end.
class ProgramRun {
  public:
    ProgramRun(support::RandomUser& user, Machine& machine, const support::TemporaryFolder& folder)
        : user_(user),
          engine_(*machine.opener),
          dialogs_(user, folder),
          desktop_({state_, machine, engine_, messages_, dialogs_, boundary_,
                    [&user] { user.stop(); }}) {
        support::testApplication().setBoundary(&boundary_);
        desktop_.showSplash();
    }
    ~ProgramRun() { support::testApplication().setBoundary(nullptr); }
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    /// As when the session ends: also while a window is modal.
    void end() { desktop_.endProgram(); }

    /// How many actions it were until the user ended the program, or had enough.
    int go(int actions) {
        const int done = user_.act(actions);
        desktop_.endProgram();
        QCoreApplication::processEvents();
        return done;
    }

  private:
    support::RandomUser& user_;
    jet::Engine engine_;
    base::ProgramState state_;
    WindowMessageBox messages_;
    FailureBoundary boundary_{messages_};
    RandomFileDialogs dialogs_;
    Desktop desktop_;
};

class RandomClicksTest : public testing::Test {
  protected:
    RandomClicksTest() {
        folder.makeFolder("settings");
        machine.fakeShell.folder = folder.path();
        // What is exported goes to one of these.
        std::filesystem::current_path(folder.path());
        qputenv("HOME", folder.path().c_str());
    }
    ~RandomClicksTest() override {
        std::filesystem::current_path(before_);
        qputenv("HOME", home_);
    }

    /// The search component lies beside the program.
    void installSearch() {
        constexpr const char* library = "libsearchcontrol.so";
        folder.makeLink(library, std::string(VERDOLIN_PROGRAM_FOLDER) + "/" + library);
    }

    void useEverything();

    /// Mostly the program begins with an archive that it remembers; else with none.
    void rememberArchive(support::RandomUser& user) {
        const std::string path = folder.pathOf(archiveNames[0]);
        if (!folder.exists(archiveNames[0])) {
            jet::Engine engine(*machine.opener);
            archive::createArchive(engine, {folder.path() + "/", archiveNames[0]});
        }
        const std::string current = user.chance(4) ? std::string() : path;
        folder.makeFile("settings/vdln.ini", "[recentarchives]\ncurrent=" + current + "\n");
    }

    /// Every archive is sound, and every row of it is one that a scan has made, whole.
    void checkArchives() {
        for (const char* name : archiveNames) {
            if (folder.exists(name)) {
                checkArchive(name);
            }
        }
    }

    void checkArchive(const std::string& name) {
        const jet::CheckReport report = jet::checkDatabase(*machine.opener, folder.pathOf(name));
        for (const jet::CheckFinding& finding : report.findings()) {
            ADD_FAILURE() << name << ", page " << finding.page << ": " << finding.text;
        }
        jet::Engine engine(*machine.opener);
        archive::ArchiveTable table(engine, {folder.path() + "/", name}, "main",
                                    jet::LockType::ReadOnly);
        const archive::RecordReader reader(table.rows());
        for (; !table.rows().endOfFile(); table.rows().moveNext()) {
            base::ScanEntry entry;
            reader.read(entry);
            checkEntry(entry);
            ++rowsSeen;
        }
        table.close();
    }

    void checkEntry(const base::ScanEntry& entry) const {
        const bool isFolder = entry.Folder == "folder";
        EXPECT_TRUE(isFolder || entry.Folder == "file") << entry.Folder;
        EXPECT_EQ(entry.FileName.starts_with("folder"), isFolder) << entry.FileName;
        if (entry.path.empty()) {
            // A scan of a drive that was not ready when it was chosen fails in the middle of its
            // first entry, which stays in the list as far as it got.
            EXPECT_EQ(entry.DateCreated + entry.DateModified, "") << entry.FileName;
            return;
        }
        const std::string place = entry.path.substr(entry.path.find(':') + 1);
        EXPECT_TRUE(machine.disk.find("d:" + place + "\\" + entry.FileName) != nullptr ||
                    machine.disk.find("e:" + place + "\\" + entry.FileName) != nullptr)
            << entry.path << "\\" << entry.FileName;
        EXPECT_EQ(entry.Size, isFolder ? 0 : entry.FileName == "readme" ? 7 : 100);
        EXPECT_FALSE(entry.DateCreated.empty());
        EXPECT_FALSE(entry.DateModified.empty());
        // A medium that was scanned while no archive was open has the number 0.
        EXPECT_GE(entry.mediaId, 0);
    }

    support::TemporaryFolder folder;
    Machine machine;
    std::int64_t rowsSeen = 0;

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
    QByteArray home_ = qgetenv("HOME");
};

int actionsWanted() {
    const char* wanted = std::getenv("VERDOLIN_CLICKS");
    return wanted == nullptr ? 3000 : std::atoi(wanted);
}

std::uint32_t seedWanted() {
    const char* wanted = std::getenv("VERDOLIN_SEED");
    return wanted == nullptr ? std::random_device()()
                             : static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10));
}

// VERDOLIN_CLICKS says how many actions, VERDOLIN_SEED which ones.
void RandomClicksTest::useEverything() {
    const std::uint32_t seed = seedWanted();
    std::cout << "VERDOLIN_SEED=" << seed << '\n';
    support::RandomUser user(seed);
    user.mayAlso("a medium is taken out or put in", 1, [this, &user] {
        support::FakeDrive& drive = machine.machineDrives.at(user.chance(2) ? 'd' : 'e');
        drive.ready = !drive.ready || !user.chance(5);
    });
    user.mayAlso("nothing", 2, [] {});
    ProgramRun* running = nullptr;
    user.mayAlso("the session ends", 1, [&running] { running->end(); });
    for (const char* end : {"btnExit", "the session ends", "btnExit twice", "mnuFileExit",
                            "close form_main", "close form_splash", "Escape in form_splash",
                            "Enter in form_splash", "Space in form_splash"}) {
        user.doesRarely(end, 150);
    }
    for (const char* idle :
         {"mnuHelpHelp", "mnuHelpAbout", "close form_open", "Escape in form_open",
          "btnRecentCancel", "btnExistCancel", "btnNewCacnel", "btnRecentCancel twice",
          "btnExistCancel twice", "btnNewCacnel twice"}) {
        user.doesRarely(idle, 10);
    }
    // These lead to dialogs of the system, which reach files outside of this test.
    for (const char* outside : {"actionOpen", "actionOpenFolder", "btnBrowse", "btnBrowse twice",
                                "btnPrint", "btnPrint twice", "btnPdf", "btnPdf twice"}) {
        user.leavesAlone(outside);
    }
    for (const char* road :
         {"btnNewBrowse",    "btnNewOk",      "btnExistOK",  "inputMediaName", "btnScan",
          "mnuArchScan",     "btnArchive",    "mnuArchSave", "mnArchExplore",  "mnuPULKeywords",
          "mnuSearchSearch", "queryLine",     "listResults", "btnActions",     "next in menu",
          "choose in menu",  "comboKeywords", "comboNotes",  "btnSelectKW",    "btnKeyAdd",
          "btnSelectNote",   "btnNoteAdd",    "btnApply"}) {
        user.prefers(road, 6);
    }
    for (int left = actionsWanted(); left > 0;) {
        rememberArchive(user);
        {
            ProgramRun run(user, machine, folder);
            running = &run;
            left -= run.go(std::min(left, longestRun));
        }
        checkArchives();
        if (HasFailure()) {
            break;
        }
    }
    for (const auto& [name, count] : user.done()) {
        std::cout << name << ": " << count << '\n';
    }
    std::cout << user.nested() << " while another action ran; " << rowsSeen << " rows checked\n";
    EXPECT_GT(user.nested(), 0);
    EXPECT_GT(rowsSeen, 0);
}

TEST_F(RandomClicksTest, NothingCrashesAndTheArchivesHoldWholeRows) { useEverything(); }

TEST_F(RandomClicksTest, NorWithTheSearchComponent) {
    installSearch();
    useEverything();
}

}  // namespace
}  // namespace shell
