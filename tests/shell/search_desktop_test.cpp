#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/media_rows.h"
#include "archive/record_rows.h"
#include "jet/checker.h"
#include "jet/engine.h"
#include "platform/file_private_profile.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "search/form_search.h"
#include "shell/archive_tree.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_main.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/archive/archive_fixture.h"
#include "tests/explore/sample_rows.h"
#include "tests/shell/modal.h"
#include "tests/shell/test_application.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_file_dialogs.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

// The search window in the whole desktop, with the library of the search component as it ships.

namespace shell {
namespace {

constexpr const char* libraryName = "libsearchcontrol.so";
constexpr int patience = 20000;

class Machine : public support::FakePlatform {
  public:
    Machine() : real_(platform::createPlatform()) { opener = &real_->files(); }
    platform::PrivateProfile& privateProfile() override { return settingsFiles; }

    platform::FilePrivateProfile settingsFiles;

  private:
    std::unique_ptr<platform::Platform> real_;
};

class SearchDesktopTest : public testing::Test {
  protected:
    SearchDesktopTest() {
        folder.makeFolder("settings");
        machine.fakeShell.folder = folder.path();
        support::testApplication().setBoundary(&boundary);
    }
    ~SearchDesktopTest() override {
        support::testApplication().setBoundary(nullptr);
        EXPECT_TRUE(messages.allAnswersUsed());
    }

    void installLibrary() {
        folder.makeLink(libraryName, std::string(VERDOLIN_PROGRAM_FOLDER) + "/" + libraryName);
    }
    void openArchive() {
        state.archiveFolder = folder.path() + "/";
        state.archiveName = "a.mdb";
        ASSERT_TRUE(archive::createArchive(engine, state.currentArchive()));
        archive::ArchiveTable media(engine, state.currentArchive(), "media");
        const archive::MediaFields fields(media.rows());
        archive::addMedia(media.rows(), fields, support::medium(1, "Holiday", "CD_HOL"));
        archive::addMedia(media.rows(), fields, support::medium(2, "Backup", "BACK"));
        media.close();
        archive::ArchiveTable records(engine, state.currentArchive(), "main");
        archive::RecordWriter writer(records.rows());
        for (const base::ScanEntry& entry :
             {support::folder("1:", "photos"), support::file("1:\\photos", "beach.jpg"),
              support::file("1:\\photos", "house.jpg"), support::file("2:", "letter.txt")}) {
            writer.write(entry, entry.mediaId);
        }
        records.close();
    }
    void chooseSearch() { desktop.mainWindow()->findChild<QAction*>("mnuSearchSearch")->trigger(); }
    QTableView* results() { return desktop.searchWindow()->findChild<QTableView*>("listResults"); }
    QLineEdit* line() { return desktop.searchWindow()->findChild<QLineEdit*>("queryLine"); }
    /// Types a query and waits for that many results.
    void search(const QString& query, int count) {
        line()->setText(query);
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return results()->model()->rowCount() == count; }, patience));
    }
    std::string node() {
        const QTreeWidgetItem* item = desktop.mainWindow()->workspace().tree()->currentItem();
        return item == nullptr ? "" : ArchiveTree::keyOf(item);
    }
    std::vector<std::string> selectedRecords() {
        RecordList* list = desktop.mainWindow()->workspace().list();
        std::vector<std::string> names;
        for (const QModelIndex& index : list->selectionModel()->selectedRows()) {
            names.push_back(index.data().toString().toStdString());
        }
        return names;
    }
    void choose(const char* action) {
        desktop.mainWindow()->findChild<QAction*>(action)->trigger();
    }
    static void click(QWidget* window, const char* button) {
        QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
    }
    std::vector<std::string> column(const char* field) {
        return support::ArchiveTables(engine).column(state.currentArchive(), "main", field);
    }
    std::string obstacle() {
        return desktop.searchWindow()->findChild<QLabel*>("labelObstacle")->text().toStdString();
    }

    support::TemporaryFolder folder;
    Machine machine;
    jet::Engine engine{*machine.opener};
    base::ProgramState state;
    support::ScriptedMessageBox messages;
    support::ScriptedFileDialogs dialogs;
    FailureBoundary boundary{messages};
    Desktop desktop{{state, machine, engine, messages, dialogs, boundary, [] {}}};
};

TEST_F(SearchDesktopTest, TheWindowIsMadeWithTheMainWindowAndNotShown) {
    installLibrary();
    desktop.showMainWindow();
    ASSERT_NE(desktop.searchWindow(), nullptr);
    EXPECT_FALSE(desktop.searchWindow()->isVisible());
    EXPECT_NE(desktop.searchWindow()->findChild<QWidget*>("search_control"), nullptr);
}

