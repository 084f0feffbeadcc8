#include "shell/desktop.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include "base/failure.h"
#include "open/form_open.h"
#include "shell/failure_report.h"
#include "shell/form_about.h"
#include "shell/form_flashloading.h"
#include "shell/form_main.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "tests/shell/desktop_fixture.h"

namespace shell {
namespace {

using base::MessageAnswer;
using support::DesktopTest;
using support::Machine;

TEST_F(DesktopTest, TheSplashComesFirstAndAlone) {
    desktop.showSplash();
    EXPECT_TRUE(desktop.splash()->isVisible());
    EXPECT_EQ(desktop.mainWindow(), nullptr);
    EXPECT_EQ(desktop.openWindow(), nullptr);
}

TEST_F(DesktopTest, StartLeadsToTheOpenWindowInFrontOfTheMainWindow) {
    start();
    EXPECT_FALSE(desktop.splash()->isVisible());
    EXPECT_TRUE(desktop.mainWindow()->isVisible());
    EXPECT_TRUE(desktop.openWindow()->isVisible());
    EXPECT_FALSE(desktop.openWindow()->isModal());
    EXPECT_EQ(desktop.openWindow()->windowHandle()->transientParent(),
              desktop.mainWindow()->windowHandle());
    EXPECT_EQ(title(), "Verdolin");
    EXPECT_FALSE(folder.exists("settings/vdln.ini"));
}

TEST_F(DesktopTest, TheLoadingWindowIsMadeWithTheMainWindowAndNotShown) {
    start();
    EXPECT_FALSE(desktop.loading().isVisible());
}

TEST_F(DesktopTest, ANewArchiveIsCreatedAndTheTitleAndTheSettingsFollow) {
    start();
    dialogs.choose(folder.pathOf("photos.mdb"));
    clickTab(2);
    click(desktop.openWindow(), "btnNewOk");
    EXPECT_TRUE(folder.exists("photos.mdb"));
    EXPECT_EQ(title(), "Verdolin - photos.mdb");
    EXPECT_EQ(settings(), settingsWith(folder.pathOf("photos.mdb")));
    EXPECT_FALSE(desktop.openWindow()->isVisible());
}

TEST_F(DesktopTest, AnErasedArchiveGivesWayToAnEmptyOne) {
    folder.makeFile("old.mdb", "something else");
    start();
    dialogs.choose(folder.pathOf("old.mdb"));
    clickTab(2);
    messages.expect(MessageAnswer::Yes);
    click(desktop.openWindow(), "btnNewOk");
    EXPECT_EQ(title(), "Verdolin - old.mdb");
    EXPECT_GT(folder.read("old.mdb").size(), 10000U);
}

TEST_F(DesktopTest, AFolderThatIsNotThereCannotTakeAnArchive) {
    start();
    dialogs.choose(folder.pathOf("missing/a.mdb"));
    clickTab(2);
    messages.expect(MessageAnswer::Ok);
    click(desktop.openWindow(), "btnNewOk");
    EXPECT_EQ(messages.asked[0].title, "Error Creating Database");
    EXPECT_EQ(title(), "Verdolin");
    EXPECT_EQ(state.archiveName, "a.mdb");
    EXPECT_FALSE(folder.exists("settings/vdln.ini"));
}

TEST_F(DesktopTest, ARecentArchiveIsOpenedAndExchanged) {
    folder.makeFile("settings/vdln.ini",
                    "; mine\n[recentarchives]\ncurrent=/a/a.mdb\nrecent1=/b/b.mdb\n[other]\nx=1\n");
    start();
    desktop.openWindow()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(desktop.openWindow()));
    auto* list = desktop.openWindow()->findChild<QWidget*>("listRecent");
    list->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list, Qt::Key_Space);
    messages.expect(MessageAnswer::Ok);  // to what is said of an archive that is not there
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(title(), "Verdolin - b.mdb");
    EXPECT_EQ(settings(),
              "; mine\n[recentarchives]\ncurrent=/b/b.mdb\nrecent1=/a/a.mdb\nrecent2=\nrecent3=\n"
              "recent4=\nrecent5=\n[other]\nx=1\n");
}

