// The main road through the real windows: a drive is scanned, the main window shows it, and it is
// saved into the current archive.

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "archive/makedb.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/archive/archive_fixture.h"
#include "tests/shell/desktop_fixture.h"

namespace shell {
namespace {

using base::MessageAnswer;
using Texts = std::vector<std::string>;

class ScanAndSaveTest : public support::DesktopTest {
  protected:
    ScanAndSaveTest() {
        state.archiveFolder = folder.path() + "/";
        state.archiveName = "a.mdb";
        archive::createArchive(engine, state.currentArchive());
        support::FakeDrive& drive = machine.machineDrives.add('d', "HOLIDAY", 4);
        drive.totalBytes = 650ULL << 20;
        drive.totalFree = 138ULL << 20;
        machine.disk.addFolder("d:\\photos");
        machine.disk.addFile("d:\\photos\\1.jpg", 11);
        machine.disk.addFile("d:\\read.me", 22);
        desktop.showMainWindow();
    }

    void scanAs(const char* name) {
        choose("mnuArchScan");
        desktop.scanWindow()->findChild<QLineEdit*>("inputMediaName")->setText(name);
        click(desktop.scanWindow(), "btnScan");
    }
    void save() {
        choose("mnuArchSave");
        click(desktop.saveWindow(), "btnArchive");
    }
    Texts headings() {
        Texts texts;
        for (int column = 0; column < list().records().columnCount(); ++column) {
            texts.push_back(list()
                                .records()
                                .headerData(column, Qt::Horizontal, Qt::DisplayRole)
                                .toString()
                                .toStdString());
        }
        return texts;
    }
    Texts column(const char* table, const char* field) {
        return support::ArchiveTables(engine).column(state.currentArchive(), table, field);
    }
    std::string status(int index) {
        return desktop.mainWindow()->workspace().status(index)->text().toStdString();
    }
    /// What `action` does is done by an event in the middle of the next long operation.
    static void inTheMiddle(const std::function<void()>& action) { QTimer::singleShot(0, action); }
    void manyFiles(int count) {
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            machine.disk.addFile("d:\\" + std::to_string(i / 200) + "\\" + number);
        }
    }
};

const Texts tenColumns{"Name",    "Path",    "Type",         "Type",          "Keywords",
                       "Notes 1", "Notes 2", "Date Created", "Date Modified", "Size"};

TEST_F(ScanAndSaveTest, AMediumIsScannedShownAndSaved) {
    scanAs("photos 2001");
    EXPECT_TRUE(desktop.mainWindow()->workspace().panel()->isVisible());
    EXPECT_EQ(names(), (Texts{"photos", "read.me", "1.jpg"}));
    EXPECT_EQ(headings(), tenColumns);
    EXPECT_EQ(list().records().text(3, 2), "1:\\photos");
    EXPECT_EQ(list().records().text(3, 10), "11");
    EXPECT_EQ(status(0), "1: HOLIDAY as User Name: photos 2001 is a: CDROM");
    EXPECT_EQ(status(1), "3 files and folders totalling: 512 of 650 total size.");
    EXPECT_TRUE(desktop.mainWindow()->findChild<QAction*>("mnuArchSave")->isEnabled());
    EXPECT_TRUE(column("main", "filename").empty());
    save();
    EXPECT_EQ(column("media", "medianame"), Texts{"photos 2001"});
    EXPECT_EQ(column("media", "numberfiles"), Texts{"3"});
    EXPECT_EQ(column("main", "filename"), (Texts{"photos", "read.me", "1.jpg"}));
    EXPECT_EQ(desktop.saveWindow(), nullptr);
}

TEST_F(ScanAndSaveTest, TheWindowsAreNotModalAndStandInFrontOfTheMainWindow) {
    choose("mnuArchScan");
    choose("mnuArchSave");
    for (QWidget* window : {static_cast<QWidget*>(desktop.scanWindow()),
                            static_cast<QWidget*>(desktop.saveWindow())}) {
        EXPECT_TRUE(window->isVisible());
        EXPECT_FALSE(window->isModal());
        EXPECT_EQ(window->windowHandle()->transientParent(), desktop.mainWindow()->windowHandle());
    }
}

TEST_F(ScanAndSaveTest, EachColumnIsAsWideAsItsPartOfTheList) {
    scanAs("x");
    const double parts[] = {.1, .2, .05, .15, .1, .1, .1, .05, .05, .1};
    for (int section = 0; section < 10; ++section) {
        EXPECT_NEAR(list().header()->sectionSize(section), parts[section] * list().width(), 1.0)
            << section;
    }
}

TEST_F(ScanAndSaveTest, TheListEndsWithExactlyTenColumnsWhateverItHadBefore) {
    for (int i = 0; i < 20; ++i) {
        list().records().insertColumnAt(1, "old");
    }
    scanAs("x");
    EXPECT_EQ(headings(), tenColumns);
    scanAs("y");
    EXPECT_EQ(headings(), tenColumns);
}

TEST_F(ScanAndSaveTest, AListThatWasSortedStaysSortedAndShowsIt) {
    scanAs("x");
    list().sortBy(0, RecordModel::Order::Descending);
    scanAs("y");
    EXPECT_EQ(names(), (Texts{"read.me", "photos", "1.jpg"}));
    EXPECT_EQ(list().header()->sortIndicatorSection(), 0);
    EXPECT_EQ(list().header()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_TRUE(list().header()->isSortIndicatorShown());
}

TEST_F(ScanAndSaveTest, AfterAScanTheWindowIsOpenedWithEverythingReadAnew) {
    scanAs("first");
    EXPECT_FALSE(desktop.scanWindow()->isVisible());
    save();
    const QPointer<scan::FormScan> used = desktop.scanWindow();
    choose("mnuArchScan");
    EXPECT_NE(desktop.scanWindow(), used.data());
    EXPECT_TRUE(desktop.scanWindow()->isVisible());
    EXPECT_FALSE(desktop.scanWindow()->findChild<QPushButton*>("btnScan")->isEnabled());
    EXPECT_EQ(desktop.scanWindow()->findChild<QLineEdit*>("inputMediaName")->text(), "");
    EXPECT_EQ(desktop.scanWindow()->findChild<QLabel*>("displayMediaId")->text(),
              "Media ID Number:2");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(used.isNull());
}

TEST_F(ScanAndSaveTest, AWindowThatIsOpenIsOnlyBroughtToTheFront) {
    choose("mnuArchScan");
    choose("mnuArchSave");
    scan::FormScan* const scanning = desktop.scanWindow();
    scanning->findChild<QLineEdit*>("inputMediaName")->setText("typed");
    save::FormSave* const saving = desktop.saveWindow();
    choose("mnuArchScan");
    choose("mnuArchSave");
    EXPECT_EQ(desktop.scanWindow(), scanning);
    EXPECT_EQ(desktop.saveWindow(), saving);
    EXPECT_EQ(state.currentMedia.mediaName, "typed");
}

TEST_F(ScanAndSaveTest, TheSaveWindowIsMadeAnewForEachOpening) {
    scanAs("first");
    save();
    choose("mnuArchSave");
    EXPECT_EQ(desktop.saveWindow()->findChild<QListWidget*>("listMedia")->count(), 1);
    click(desktop.saveWindow(), "btnCancel");
    EXPECT_EQ(desktop.saveWindow(), nullptr);
    scanAs("second");
    save();
    choose("mnuArchSave");
    EXPECT_EQ(desktop.saveWindow()->findChild<QListWidget*>("listMedia")->count(), 2);
}

TEST_F(ScanAndSaveTest, AnArchiveThatIsGoneIsSaidAndNoSaveWindowComes) {
    folder.remove("a.mdb");
    messages.expect(MessageAnswer::Ok);
    choose("mnuArchSave");
    EXPECT_EQ(messages.asked.at(0).title, "Verdolin");
    EXPECT_NE(messages.asked[0].text.find("a.mdb"), std::string::npos);
    EXPECT_EQ(desktop.saveWindow(), nullptr);
}

TEST_F(ScanAndSaveTest, TheOverflowOfAScanIsSaidWithTheCompanionAsTheWayOut) {
    manyFiles(32767);
    messages.expect(MessageAnswer::Ok);
    scanAs("large");
    EXPECT_EQ(messages.asked.at(0).title, "Verdolin");
    EXPECT_NE(messages.asked[0].text.find("32,767"), std::string::npos);
    EXPECT_NE(messages.asked[0].text.find("vdln scan"), std::string::npos);
    EXPECT_TRUE(desktop.scanWindow()->isVisible());
    EXPECT_TRUE(names().empty());
}

TEST_F(ScanAndSaveTest, CancelInTheMiddleOfAWalkAndANewWindowBeforeItsEnd) {
    manyFiles(300);
    choose("mnuArchScan");
    const QPointer<scan::FormScan> first = desktop.scanWindow();
    first->findChild<QLineEdit*>("inputMediaName")->setText("first");
    inTheMiddle([&] {
        click(first, "btnCancel");
        EXPECT_EQ(desktop.scanWindow(), nullptr);
        choose("mnuArchScan");
        EXPECT_NE(desktop.scanWindow(), first.data());
        EXPECT_FALSE(first.isNull());
    });
    click(first, "btnScan");
    EXPECT_EQ(state.viewMode, "scan");
    EXPECT_EQ(names().size(), 305U);
    EXPECT_TRUE(desktop.scanWindow()->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
}

TEST_F(ScanAndSaveTest, ExitInTheMiddleOfAWalkEndsItAtOnce) {
    manyFiles(300);
    inTheMiddle([&] { choose("mnuFileExit"); });
    scanAs("x");
    EXPECT_EQ(left, 1);
    EXPECT_LT(state.scanCount, 10);
    EXPECT_TRUE(names().empty());
    EXPECT_FALSE(desktop.scanWindow()->isVisible());
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(ScanAndSaveTest, ExitInTheMiddleOfASaveLeavesAnArchiveThatCanBeRead) {
    manyFiles(300);
    scanAs("x");
    choose("mnuArchSave");
    inTheMiddle([&] { choose("mnuFileExit"); });
    click(desktop.saveWindow(), "btnArchive");
    EXPECT_EQ(left, 1);
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(column("media", "medianame"), Texts{"x"});
    EXPECT_GE(column("main", "filename").size(), 1U);
    EXPECT_LT(column("main", "filename").size(), 10U);
}

TEST_F(ScanAndSaveTest, TheMainWindowsCloseBoxInTheMiddleOfASaveIsExit) {
    manyFiles(300);
    scanAs("x");
    choose("mnuArchSave");
    inTheMiddle([&] { desktop.mainWindow()->close(); });
    click(desktop.saveWindow(), "btnArchive");
    EXPECT_EQ(left, 1);
    EXPECT_LT(column("main", "filename").size(), 10U);
}

TEST_F(ScanAndSaveTest, ScanAndSaveAtTheSameTimeDoNotMeetInDeadWindows) {
    manyFiles(300);
    scanAs("x");
    choose("mnuArchSave");
    inTheMiddle([&] { scanAs("y"); });
    click(desktop.saveWindow(), "btnArchive");
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(names().size(), 305U);
}

TEST_F(ScanAndSaveTest, ANameThatLooksLikeMarkupIsShownAsItIs) {
    machine.machineDrives.at('d').label = "<b>&amp; \"disc\"</b>";
    scanAs("<i>mine</i>");
    choose("mnuArchSave");
    auto* label = desktop.saveWindow()->findChild<QLabel*>("displayDrive");
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->text(),
              "Scanned Media is: <b>&amp; \"disc\"</b>; your name of: <i>mine</i> is a: CDROM");
}

}  // namespace
}  // namespace shell
