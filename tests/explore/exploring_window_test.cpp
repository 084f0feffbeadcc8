#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "archive/makedb.h"
#include "base/program_state.h"
#include "explore/explore_texts.h"
#include "jet/engine.h"
#include "open/form_open.h"
#include "shell/archive_tree.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_flashloading.h"
#include "shell/form_main.h"
#include "shell/pictures.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/archive/archive_fixture.h"
#include "tests/explore/sample_rows.h"
#include "tests/shell/test_application.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_file_dialogs.h"
#include "tests/support/scripted_message_box.h"
#include "tests/support/temporary_folder.h"

// Exploring in the real windows, on archives in files.

namespace shell {
namespace {

using base::MessageAnswer;
using support::file;
using support::folder;
using support::medium;
using Texts = std::vector<std::string>;

class ExploringWindow : public testing::Test {
  protected:
    ExploringWindow() : real(platform::createPlatform()), engine(real->files()) {
        machine.opener = &real->files();
        machine.fakeShell.folder = place.path();
        support::testApplication().setBoundary(&boundary);
        desktop.showMainWindow();
        main().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&main()));
    }
    ~ExploringWindow() override {
        support::testApplication().setBoundary(nullptr);
        EXPECT_TRUE(messages.allAnswersUsed());
    }

    base::ArchiveLocation location(const std::string& name) const {
        return {place.path() + "/", name};
    }
    void setCurrent(const std::string& name) {
        state.archiveFolder = location(name).folder;
        state.archiveName = location(name).name;
    }
    /// A new archive, which is the current one from now on.
    void create(const std::string& name, const std::vector<base::MediaInfo>& media,
                const std::vector<base::ScanEntry>& records = {}) {
        setCurrent(name);
        archive::createArchive(engine, state.currentArchive());
        support::ArchiveTables tables(engine);
        tables.addMedia(state.currentArchive(), media);
        tables.addRecords(state.currentArchive(), records);
    }
    /// Two media, the first of which takes a while to read.
    void createLarge() {
        std::vector<base::ScanEntry> records;
        for (int i = 0; i < largeFolders; ++i) {
            const std::string name = "folder " + std::to_string(i);
            records.push_back(folder("1:", name));
            for (int j = 0; j < 10; ++j) {
                records.push_back(file("1:\\" + name, "picture " + std::to_string(j)));
            }
        }
        records.push_back(file("1:", "in the root"));
        records.push_back(folder("2:", "small"));
        records.push_back(file("2:", "of the second"));
        create("large.mdb", {medium(1, "Large", "L"), medium(2, "Small", "S")}, records);
    }

    void choose(const char* action) {
        auto* found = main().findChild<QAction*>(action);
        ASSERT_NE(found, nullptr) << action;
        found->trigger();
    }
    void explore() { choose("mnArchExplore"); }
    void click(const std::string& key) {
        QTreeWidgetItem* node = tree().node(key);
        ASSERT_NE(node, nullptr) << key;
        if (node->parent() != nullptr) {
            node->parent()->setExpanded(true);
        }
        tree().scrollToItem(node);
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {},
                          tree().visualItemRect(node).center());
    }
    /// Does something in the first round of events from now on.
    static void meanwhile(std::function<void()> action) {
        QTimer::singleShot(0, std::move(action));
    }

    FormMain& main() { return *desktop.mainWindow(); }
    ArchiveTree& tree() {
        return *dynamic_cast<ArchiveTree*>(main().findChild<QWidget*>("tvArchiveExplore"));
    }
    RecordList& list() {
        return *dynamic_cast<RecordList*>(main().findChild<QWidget*>("listScan"));
    }
    Texts column(int number) {
        Texts texts;
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            texts.push_back(list().model()->index(row, number - 1).data().toString().toStdString());
        }
        return texts;
    }
    Texts headings() {
        Texts texts;
        for (int i = 0; i < list().model()->columnCount(); ++i) {
            texts.push_back(list().model()->headerData(i, Qt::Horizontal).toString().toStdString());
        }
        return texts;
    }
    Texts roots() {
        Texts texts;
        for (int i = 0; i < tree().topLevelItemCount(); ++i) {
            texts.push_back(tree().topLevelItem(i)->text(0).toStdString());
        }
        return texts;
    }
    int foldersBelow(const std::string& key) { return tree().node(key)->childCount(); }

    static constexpr int largeFolders = 300;

    support::TemporaryFolder place;
    std::unique_ptr<platform::Platform> real;
    support::FakePlatform machine;
    jet::Engine engine;
    base::ProgramState state;
    support::ScriptedMessageBox messages;
    support::ScriptedFileDialogs dialogs;
    FailureBoundary boundary{messages};
    int left = 0;
    Desktop desktop{{state, machine, engine, messages, dialogs, boundary, [this] { ++left; }}};
};

