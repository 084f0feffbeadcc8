#include "shell/form_main.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>
#include <algorithm>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/program_state.h"
#include "shell/archive_tree.h"
#include "shell/common_dialog.h"
#include "shell/failure_boundary.h"
#include "shell/failure_report.h"
#include "shell/pictures.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_message_box.h"

namespace shell {
namespace {

using Log = std::vector<std::string>;
using Order = RecordModel::Order;
using Positions = std::vector<std::int16_t>;

struct FakeHelp : HelpViewer {
    void showHelpFile(const std::string& path) override {
        shown.push_back(path);
        if (fails) {
            throw base::FileFailure("no help");
        }
    }
    Log shown;
    bool fails = false;
};

class FormMainTest : public testing::Test {
  protected:
    MainCommands commands() {
        const auto logged = [this](const char* entry) {
            return [this, entry] { log.emplace_back(entry); };
        };
        MainCommands commands;
        commands.openArchive = logged("open");
        commands.exitProgram = logged("exit");
        commands.showKeywords = logged("keywords");
        commands.exploreArchive = logged("explore");
        commands.scanForArchive = logged("scan");
        commands.saveIntoArchive = logged("save");
        commands.search = logged("search");
        commands.showAbout = logged("about");
        commands.createSearchWindow = logged("create search window");
        commands.createLoadingWindow = logged("create loading window");
        return commands;
    }

