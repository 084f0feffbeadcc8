#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/media_rows.h"
#include "archive/record_rows.h"
#include "jet/engine.h"
#include "platform/file_private_profile.h"
#include "search/form_search.h"
#include "shell/archive_tree.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_main.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/explore/sample_rows.h"
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