TEST_F(ExploringWindow, TheMenuFillsTheTreeAndShowsTheWorkspace) {
    create("a.mdb", {medium(1, "Backup", "DISK1"), medium(7, "Holiday 2001", "CD_HOL01")});
    EXPECT_FALSE(main().findChild<QWidget*>("scan_main")->isVisible());
    explore();
    EXPECT_TRUE(main().findChild<QWidget*>("scan_main")->isVisible());
    EXPECT_EQ(roots(), (Texts{"1: Backup(DISK1)", "7: Holiday 2001(CD_HOL01)"}));
    EXPECT_EQ(foldersBelow("1:"), 0);
    EXPECT_EQ(state.viewMode, "archive");
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(ExploringWindow, TheListHasTenColumnsAndTwentyTheSecondTime) {
    create("a.mdb", {medium(1, "Backup", "DISK1")});
    explore();
    const Texts ten = {"Name",    "Path",    "Type",         "Type",          "Keywords",
                       "Notes 1", "Notes 2", "Date Created", "Date Modified", "Size"};
    EXPECT_EQ(headings(), ten);
    explore();
    Texts twenty = ten;
    twenty.insert(twenty.end(), ten.begin(), ten.end());
    EXPECT_EQ(headings(), twenty);
    EXPECT_EQ(roots().size(), 1U);
}

TEST_F(ExploringWindow, ColumnsArePartsOfTheListsWidthAndLeftAligned) {
    create("a.mdb", {medium(1, "Backup", "DISK1")});
    explore();
    const double parts[] = {.1, .2, .05, .15, .1, .1, .1, .05, .05, .1};
    for (int i = 0; i < 10; ++i) {
        EXPECT_NEAR(list().header()->sectionSize(i), list().width() * parts[i], 1.01) << i;
        EXPECT_TRUE(list().model()->headerData(i, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
                    Qt::AlignLeft);
    }
    const int widthOfPath = list().header()->sectionSize(1);
    main().resize(main().width() + 300, main().height());
    explore();
    EXPECT_EQ(list().header()->sectionSize(11), widthOfPath);
    EXPECT_GT(list().header()->sectionSize(1), widthOfPath);
}

TEST_F(ExploringWindow, TextsOfRowsStandBelowTheNewColumns) {
    create("a.mdb", {medium(1, "Backup", "DISK1")}, {file("1:", "a.jpg")});
    explore();
    explore();
    click("1:");
    EXPECT_EQ(column(1), Texts{"a.jpg"});
    EXPECT_EQ(column(2), Texts{"1:"});
    EXPECT_EQ(column(10), Texts{"0"});
    EXPECT_EQ(column(11), Texts{""});
    EXPECT_EQ(column(20), Texts{""});
}

TEST_F(ExploringWindow, ImagesAreThoseOfTheMediasTypes) {
    create("a.mdb", {medium(1, "a", "", "CDROM"), medium(2, "b", "", "cdrom")});
    explore();
    const auto picture = [](const QIcon& icon) { return icon.pixmap(16).toImage(); };
    const ImageList images;
    EXPECT_EQ(picture(tree().node("1:")->icon(0)), picture(images.image("cdrom")));
    EXPECT_EQ(picture(tree().node("2:")->icon(0)), picture(images.image("unknown")));
}

TEST_F(ExploringWindow, WithoutAnArchiveYesShowsTheOpenWindowAndDoesNotWaitForIt) {
    messages.expect(MessageAnswer::Yes);
    explore();
    EXPECT_EQ(messages.asked[0], explore::openArchiveQuestion());
    ASSERT_NE(desktop.openWindow(), nullptr);
    EXPECT_TRUE(desktop.openWindow()->isVisible());
    EXPECT_FALSE(desktop.openWindow()->isModal());
    EXPECT_FALSE(main().findChild<QWidget*>("scan_main")->isVisible());
}

TEST_F(ExploringWindow, WithoutAnArchiveNoLeavesTheMainWindowAsItIs) {
    messages.expect(MessageAnswer::No);
    explore();
    EXPECT_EQ(desktop.openWindow(), nullptr);
    EXPECT_FALSE(main().findChild<QWidget*>("scan_main")->isVisible());
    EXPECT_EQ(headings(), Texts{});
}

TEST_F(ExploringWindow, CancelInTheOpenWindowClosesTheArchiveSoThatItAsks) {
    create("a.mdb", {medium(1, "Backup", "DISK1")});
    choose("mnuFileOpen");
    QTest::mouseClick(desktop.openWindow()->findChild<QPushButton*>("btnRecentCancel"),
                      Qt::LeftButton);
    messages.expect(MessageAnswer::Cancel);
    explore();
    EXPECT_EQ(messages.asked[0].title, "Open Archive Required");
}

TEST_F(ExploringWindow, AnArchiveWithoutMediaSaysSo) {
    create("a.mdb", {});
    messages.expect(MessageAnswer::Ok);
    explore();
    EXPECT_EQ(messages.asked[0], explore::noDataMessage());
    EXPECT_EQ(roots(), Texts{});
}

TEST_F(ExploringWindow, AClickOnAMediumThenOnItsFolderListsFiles) {
    create("a.mdb", {medium(1, "Backup", "DISK1")},
           {folder("1:", "photos"), folder("1:\\photos", "2001"), file("1:", "readme"),
            file("1:\\photos", "a.jpg"), file("1:\\photos\\2001", "b.jpg")});
    explore();
    click("1:");
    EXPECT_EQ(column(1), Texts{"readme"});
    EXPECT_EQ(foldersBelow("1:"), 1);
    EXPECT_FALSE(desktop.loading().isVisible());
    click("1:\\photos");
    EXPECT_EQ(column(1), Texts{"a.jpg"});
    click("1:\\photos\\2001");
    EXPECT_EQ(column(1), Texts{"b.jpg"});
    click("1:");
    EXPECT_EQ(foldersBelow("1:"), 1);
}

TEST_F(ExploringWindow, TheLoadingWindowIsThereWhileAMediumIsRead) {
    createLarge();
    explore();
    bool wasThere = false;
    bool wasModal = true;
    meanwhile([&] {
        wasThere = desktop.loading().isVisible();
        wasModal = desktop.loading().isModal();
    });
    click("1:");
    EXPECT_TRUE(wasThere);
    EXPECT_FALSE(wasModal);
    EXPECT_FALSE(desktop.loading().isVisible());
    wasThere = false;
    meanwhile([&] { wasThere = desktop.loading().isVisible(); });
    click("1:");
    QTest::qWait(1);
    EXPECT_FALSE(wasThere);
}

TEST_F(ExploringWindow, TheKeysLeadThroughTheTree) {
    create("a.mdb", {medium(1, "a", ""), medium(2, "b", "")},
           {folder("2:", "photos"), file("2:\\photos", "a.jpg")});
    explore();
    tree().setFocus();
    tree().setCurrentItem(tree().node("1:"));
    QTest::keyClick(&tree(), Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([this] { return foldersBelow("2:") == 1; }));
    EXPECT_FALSE(state.mediaList[1].loaded);
    QTest::keyClick(&tree(), Qt::Key_Right);
    QTest::keyClick(&tree(), Qt::Key_Right);
    QTest::keyClick(&tree(), Qt::Key_Return);
    EXPECT_EQ(column(1), Texts{"a.jpg"});
}

TEST_F(ExploringWindow, ADoubleClickReadsTheMediumAndShowsItsFolders) {
    createLarge();
    explore();
    const QPoint there = tree().visualItemRect(tree().node("1:")).center();
    meanwhile([&] {
        QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, there);
        QTest::mouseRelease(tree().viewport(), Qt::LeftButton, {}, there);
    });
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, there);
    EXPECT_EQ(foldersBelow("1:"), largeFolders);
    EXPECT_TRUE(tree().node("1:")->isExpanded());
}