TEST_F(SearchDesktopTest, EachChoiceHandsOnTheArchiveOfThatMoment) {
    installLibrary();
    desktop.showMainWindow();
    chooseSearch();
    auto* control = desktop.searchWindow()->findChild<QWidget*>("search_control");
    ASSERT_NE(control, nullptr);
    EXPECT_TRUE(desktop.searchWindow()->isVisible());
    EXPECT_FALSE(desktop.searchWindow()->isModal());
    EXPECT_EQ(control->property("archivePath").toString(), "");
    openArchive();
    chooseSearch();
    EXPECT_EQ(control->property("archivePath").toString().toStdString(), folder.path() + "/a.mdb");
}

TEST_F(SearchDesktopTest, AnEntryIsShownInTheTreeAndInTheList) {
    installLibrary();
    openArchive();
    desktop.showMainWindow();
    chooseSearch();
    search("house", 1);
    QTest::keyClick(line(), Qt::Key_Return);
    EXPECT_EQ(node(), "1:\\photos");
    EXPECT_EQ(selectedRecords(), std::vector<std::string>{"house.jpg"});
    EXPECT_EQ(state.viewMode, "archive");
    // Another medium, and then the first one again, which is not the one read last any more.
    search("letter", 1);
    QTest::keyClick(line(), Qt::Key_Return);
    EXPECT_EQ(node(), "2:");
    EXPECT_EQ(selectedRecords(), std::vector<std::string>{"letter.txt"});
    search("beach", 1);
    QTest::keyClick(line(), Qt::Key_Return);
    EXPECT_EQ(node(), "1:\\photos");
    EXPECT_EQ(selectedRecords(), std::vector<std::string>{"beach.jpg"});
}

TEST_F(SearchDesktopTest, AFolderIsShownByWhatIsInIt) {
    installLibrary();
    openArchive();
    desktop.showMainWindow();
    chooseSearch();
    search("folder: photos", 1);
    QTest::keyClick(line(), Qt::Key_Return);
    EXPECT_EQ(node(), "1:\\photos");
    EXPECT_EQ(desktop.mainWindow()->workspace().list()->records().rowCount(), 2);
    EXPECT_TRUE(selectedRecords().empty());
}

TEST_F(SearchDesktopTest, KeywordsAreGivenInTheMiddleOfASave) {
    installLibrary();
    openArchive();
    support::FakeDrive& drive = machine.machineDrives.add('d', "NEW", 4);
    drive.totalBytes = 650ULL << 20;
    for (int i = 0; i < 200; ++i) {
        machine.disk.addFile("d:\\file" + std::to_string(i), 1);
    }
    desktop.showMainWindow();
    chooseSearch();
    search("photos jpg", 2);
    choose("mnuArchScan");
    desktop.scanWindow()->findChild<QLineEdit*>("inputMediaName")->setText("new");
    click(desktop.scanWindow(), "btnScan");
    choose("mnuArchSave");
    std::vector<std::size_t> stored;
    QTimer::singleShot(0, [&] {
        support::whenModal<QDialog>([&](QDialog& dialog) {
            stored.push_back(column("filename").size());
            QTest::keyClicks(dialog.findChild<QLineEdit*>("inputKeywords"), "sea");
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        results()->selectAll();
        desktop.searchWindow()->findChild<QAction*>("actionKeywords")->trigger();
        stored.push_back(column("filename").size());
    });
    click(desktop.saveWindow(), "btnArchive");
    ASSERT_EQ(stored.size(), 2U);
    EXPECT_LT(stored.back(), 204U) << "the save was over already";
    EXPECT_EQ(column("filename").size(), 204U);
    const std::vector<std::string> keywords = column("keywords");
    EXPECT_EQ(std::ranges::count(keywords, "sea"), 2);
    EXPECT_EQ(std::ranges::count(keywords, ""), 202);
    EXPECT_TRUE(jet::checkDatabase(*machine.opener, folder.pathOf("a.mdb")).isSound());
}

TEST_F(SearchDesktopTest, WithoutTheLibraryTheProgramStartsAndTheWindowSaysSo) {
    desktop.showMainWindow();
    EXPECT_TRUE(desktop.mainWindow()->isVisible());
    chooseSearch();
    EXPECT_TRUE(desktop.searchWindow()->isVisible());
    EXPECT_NE(obstacle().find("libsearchcontrol"), std::string::npos) << obstacle();
    EXPECT_EQ(desktop.searchWindow()->findChild<QWidget*>("search_control"), nullptr);
}

TEST_F(SearchDesktopTest, ALibraryThatIsNoneIsSaidToBeNone) {
    folder.makeFile(libraryName, "this is no library");
    desktop.showMainWindow();
    chooseSearch();
    EXPECT_NE(obstacle().find("libsearchcontrol"), std::string::npos) << obstacle();
}

TEST_F(SearchDesktopTest, ALibraryThatComesLaterIsTaken) {
    desktop.showMainWindow();
    chooseSearch();
    installLibrary();
    chooseSearch();
    EXPECT_NE(desktop.searchWindow()->findChild<QWidget*>("search_control"), nullptr);
}

}  // namespace
}  // namespace shell