    QAction* action(const char* name) {
        auto* found = main.findChild<QAction*>(name);
        if (found == nullptr) {
            throw std::logic_error(std::string("there is no ") + name);
        }
        return found;
    }
    RecordList& list() { return *main.workspace().list(); }
    void showWorkspace() {
        main.show();
        main.arrangeWorkspace();
        QCoreApplication::processEvents();
    }
    void fill(int rows) {
        list().records().insertColumnAt(1, "Name");
        list().records().insertColumnAt(2, "Size");
        std::vector<RecordModel::Row> all;
        for (int i = 1; i <= rows; ++i) {
            all.push_back({"file" + std::to_string(i), std::to_string(i)});
        }
        list().records().appendRows(std::move(all));
    }
    void select(int position) {
        list().selectionModel()->select(list().records().index(position - 1, 0),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    Log column(int number) {
        Log texts;
        for (int position = 1; position <= list().records().rowCount(); ++position) {
            texts.push_back(list().records().text(position, number));
        }
        return texts;
    }
    void clickHeader(int column) {
        QHeaderView* header = list().header();
        const QPoint place(header->sectionViewportPosition(column - 1) + 10, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }
    QRect twips(const QWidget* widget) {
        const auto scaled = [&](int pixels) { return pixels * 1440 / widget->logicalDpiX(); };
        return {scaled(widget->x()), scaled(widget->y()), scaled(widget->width()),
                scaled(widget->height())};
    }

    base::ProgramState state;
    support::FakeShell machine;
    support::ScriptedMessageBox messages;
    FailureBoundary boundary{messages};
    FakeHelp help;
    Log log;
    FormMain main{state, machine, boundary, help, commands()};
};

TEST_F(FormMainTest, StartUpMakesTheSearchWindowThenTheLoadingWindow) {
    EXPECT_EQ(log, (Log{"create search window", "create loading window"}));
    EXPECT_FALSE(main.isVisible());
}

TEST_F(FormMainTest, TheWorkspaceIsHiddenAndEmptyAtStart) {
    main.show();
    EXPECT_EQ(main.windowTitle(), "Verdolin");
    EXPECT_EQ(main.objectName(), "form_main");
    EXPECT_FALSE(main.findChild<QWidget*>("scan_main")->isVisible());
    EXPECT_EQ(main.findChild<QTreeWidget*>("tvArchiveExplore")->topLevelItemCount(), 0);
    EXPECT_EQ(list().records().rowCount(), 0);
    EXPECT_EQ(list().records().columnCount(), 0);
}

TEST_F(FormMainTest, BothStatusLinesReadLoading) {
    const auto lines = main.findChildren<QLabel*>("displayDriveInfo");
    ASSERT_EQ(lines.size(), 2);
    for (qsizetype i = 0; i < 2; ++i) {
        EXPECT_EQ(lines[i]->property("index").toInt(), i);
        EXPECT_EQ(lines[i]->text(), "Loading . . .");
        EXPECT_EQ(lines[i]->textFormat(), Qt::PlainText);
    }
}

TEST_F(FormMainTest, HoldsTheDeclaredControlsInTheirOrder) {
    const Log declared{"comDialog",        "scan_main",        "tvArchiveExplore", "listScan",
                       "displayDriveInfo", "displayDriveInfo", "expImageList"};
    Log found;
    for (const QObject* control : main.findChildren<QObject*>()) {
        const std::string name = control->objectName().toStdString();
        if (std::find(declared.begin(), declared.end(), name) != declared.end()) {
            found.push_back(name);
        }
    }
    EXPECT_EQ(found, declared);
    EXPECT_EQ(main.findChild<QObject*>("listScan"), &list());
}

TEST_F(FormMainTest, MenusStandInTheirOrder) {
    Log found;
    for (const QAction* top : main.menuBar()->actions()) {
        found.push_back((top->menu()->objectName() + " " + top->text()).toStdString());
        for (const QAction* item : top->menu()->actions()) {
            found.push_back(
                (item->objectName() + " " + (item->isSeparator() ? QString("-") : item->text()))
                    .toStdString());
        }
    }
    EXPECT_EQ(found, (Log{"mnFile &File",
                          "mnuFileNew &New Archive",
                          "mnuFileOpen &Open Archive",
                          "mnuFileClose &Close Archive",
                          "mnuFileLine1 -",
                          "mnuFileSave &Save Archive",
                          "mnuFileSaveas Save Archive &As",
                          "mnuFileLine2 -",
                          "mnuFileExit &Exit",
                          "mnuPUList &Edit Records",
                          "mnuPULKeywords &Add Keywords and Notes",
                          "MnuPULLine1 -",
                          "mnuPULDelete &Delete Record",
                          "mnuArch &Archive",
                          "mnArchExplore &Explore Archive",
                          "mnuArchLine1 -",
                          "mnuArchScan Scan for &Archive",
                          "mnuArchSave &Save into Archive",
                          "mnuSearch &Search",
                          "mnuSearchSearch &Search",
                          "mnuHelp &Help",
                          "mnuHelpHelp &Help Topics",
                          "mnuHelpLine1 -",
                          "mnuHelpAbout &About Verdolin"}));
}

TEST_F(FormMainTest, EveryItemIsEnabledAndVisible) {
    for (const QAction* top : main.menuBar()->actions()) {
        EXPECT_TRUE(top->isEnabled() && top->isVisible());
        for (const QAction* item : top->menu()->actions()) {
            EXPECT_TRUE(item->isEnabled() && item->isVisible()) << item->text().toStdString();
        }
    }
}

TEST_F(FormMainTest, InertItemsChangeNothing) {
    main.show();
    state.archiveName = "a.mdb";
    state.selectedRecords.append(7);
    log.clear();
    for (const char* name :
         {"mnuFileNew", "mnuFileClose", "mnuFileSave", "mnuFileSaveas", "mnuPULDelete"}) {
        action(name)->trigger();
    }
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(state.archiveName, "a.mdb");
    EXPECT_EQ(state.selectedRecords.elements(), Positions{7});
    EXPECT_EQ(main.windowTitle(), "Verdolin");
    EXPECT_TRUE(main.isVisible());
}

TEST_F(FormMainTest, EveryWorkingItemSetsOffItsCommand) {
    const std::pair<const char*, const char*> items[] = {
        {"mnuFileOpen", "open"},       {"mnuFileExit", "exit"},  {"mnuPULKeywords", "keywords"},
        {"mnArchExplore", "explore"},  {"mnuArchScan", "scan"},  {"mnuArchSave", "save"},
        {"mnuSearchSearch", "search"}, {"mnuHelpAbout", "about"}};
    for (const auto& [name, command] : items) {
        log.clear();
        action(name)->trigger();
        EXPECT_EQ(log, Log{command}) << name;
    }
}

TEST_F(FormMainTest, CommandsThatAreNotConnectedDoNothing) {
    FormMain bare(state, machine, boundary, help, {});
    for (QAction* item : bare.findChildren<QAction*>()) {
        item->trigger();
    }
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(FormMainTest, AFailingCommandIsShownAndTheMenuWorksAgain) {
    MainCommands failing;
    failing.search = [] { throw base::FileFailure("gone"); };
    FormMain window(state, machine, boundary, help, failing);
    messages.expect(base::MessageAnswer::Ok);
    messages.expect(base::MessageAnswer::Ok);
    window.findChild<QAction*>("mnuSearchSearch")->trigger();
    window.findChild<QAction*>("mnuSearchSearch")->trigger();
    EXPECT_EQ(messages.asked[1], failureReport(base::FileFailure("gone")));
}

TEST_F(FormMainTest, ShortcutsAreTheOnesPeopleExpect) {
    main.show();
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    log.clear();
    QTest::keyClick(&main, Qt::Key_O, Qt::ControlModifier);
    QTest::keyClick(&main, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(&main, Qt::Key_F1);
    QTest::keyClick(&main, Qt::Key_Q, Qt::ControlModifier);
    QTest::keyClick(&main, Qt::Key_F4, Qt::AltModifier);
    EXPECT_EQ(log, (Log{"open", "search", "exit", "exit"}));
    EXPECT_EQ(help.shown.size(), 1U);
}

TEST_F(FormMainTest, MnemonicsOpenMenusAndChooseItems) {
    main.show();
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    log.clear();
    const std::pair<Qt::Key, std::pair<Qt::Key, const char*>> ways[] = {
        {Qt::Key_F, {Qt::Key_O, "open"}},
        {Qt::Key_E, {Qt::Key_A, "keywords"}},
        {Qt::Key_A, {Qt::Key_A, "scan"}},
        {Qt::Key_S, {Qt::Key_S, "search"}},
        {Qt::Key_H, {Qt::Key_A, "about"}}};
    for (const auto& [menu, item] : ways) {
        log.clear();
        QTest::keyClick(&main, menu, Qt::AltModifier);
        QWidget* popup = QApplication::activePopupWidget();
        ASSERT_NE(popup, nullptr) << item.second;
        QTest::keyClick(popup, item.first);
        EXPECT_EQ(log, Log{item.second});
    }
}

TEST_F(FormMainTest, ClosingTheWindowEndsTheProgram) {
    main.show();
    log.clear();
    main.close();
    EXPECT_EQ(log, Log{"exit"});
}

// The list's menu

class ListMenuTest : public FormMainTest {
  protected:
    void SetUp() override {
        showWorkspace();
        fill(3);
        QCoreApplication::processEvents();
        menu = main.findChild<QMenu*>("mnuPUList");
    }
    /// Clicks through the window, as only that makes the events that ask for a menu.
    void click(Qt::MouseButton button) {
        const QPoint place = list().viewport()->mapTo(&main, QPoint(20, 10));
        QTest::mouseClick(main.windowHandle(), button, {}, place);
    }

    QMenu* menu = nullptr;
};

TEST_F(ListMenuTest, TheRightButtonPopsUpTheMenuAtTheMouse) {
    click(Qt::RightButton);
    ASSERT_TRUE(menu->isVisible());
    EXPECT_EQ(menu->pos(), list().viewport()->mapToGlobal(QPoint(20, 10)));
    menu->close();
}

TEST_F(ListMenuTest, OtherButtonsDoNotPopItUp) {
    click(Qt::LeftButton);
    click(Qt::MiddleButton);
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(ListMenuTest, ItIsTheMenuOfTheMenuBar) {
    EXPECT_EQ(main.menuBar()->actions()[1]->menu(), menu);
}

// Selected rows

TEST_F(FormMainTest, AddKeywordsCollectsTheSelectedPositionsInListOrder) {
    fill(6);
    for (const int position : {5, 2, 3}) {
        select(position);
    }
    main.addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), (Positions{2, 3, 5}));
    EXPECT_EQ(log.back(), "keywords");
}

TEST_F(FormMainTest, AddKeywordsWithoutSelectionKeepsTheEarlierPositionsAndOpensTheWindow) {
    fill(3);
    state.selectedRecords.append(9);
    main.addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), Positions{9});
    EXPECT_EQ(log.back(), "keywords");
}

TEST_F(FormMainTest, AddKeywordsWithNothingEverSelectedLeavesTheListWithoutBounds) {
    main.addKeywords();
    EXPECT_TRUE(state.selectedRecords.neverGrown());
}

TEST_F(FormMainTest, ASmallerSelectionCutsTheList) {
    fill(5);
    list().selectAll();
    main.addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), (Positions{1, 2, 3, 4, 5}));
    list().clearSelection();
    select(4);
    main.addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), Positions{4});
}