// Sorting and selecting

TEST_F(ExploringWindow, AListOnceSortedStaysSortedForEveryNode) {
    create("a.mdb", {medium(1, "a", "")},
           {folder("1:", "x"), file("1:", "b"), file("1:", "c"), file("1:", "a"),
            file("1:\\x", "e"), file("1:\\x", "d")});
    explore();
    click("1:");
    EXPECT_EQ(column(1), (Texts{"b", "c", "a"}));
    main().listScan_ColumnClick(1);
    EXPECT_EQ(column(1), (Texts{"c", "b", "a"}));
    main().listScan_ColumnClick(1);
    click("1:\\x");
    EXPECT_EQ(column(1), (Texts{"d", "e"}));
    explore();
    click("1:");
    EXPECT_EQ(column(1), (Texts{"a", "b", "c"}));
    EXPECT_EQ(list().header()->sortIndicatorSection(), 0);
}

TEST_F(ExploringWindow, SelectedRecordsArePositionsInTheList) {
    create("a.mdb", {medium(1, "a", "")},
           {file("1:\\x", "elsewhere"), file("1:", "a"), file("1:", "b"), file("1:", "c")});
    explore();
    click("1:");
    list().selectionModel()->select(list().model()->index(1, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    // The keywords window is modal: it has to be closed before the command comes back.
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    main().addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), std::vector<std::int16_t>{2});
    click("1:");
    EXPECT_TRUE(list().selectedPositions().empty());
}