TEST_F(DesktopTest, TheOpenWindowComesBackWithItsState) {
    start();
    const open::FormOpen* window = desktop.openWindow();
    dialogs.choose("/x/y.mdb");
    clickTab(1);
    messages.expect(MessageAnswer::Ok);
    click(desktop.openWindow(), "btnExistOK");
    desktop.openWindow()->close();
    choose("mnuFileOpen");
    EXPECT_EQ(desktop.openWindow(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->findChild<QLineEdit*>("textExisting")->text(), "y.mdb  found at: /x/");
}

TEST_F(DesktopTest, ACurrentArchiveThatNoLongerExistsIsToldAndTheOpenWindowStays) {
    folder.makeFile("settings/vdln.ini", settingsWith("/gone/gone.mdb"));
    start();
    messages.expect(MessageAnswer::Ok);
    click(desktop.openWindow(), "btnRecentOpen");
    EXPECT_EQ(title(), "Verdolin - gone.mdb");
    EXPECT_EQ(messages.asked.back().title, "Verdolin");
    EXPECT_TRUE(holds("/gone/gone.mdb: there is no such file."));
    EXPECT_TRUE(desktop.openWindow()->isVisible());
}

TEST_F(DesktopTest, SettingsThatCannotBeWrittenArePassedOver) {
    folder.remove("settings");
    folder.makeFile("settings", "a file where the folder should be");
    start();
    dialogs.choose("/x/y.mdb");
    clickTab(1);
    messages.expect(MessageAnswer::Ok);
    click(desktop.openWindow(), "btnExistOK");
    EXPECT_EQ(title(), "Verdolin - y.mdb");
    EXPECT_EQ(folder.read("settings"), "a file where the folder should be");
}

TEST_F(DesktopTest, SettingsOfTenMegabytesAreRead) {
    const std::string large =
        "[x]\n" + std::string(10 << 20, '\xFF') + "\n" + "[recentarchives]\ncurrent=/a/a.mdb\n";
    folder.makeFile("settings/vdln.ini", large);
    start();
    EXPECT_EQ(state.archiveName, "a.mdb");
    EXPECT_EQ(settings(), large);
}

TEST_F(DesktopTest, AFailureInAWindowIsShownAndTheProgramGoesOn) {
    // A file of the kernel's own, which nobody can erase.
    start();
    dialogs.choose("/proc/self/status");
    messages.expect(MessageAnswer::Cancel);
    clickTab(2);
    EXPECT_FALSE(desktop.openWindow()->findChild<QPushButton*>("btnNewOk")->isEnabled());
    messages.expect(MessageAnswer::Yes);  // to erasing it
    messages.expect(MessageAnswer::Ok);   // to what the boundary says
    desktop.openWindow()->findChild<QPushButton*>("btnNewOk")->setEnabled(true);
    click(desktop.openWindow(), "btnNewOk");
    EXPECT_EQ(messages.asked.back().title, "Verdolin");
    EXPECT_NE(messages.asked.back().text.find("the old archive cannot be erased"),
              std::string::npos);
    EXPECT_TRUE(desktop.openWindow()->isVisible());
    EXPECT_EQ(state.archiveName, "");
}

TEST_F(DesktopTest, AboutIsMadeOnceAndShown) {
    start();
    EXPECT_EQ(desktop.about(), nullptr);
    choose("mnuHelpAbout");
    FormAbout* about = desktop.about();
    EXPECT_TRUE(about->isVisible());
    EXPECT_FALSE(about->isModal());
    about->close();
    choose("mnuHelpAbout");
    EXPECT_EQ(desktop.about(), about);
    EXPECT_TRUE(about->isVisible());
}

TEST_F(DesktopTest, SplashAndAboutStandInTheMiddle) {
    // The frame that the window system adds is known only when the window is shown.
    constexpr int frame = 40;
    const auto distance = [](const QRect& one, const QRect& other) {
        return (one.center() - other.center()).manhattanLength();
    };
    desktop.showSplash();
    EXPECT_LE(distance(desktop.splash()->frameGeometry(),
                       desktop.splash()->screen()->availableGeometry()),
              frame);
    click(desktop.splash(), "btnStart");
    choose("mnuHelpAbout");
    EXPECT_LE(distance(desktop.about()->frameGeometry(), desktop.mainWindow()->frameGeometry()),
              frame);
    EXPECT_EQ(desktop.about()->windowHandle()->transientParent(),
              desktop.mainWindow()->windowHandle());
}

TEST_F(DesktopTest, AMissingHelpFileProducesNoMessage) {
    start();
    choose("mnuHelpHelp");
    EXPECT_EQ(desktop.help(), nullptr);
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(DesktopTest, AHelpFileThatIsNoneProducesNoMessage) {
    start();
    folder.makeFile("help/vdln.hlp", "\xFF\xFE no text");
    choose("mnuHelpHelp");
    EXPECT_EQ(desktop.help(), nullptr);
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(DesktopTest, HelpIsShownFromBesideTheProgram) {
    start();
    folder.makeFile("help/vdln.hlp", "# Help\n");
    choose("mnuHelpHelp");
    EXPECT_TRUE(desktop.help()->isVisible());
}

TEST_F(DesktopTest, TheProgressWindowIsHiddenOnceAnArchiveHasBeenOpened) {
    start();
    desktop.progress().show();
    messages.expect(MessageAnswer::Ok);
    click(desktop.openWindow(), "btnRecentOpen");
    EXPECT_TRUE(holds("no archive is open"));
    EXPECT_FALSE(desktop.progress().isVisible());
}

TEST_F(DesktopTest, ExitEndsTheProgramAtOnce) {
    start();
    choose("mnuHelpAbout");
    choose("mnuFileExit");
    EXPECT_EQ(left, 1);
    EXPECT_FALSE(desktop.mainWindow()->isVisible());
    EXPECT_FALSE(desktop.openWindow()->isVisible());
    EXPECT_FALSE(desktop.about()->isVisible());
    EXPECT_FALSE(folder.exists("settings/vdln.ini"));
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_THROW(desktop.events().runPendingEvents(), EndOfProgram);
}

TEST_F(DesktopTest, ExitOfTheSplashEndsTheProgramToo) {
    desktop.showSplash();
    click(desktop.splash(), "btnExit");
    EXPECT_EQ(left, 1);
    EXPECT_FALSE(folder.exists("settings/vdln.ini"));
}

TEST_F(DesktopTest, WithoutAProgramFolderTheSplashStaysAndTheFailureIsTold) {
    start();
    desktop.openWindow()->close();
    desktop.mainWindow()->hide();
    // The second start finds the windows; a first one that fails is tried here on a desktop of its
    // own.
    struct Homeless : support::FakeShell {
        std::string programFolder() override {
            if (moved) {
                throw base::FileFailure("the program folder cannot be told");
            }
            return folder;
        }
        bool moved = false;
    };
    struct HomelessMachine : Machine {
        platform::ShellServices& shell() override { return homeless; }
        Homeless homeless;
    } nowhere;
    Desktop other({state, nowhere, engine, messages, dialogs, boundary, [] {}});
    other.showSplash();
    nowhere.homeless.moved = true;
    messages.expect(MessageAnswer::Ok);
    click(other.splash(), "btnStart");
    EXPECT_TRUE(other.splash()->isVisible());
    EXPECT_EQ(messages.asked.back(),
              failureReport(base::FileFailure("the program folder cannot be told")));
    nowhere.homeless.moved = false;
    click(other.splash(), "btnStart");
    EXPECT_TRUE(other.openWindow()->isVisible());
}

}  // namespace
}  // namespace shell