TEST_F(FormMainTest, PositionsAreThoseOfTheSortedList) {
    fill(3);
    select(3);
    main.listScan_ColumnClick(1);  // downwards: file3 stands first
    main.addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), Positions{1});
}

TEST_F(FormMainTest, APositionBeyondSixteenBitsIsAFailureAndNoWindowOpens) {
    fill(32768);
    select(32767);
    main.addKeywords();
    EXPECT_EQ(state.selectedRecords.elements(), Positions{32767});
    log.clear();
    select(32768);
    EXPECT_THROW(main.addKeywords(), base::OverflowFailure);
    EXPECT_TRUE(log.empty());
}

// Sorting

TEST_F(FormMainTest, TheFirstClickSortsDownwardsAndTheDirectionIsShared) {
    fill(10);
    main.listScan_ColumnClick(2);
    EXPECT_TRUE(list().records().isSorted());
    EXPECT_EQ(list().records().sortKey(), 1);
    EXPECT_EQ(list().records().sortOrder(), Order::Descending);
    main.listScan_ColumnClick(1);
    EXPECT_EQ(list().records().sortKey(), 0);
    EXPECT_EQ(list().records().sortOrder(), Order::Ascending);
    main.listScan_ColumnClick(2);
    EXPECT_EQ(list().records().sortOrder(), Order::Descending);
}