// Archives that are not as they should be

TEST_F(ExploringWindow, AnArchiveThatGoesBeforeTheClickIsTold) {
    create("a.mdb", {medium(1, "a", ""), medium(2, "b", "")}, {file("1:", "x")});
    explore();
    place.remove("a.mdb");
    messages.expect(MessageAnswer::Ok);
    click("1:");
    EXPECT_EQ(messages.asked[0], explore::accessErrorMessage());
    EXPECT_FALSE(desktop.loading().isVisible());
    click("1:");  // is not tried again
    EXPECT_EQ(messages.asked.size(), 1U);
    messages.expect(MessageAnswer::Ok);
    click("2:");
    EXPECT_EQ(messages.asked[1], explore::accessErrorMessage());
}

TEST_F(ExploringWindow, AnArchiveThatGoesBeforeExploringIsToldByTheBoundary) {
    create("a.mdb", {medium(1, "a", "")});
    place.remove("a.mdb");
    messages.expect(MessageAnswer::Ok);
    explore();
    EXPECT_EQ(messages.asked[0].title, "Verdolin");
    EXPECT_NE(messages.asked[0].text.find("a.mdb"), std::string::npos);
    EXPECT_EQ(state.viewMode, "");
}

TEST_F(ExploringWindow, WhatIsNoArchiveIsToldByTheBoundary) {
    place.makeFile("a.mdb", std::string(10000, 'x'));
    setCurrent("a.mdb");
    messages.expect(MessageAnswer::Ok);
    explore();
    EXPECT_EQ(messages.asked[0].title, "Verdolin");
    EXPECT_EQ(roots(), Texts{});
}

TEST_F(ExploringWindow, AnArchiveCutShortIsNoEndOfTheProgram) {
    createLarge();
    const std::string whole = place.read("large.mdb");
    explore();
    place.makeFile("large.mdb", whole.substr(0, 3000));
    messages.expect(MessageAnswer::Ok);
    click("1:");
    EXPECT_EQ(messages.asked[0], explore::accessErrorMessage());
    EXPECT_FALSE(desktop.loading().isVisible());
    messages.expect(MessageAnswer::Ok);
    explore();
    EXPECT_EQ(messages.asked[1].title, "Verdolin");
    place.makeFile("large.mdb", whole);
    explore();
    click("1:");
    EXPECT_EQ(foldersBelow("1:"), largeFolders);
}

// While a medium is read

TEST_F(ExploringWindow, AnotherMediumClickedMeanwhileIsRead) {
    createLarge();
    explore();
    Texts listed;
    meanwhile([&] {
        click("2:");
        listed = column(1);
    });
    click("1:");
    EXPECT_EQ(listed, Texts{"of the second"});
    EXPECT_EQ(foldersBelow("2:"), 1);
    EXPECT_EQ(column(1), Texts{"in the root"});
    EXPECT_FALSE(desktop.loading().isVisible());
}

TEST_F(ExploringWindow, ExploringAgainMeanwhileGivesANewTreeWithTheFolders) {
    createLarge();
    explore();
    meanwhile([&] { explore(); });
    click("1:");
    EXPECT_EQ(roots().size(), 2U);
    EXPECT_EQ(foldersBelow("1:"), largeFolders);
    EXPECT_EQ(headings().size(), 20U);
    EXPECT_EQ(column(1), Texts{"in the root"});
}

TEST_F(ExploringWindow, OpeningAndExploringAnotherArchiveMeanwhileShowsThatOne) {
    create("second.mdb", {medium(1, "Of the second", "")}, {file("1:", "another root")});
    createLarge();
    explore();
    meanwhile([&] {
        choose("mnuFileOpen");
        setCurrent("second.mdb");
        explore();
    });
    click("1:");
    EXPECT_EQ(roots(), Texts{"1: Of the second()"});
    EXPECT_EQ(column(1), Texts{});
    click("1:");
    EXPECT_EQ(column(1), Texts{"another root"});
    EXPECT_EQ(foldersBelow("1:"), 0);
}

TEST_F(ExploringWindow, ClosingTheLoadingWindowStopsNothing) {
    createLarge();
    explore();
    meanwhile([&] { desktop.loading().close(); });
    click("1:");
    EXPECT_EQ(foldersBelow("1:"), largeFolders);
}

TEST_F(ExploringWindow, ExitMeanwhileEndsTheProgramWithoutAWord) {
    createLarge();
    explore();
    meanwhile([&] { choose("mnuFileExit"); });
    click("1:");
    EXPECT_EQ(left, 1);
    EXPECT_EQ(foldersBelow("1:"), 0);
    EXPECT_FALSE(desktop.loading().isVisible());
    EXPECT_FALSE(main().isVisible());
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(ExploringWindow, TheCloseBoxMeanwhileEndsTheProgramToo) {
    createLarge();
    explore();
    meanwhile([&] { main().close(); });
    click("1:");
    EXPECT_EQ(left, 1);
    EXPECT_FALSE(desktop.loading().isVisible());
    EXPECT_EQ(foldersBelow("1:"), 0);
}

TEST_F(ExploringWindow, KeysMeanwhileWaitForTheEnd) {
    createLarge();
    explore();
    tree().setFocus();
    meanwhile([&] { QTest::keyClick(&tree(), Qt::Key_Down); });
    click("1:");
    EXPECT_EQ(foldersBelow("1:"), largeFolders);
    EXPECT_FALSE(state.mediaList[2].loaded);
    ASSERT_TRUE(QTest::qWaitFor([this] { return foldersBelow("2:") == 1; }));
}

}  // namespace
}  // namespace shell