TEST_F(FormMainTest, SizeIsSortedAsText) {
    fill(10);
    main.listScan_ColumnClick(2);
    EXPECT_EQ(column(2), (Log{"9", "8", "7", "6", "5", "4", "3", "2", "10", "1"}));
    main.listScan_ColumnClick(2);
    EXPECT_EQ(column(2), (Log{"1", "10", "2", "3", "4", "5", "6", "7", "8", "9"}));
}

TEST_F(FormMainTest, AClickOnAnyHeaderSorts) {
    showWorkspace();
    fill(10);
    QCoreApplication::processEvents();
    clickHeader(2);
    EXPECT_EQ(column(2).front(), "9");
    EXPECT_EQ(list().header()->sortIndicatorSection(), 1);
    EXPECT_EQ(list().header()->sortIndicatorOrder(), Qt::DescendingOrder);
    clickHeader(1);
    EXPECT_EQ(column(1).front(), "file1");
    EXPECT_EQ(list().header()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(FormMainTest, AHeadingThatDoesNotFitEndsInDots) {
    showWorkspace();
    constexpr int width = 60;
    QHeaderView* header = list().header();
    const auto pictureOf = [&](const QString& heading) {
        list().records().removeAllColumns();
        list().records().insertColumnAt(1, heading);
        header->resizeSection(0, width);
        QCoreApplication::processEvents();
        return header->grab(QRect(0, 0, width, header->height())).toImage();
    };
    const QImage cut = pictureOf("Date Modified on a day");
    const int margin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    const QString dots = header->fontMetrics().elidedText("Date Modified on a day", Qt::ElideRight,
                                                          width - 2 * margin);
    EXPECT_TRUE(dots.endsWith(u'…'));
    EXPECT_EQ(cut, pictureOf(dots));
    EXPECT_NE(cut, pictureOf(dots.chopped(1)));
}

TEST_F(FormMainTest, TheKeysSortToo) {
    showWorkspace();
    fill(10);
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(list().records().sortKey(), 1);
    QTest::keyClick(&list(), Qt::Key_0, Qt::ControlModifier);  // there is no tenth column
    EXPECT_EQ(list().records().sortKey(), 1);
}

TEST_F(FormMainTest, SelectedRowsStaySelectedWhenTheListIsSorted) {
    fill(10);
    select(2);
    select(10);
    main.listScan_ColumnClick(2);
    EXPECT_EQ(list().selectedPositions(), (std::vector<std::int64_t>{8, 9}));
}

TEST_F(FormMainTest, AHundredThousandRowsAreShownAndSortedWithoutDelay) {
    showWorkspace();
    QElapsedTimer time;
    time.start();
    fill(100000);
    list().scrollToBottom();
    QCoreApplication::processEvents();
    main.listScan_ColumnClick(2);
    QCoreApplication::processEvents();
    list().selectAll();
    list().scrollToTop();
    QCoreApplication::processEvents();
    // Far above what it takes, also with sanitizers; a list that measured or drew every row would
    // take minutes.
    EXPECT_LT(time.elapsed(), 20000);
    EXPECT_EQ(list().selectedPositions().size(), 100000U);
}

// Help

TEST_F(FormMainTest, HelpOpensTheFileBesideTheProgram) {
    action("mnuHelpHelp")->trigger();
    EXPECT_EQ(help.shown, Log{"/opt/verdolin/help/vdln.hlp"});
}

TEST_F(FormMainTest, HelpThatFailsIsPassedOverInSilence) {
    help.fails = true;
    action("mnuHelpHelp")->trigger();
    EXPECT_EQ(help.shown.size(), 1U);
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(FormMainTest, HelpWithoutAProgramFolderIsPassedOverInSilence) {
    struct Homeless : support::FakeShell {
        std::string programFolder() override { throw base::FileFailure("nowhere"); }
    } nowhere;
    FormMain window(state, nowhere, boundary, help, {});
    window.findChild<QAction*>("mnuHelpHelp")->trigger();
    EXPECT_TRUE(help.shown.empty());
    EXPECT_TRUE(messages.asked.empty());
}

TEST(CommonDialogTest, ShowsHelpOnlyWhenToldToAndRaisesOnlyWhenToldTo) {
    FakeHelp help;
    CommonDialog dialog(help, nullptr);
    dialog.setHelpFile("/x.hlp");
    dialog.showHelp();
    EXPECT_TRUE(help.shown.empty());
    dialog.setHelpCommand(CommonDialog::OpenHelpFile);
    EXPECT_EQ(CommonDialog::OpenHelpFile, 9);
    help.fails = true;
    EXPECT_NO_THROW(dialog.showHelp());
    dialog.setCancelError(true);
    EXPECT_THROW(dialog.showHelp(), base::FileFailure);
}

// The workspace

TEST_F(FormMainTest, ArrangingShowsAndEnablesTheWorkspace) {
    auto* panel = main.findChild<QWidget*>("scan_main");
    panel->setEnabled(false);
    main.show();
    main.arrangeWorkspace();
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(panel->isEnabled());
}

TEST_F(FormMainTest, TheWorkspaceIsLaidOutByTheFormulaAndAgainWhenTheWindowChangesItsSize) {
    showWorkspace();
    for (const QSize size : {QSize(900, 600), QSize(1280, 800), QSize(640, 400)}) {
        main.resize(size);
        QCoreApplication::processEvents();
        const QWidget* inner = &main.workspace();
        const QWidget* panel = main.workspace().panel();
        const QWidget* first = main.workspace().status(0);
        const QWidget* second = main.workspace().status(1);
        const QRect area = twips(inner);
        const QRect place = twips(panel);
        constexpr int pixel = 15;  // edges go to whole pixels
        EXPECT_NEAR(place.x(), 50, pixel);
        EXPECT_NEAR(place.y(), 100, pixel);
        EXPECT_NEAR(place.width(), area.width() - 50, pixel);
        EXPECT_NEAR(place.height(), area.height() - 1000, pixel);
        EXPECT_EQ(first->x(), 0);
        EXPECT_EQ(first->geometry().bottom(), panel->height() - 1);
        EXPECT_NEAR(first->width(), panel->width() / 2, 1);
        EXPECT_EQ(second->x(), first->width());
        EXPECT_EQ(second->y(), first->y());
        EXPECT_NEAR(second->width(), first->width(), 1);
        const QRect tree = twips(main.workspace().tree());
        const QRect records = twips(&list());
        EXPECT_NEAR(tree.x(), 100, pixel);
        EXPECT_EQ(tree.y(), 0);
        EXPECT_NEAR(tree.width(), 2500, pixel);
        EXPECT_NEAR(records.x(), 2650, pixel);
        EXPECT_EQ(records.y(), 0);
        EXPECT_EQ(list().geometry().right(), panel->width() - 1);
        EXPECT_NEAR(records.height(), place.height() - twips(first).height() - 100, 2 * pixel);
        EXPECT_EQ(tree.height(), records.height());
    }
}

TEST_F(FormMainTest, ALargerFontMakesHigherStatusLines) {
    showWorkspace();
    const int before = main.workspace().status(0)->height();
    QFont large = main.font();
    large.setPointSize(large.pointSize() * 2);
    main.setFont(large);
    QCoreApplication::processEvents();
    EXPECT_GT(main.workspace().status(0)->height(), before);
    EXPECT_EQ(main.workspace().status(0)->geometry().bottom(),
              main.workspace().panel()->height() - 1);
}

TEST_F(FormMainTest, AStatusLineThatDoesNotFitEndsInDotsAndKeepsItsText) {
    showWorkspace();
    QLabel* line = main.workspace().status(0);
    line->setText("short");
    const QImage fitting = line->grab().toImage();
    const QString text = "short" + QString(400, 'x');
    line->setText(text);
    EXPECT_EQ(line->text(), text);
    const QImage cut = line->grab().toImage();
    EXPECT_NE(cut, fitting);
    // Nothing is drawn in the last pixels, where the next line begins.
    const QColor ground = cut.pixelColor(cut.width() - 1, 0);
    for (int y = 0; y < cut.height(); ++y) {
        EXPECT_EQ(cut.pixelColor(cut.width() - 1, y), ground);
    }
}

TEST_F(FormMainTest, TheFocusGoesFromTheTreeToTheList) {
    showWorkspace();
    main.workspace().tree()->setFocus();
    QTest::keyClick(main.workspace().tree(), Qt::Key_Tab);
    EXPECT_EQ(main.focusWidget(), &list());
}

TEST_F(FormMainTest, TreeAndListHaveNamesForAScreenReader) {
    EXPECT_FALSE(main.workspace().tree()->accessibleName().isEmpty());
    EXPECT_FALSE(list().accessibleName().isEmpty());
}

}  // namespace
}  // namespace shell
