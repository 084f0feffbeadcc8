#include "open/form_open.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>
#include <QWheelEvent>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "open/archive_texts.h"
#include "tests/open/open_fixture.h"
#include "tests/support/recording_boundary.h"
#include "tests/support/scripted_file_dialogs.h"

namespace open {
namespace {

using base::MessageAnswer;
using Log = std::vector<std::string>;
using Shown = support::ScriptedFileDialogs::Shown;

class FormOpenTest : public support::OpenFixture {
  protected:
    ~FormOpenTest() override {
        EXPECT_TRUE(messages.allAnswersUsed());
        EXPECT_TRUE(dialogs.allAnswersUsed());
        EXPECT_TRUE(boundary.failures.empty());
    }

    template <typename Widget>
    Widget* find(const char* name) {
        Widget* widget = form.findChild<Widget*>(name);
        if (widget == nullptr) {
            throw std::logic_error(std::string("there is no ") + name);
        }
        return widget;
    }

    void clickTab(int tab) {
        auto* tabs = find<QTabBar>("TabOpen");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
    }
    void click(const char* button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    void clickRow(int row) {
        auto* list = find<QTreeWidget>("listRecent");
        list->scrollToItem(list->topLevelItem(row - 1));
        const QRect place = list->visualItemRect(list->topLevelItem(row - 1));
        ASSERT_TRUE(list->viewport()->rect().contains(place.center()));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
    }
    std::string text(const char* box) { return find<QLineEdit>(box)->text().toStdString(); }
    bool enabled(const char* button) { return find<QPushButton>(button)->isEnabled(); }
    std::string frontFrame() {
        for (QGroupBox* frame : form.findChildren<QGroupBox*>("frameOptions")) {
            if (frame->isVisible()) {
                return frame->title().toStdString();
            }
        }
        return "none";
    }
    std::vector<std::string> rows() {
        auto* list = find<QTreeWidget>("listRecent");
        std::vector<std::string> result;
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            const QTreeWidgetItem* item = list->topLevelItem(row);
            result.push_back((item->text(0) + "|" + item->text(1)).toStdString());
        }
        return result;
    }

    support::ScriptedFileDialogs dialogs;
    support::RecordingBoundary boundary;
    FormOpen form{choice, dialogs, messages, boundary};
};

const Shown openDialog(const std::string& folder) {
    return {"open", "Archives|*.mdb|All Files|*.*", folder, ".mdb"};
}
const Shown saveDialog(const std::string& folder) {
    return {"save", "Archives|*.mdb|All Files|*.*", folder, ".mdb"};
}

TEST_F(FormOpenTest, HoldsTheControlsWithTheirCaptions) {
    EXPECT_EQ(form.objectName(), "form_open");
    auto* tabs = find<QTabBar>("TabOpen");
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), "Recent");
    EXPECT_EQ(tabs->tabText(1), "Existing");
    EXPECT_EQ(tabs->tabText(2), "New");
    const std::pair<const char*, const char*> buttons[] = {
        {"btnRecentOpen", "Open"}, {"btnRecentCancel", "Cancel"}, {"btnExistingBrowse", "Browse"},
        {"btnExistOK", "OK"},      {"btnExistCancel", "Cancel"},  {"btnNewBrowse", "Save As"},
        {"btnNewOk", "OK"},        {"btnNewCacnel", "Cancel"}};
    for (const auto& [name, caption] : buttons) {
        EXPECT_EQ(find<QPushButton>(name)->text(), caption) << name;
    }
    EXPECT_EQ(text("textExisting"), "none selected");
    EXPECT_EQ(text("textNew"), "");
}

TEST_F(FormOpenTest, EachTabHasAFrameOfTheArray) {
    std::map<int, std::string> captions;
    for (const QGroupBox* frame : form.findChildren<QGroupBox*>("frameOptions")) {
        captions[frame->property("index").toInt()] = frame->title().toStdString();
    }
    EXPECT_EQ(captions, (std::map<int, std::string>{{1, "Current and Recent Archives"},
                                                    {2, "Existing Archives"},
                                                    {3, "New Archives"}}));
}

TEST_F(FormOpenTest, TheRecentTabHoldsItsLabelsAndColumns) {
    std::vector<std::string> labels;
    for (const QLabel* label : form.findChildren<QLabel*>()) {
        labels.push_back(label->text().toStdString());
    }
    EXPECT_EQ(labels, (std::vector<std::string>{"Current", "Recent"}));
    const QTreeWidgetItem* header = find<QTreeWidget>("listRecent")->headerItem();
    ASSERT_EQ(header->columnCount(), 2);
    EXPECT_EQ(header->text(0), "File Name");
    EXPECT_EQ(header->text(1), "Path");
}

TEST_F(FormOpenTest, LoadFillsTheWindowThenShowsTheMainWindowThenItself) {
    writeSixArchives();
    FormOpen* self = nullptr;
    Log order;
    OpenCommands commands;
    commands.showMainWindow = [&] {
        order.push_back(self->findChild<QLineEdit*>("textCurrent")->text().toStdString());
        order.emplace_back(self->isVisible() ? "already shown" : "still hidden");
    };
    ArchiveChoice own(
        state, shell, profile, messages, [](const auto&) { return true; }, commands);
    FormOpen window(own, dialogs, messages, boundary);
    self = &window;
    window.load();
    EXPECT_EQ(order, (Log{"c.mdb  found at: /c/", "still hidden"}));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isModal());
}

TEST_F(FormOpenTest, WithoutSettingsThereAreSixEmptyRows) {
    form.load();
    EXPECT_EQ(rows(), (std::vector<std::string>{"|", "|", "|", "|", "|", "|"}));
    EXPECT_EQ(text("textCurrent"), "  found at: ");
    EXPECT_EQ(log, Log{"main window"});
    EXPECT_EQ(frontFrame(), "Current and Recent Archives");
}

TEST_F(FormOpenTest, TheSixthRowIsTheCurrentArchive) {
    writeSixArchives();
    form.load();
    EXPECT_EQ(rows(), (std::vector<std::string>{"1.mdb|/r1/", "2.mdb|/r2/", "3.mdb|/r3/",
                                                "4.mdb|/r4/", "5.mdb|/r5/", "c.mdb|/c/"}));
    EXPECT_EQ(text("textCurrent"), "c.mdb  found at: /c/");
    EXPECT_EQ(form.recentIndex(), 0);
}

TEST_F(FormOpenTest, AClickOnARowShowsItsArchive) {
    writeSixArchives();
    form.load();
    clickRow(2);
    EXPECT_EQ(form.recentIndex(), 2);
    EXPECT_EQ(text("textCurrent"), "2.mdb  found at: /r2/");
    clickRow(6);
    EXPECT_EQ(form.recentIndex(), 6);
    EXPECT_EQ(text("textCurrent"), "c.mdb  found at: /c/");
}

TEST_F(FormOpenTest, TheKeysChooseARowAsAClickDoes) {
    writeSixArchives();
    form.load();
    clickRow(2);
    QTest::keyClick(find<QTreeWidget>("listRecent"), Qt::Key_Down);
    EXPECT_EQ(form.recentIndex(), 3);
    EXPECT_EQ(text("textCurrent"), "3.mdb  found at: /r3/");
}

TEST_F(FormOpenTest, TheFocusAloneChoosesNoRow) {
    writeSixArchives();
    form.load();
    find<QTreeWidget>("listRecent")->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.recentIndex(), 0);
    click("btnRecentOpen");
    EXPECT_EQ(state.archiveName, "c.mdb");
}

TEST_F(FormOpenTest, OpenExchangesRowThreeAndHides) {
    writeSixArchives();
    form.load();
    log.clear();
    clickRow(3);
    click("btnRecentOpen");
    EXPECT_EQ(settings(),
              "[recentarchives]\ncurrent=/r3/3.mdb\nrecent1=/r1/1.mdb\nrecent2=/r2/2.mdb\n"
              "recent3=/c/c.mdb\nrecent4=/r4/4.mdb\nrecent5=/r5/5.mdb\n");
    EXPECT_EQ(log, (Log{"caption Verdolin - 3.mdb", "keywords of /r3/3.mdb", "hide progress"}));
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormOpenTest, OpenWithoutAClickWritesTheSameSettingsAgain) {
    writeSixArchives();
    const std::string before = settings();
    form.load();
    click("btnRecentOpen");
    EXPECT_EQ(settings(), before);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormOpenTest, HidingKeepsTheStateAndTheTabFillsTheListAnew) {
    writeSixArchives();
    form.load();
    clickRow(3);
    click("btnRecentOpen");
    form.show();
    EXPECT_EQ(form.recentIndex(), 3);
    EXPECT_EQ(text("textCurrent"), "3.mdb  found at: /r3/");
    EXPECT_EQ(rows()[2], "3.mdb|/r3/");
    clickTab(0);
    EXPECT_EQ(rows()[2], "c.mdb|/c/");
    EXPECT_EQ(rows()[5], "3.mdb|/r3/");
    EXPECT_EQ(text("textCurrent"), "3.mdb  found at: /r3/");
    EXPECT_EQ(form.recentIndex(), 3);
    EXPECT_TRUE(find<QTreeWidget>("listRecent")->topLevelItem(2)->isSelected());
}

TEST_F(FormOpenTest, AFailedCollectionLeavesTheWindowAndTheArchiveOpen) {
    writeSixArchives();
    form.load();
    keywordsFail = true;
    clickRow(1);
    click("btnRecentOpen");
    EXPECT_EQ(boundary.failures, Log{"a list that was never filled has no bounds"});
    boundary.failures.clear();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(log.back(), "hide progress");
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(state.archiveName, "1.mdb");
}

TEST_F(FormOpenTest, TheExistingTabOpensTheDialogAtOnce) {
    form.load();
    dialogs.choose("/home/me/old.mdb");
    clickTab(1);
    EXPECT_EQ(frontFrame(), "Existing Archives");
    EXPECT_EQ(dialogs.shown, std::vector{openDialog(folder.path())});
    EXPECT_EQ(text("textExisting"), "old.mdb  found at: /home/me/");
    EXPECT_EQ(form.chosenName(), "old.mdb");
    EXPECT_EQ(form.chosenFolder(), "/home/me/");
    EXPECT_TRUE(enabled("btnExistOK"));
}

TEST_F(FormOpenTest, TheTabInFrontOpensTheDialogAgain) {
    form.load();
    dialogs.cancel();
    clickTab(1);
    dialogs.choose("/a.mdb");
    clickTab(1);
    EXPECT_EQ(dialogs.shown.size(), 2U);
    EXPECT_TRUE(enabled("btnExistOK"));
}

TEST_F(FormOpenTest, TheKeysChooseATabAsAClickDoes) {
    form.load();
    dialogs.cancel();
    QTest::keyClick(find<QTabBar>("TabOpen"), Qt::Key_Right);
    EXPECT_EQ(frontFrame(), "Existing Archives");
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(FormOpenTest, NeitherTheWheelNorTheOtherButtonsChooseATab) {
    form.load();
    auto* tabs = find<QTabBar>("TabOpen");
    const QPointF place = tabs->tabRect(1).center();
    QWheelEvent wheel(place, tabs->mapToGlobal(place), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(tabs, &wheel);
    QTest::mouseClick(tabs, Qt::RightButton, {}, place.toPoint());
    EXPECT_EQ(frontFrame(), "Current and Recent Archives");
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(FormOpenTest, ACancelledDialogLeavesOkDisabled) {
    form.load();
    dialogs.choose("/a.mdb");
    clickTab(1);
    dialogs.cancel();
    click("btnExistingBrowse");
    EXPECT_FALSE(enabled("btnExistOK"));
    EXPECT_EQ(text("textExisting"), "a.mdb  found at: /");
}

TEST_F(FormOpenTest, ADialogThatFailsCountsAsCancelled) {
    form.load();
    dialogs.fail();
    clickTab(1);
    EXPECT_FALSE(enabled("btnExistOK"));
    dialogs.fail();
    clickTab(2);
    EXPECT_FALSE(enabled("btnNewOk"));
}

TEST_F(FormOpenTest, AnExistingArchiveMayHaveAnyExtension) {
    writeSixArchives();
    form.load();
    log.clear();
    dialogs.choose("/x/table.accdb");
    clickTab(1);
    click("btnExistOK");
    EXPECT_EQ(settings(),
              "[recentarchives]\ncurrent=/x/table.accdb\nrecent1=/r1/1.mdb\nrecent2=/r2/2.mdb\n"
              "recent3=/r3/3.mdb\nrecent4=/r4/4.mdb\nrecent5=/r5/5.mdb\n");
    EXPECT_EQ(log, (Log{"caption Verdolin - table.accdb", "keywords of /x/table.accdb",
                        "hide progress"}));
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormOpenTest, TheNewTabAsksForAFileToWriteAtOnce) {
    form.load();
    dialogs.choose("/home/me/catalog.mdb");
    clickTab(2);
    EXPECT_EQ(frontFrame(), "New Archives");
    EXPECT_EQ(dialogs.shown, std::vector{saveDialog(folder.path())});
    EXPECT_EQ(text("textNew"), "catalog.mdb   path: /home/me/");
    EXPECT_TRUE(enabled("btnNewOk"));
}

TEST_F(FormOpenTest, AWrongExtensionIsAskedAboutUntilItIsRight) {
    form.load();
    dialogs.choose("/a/catalog.MDB");
    dialogs.choose("/a/catalog");
    dialogs.choose("/a/catalog.mdb");
    messages.expect(MessageAnswer::Ok);
    messages.expect(MessageAnswer::Ok);
    clickTab(2);
    EXPECT_EQ(messages.asked,
              (std::vector{*extensionQuestion("catalog.MDB"), *extensionQuestion("catalog")}));
    EXPECT_EQ(text("textNew"), "catalog.mdb   path: /a/");
    EXPECT_TRUE(enabled("btnNewOk"));
}

TEST_F(FormOpenTest, CancelInTheExtensionQuestionStopsWithOkDisabled) {
    form.load();
    dialogs.choose("/a/catalog.txt");
    messages.expect(MessageAnswer::Cancel);
    clickTab(2);
    EXPECT_FALSE(enabled("btnNewOk"));
    EXPECT_EQ(text("textNew"), "catalog.txt   path: /a/");
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(FormOpenTest, ACancelledSecondDialogStopsWithOkDisabled) {
    form.load();
    dialogs.choose("/a/catalog.txt");
    dialogs.cancel();
    messages.expect(MessageAnswer::Ok);
    clickTab(2);
    EXPECT_FALSE(enabled("btnNewOk"));
}

TEST_F(FormOpenTest, SaveAsShowsTheDialogAgain) {
    form.load();
    dialogs.choose("/a/one.mdb");
    clickTab(2);
    dialogs.choose("/a/two.mdb");
    click("btnNewBrowse");
    EXPECT_EQ(text("textNew"), "two.mdb   path: /a/");
}

TEST_F(FormOpenTest, OkCreatesTheNewArchiveAndHides) {
    form.load();
    log.clear();
    dialogs.choose(folder.pathOf("new.mdb"));
    clickTab(2);
    click("btnNewOk");
    EXPECT_EQ(log, (Log{"create " + folder.pathOf("new.mdb"), "caption Verdolin - new.mdb"}));
    EXPECT_EQ(settings(), "[recentarchives]\ncurrent=" + folder.pathOf("new.mdb") +
                              "\nrecent1=\nrecent2=\nrecent3=\nrecent4=\nrecent5=\n");
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormOpenTest, NoInTheEraseQuestionHidesWithoutCreating) {
    folder.makeFile("old.mdb", "old");
    form.load();
    log.clear();
    dialogs.choose(folder.pathOf("old.mdb"));
    clickTab(2);
    messages.expect(MessageAnswer::No);
    click("btnNewOk");
    EXPECT_TRUE(log.empty());
    EXPECT_FALSE(haveSettings());
    EXPECT_EQ(folder.read("old.mdb"), "old");
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormOpenTest, AFailedCreationHidesToo) {
    form.load();
    dialogs.choose(folder.pathOf("new.mdb"));
    clickTab(2);
    creationSucceeds = false;
    messages.expect(MessageAnswer::Ok);
    click("btnNewOk");
    EXPECT_EQ(messages.asked, std::vector{creationFailedMessage()});
    EXPECT_EQ(state.archiveName, "new.mdb");
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormOpenTest, EachCancelClosesTheArchiveAndWritesNothing) {
    const std::pair<int, const char*> cancels[] = {
        {0, "btnRecentCancel"}, {1, "btnExistCancel"}, {2, "btnNewCacnel"}};
    writeSixArchives();
    const std::string before = settings();
    form.load();
    log.clear();
    for (const auto& [tab, button] : cancels) {
        form.show();
        if (tab > 0) {
            dialogs.choose("/x/x.mdb");
        }
        clickTab(tab);
        state.archiveFolder = "/c/";
        state.archiveName = "c.mdb";
        click(button);
        EXPECT_EQ(state.currentArchive(), base::ArchiveLocation{}) << button;
        EXPECT_FALSE(form.isVisible()) << button;
        EXPECT_EQ(settings(), before) << button;
    }
    EXPECT_TRUE(log.empty());
}

TEST_F(FormOpenTest, TheCloseBoxKeepsTheArchiveOpen) {
    writeSixArchives();
    form.load();
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(state.archiveName, "c.mdb");
}

TEST_F(FormOpenTest, EscapeIsTheCloseBox) {
    writeSixArchives();
    form.load();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(state.archiveName, "c.mdb");
}

TEST_F(FormOpenTest, AfterCancelARecentArchiveGivesItsPlaceToNone) {
    writeSixArchives();
    form.load();
    clickRow(3);
    click("btnRecentCancel");
    form.show();
    click("btnRecentOpen");
    EXPECT_EQ(settings(),
              "[recentarchives]\ncurrent=/r3/3.mdb\nrecent1=/r1/1.mdb\nrecent2=/r2/2.mdb\n"
              "recent3=\nrecent4=/r4/4.mdb\nrecent5=/r5/5.mdb\n");
}

TEST_F(FormOpenTest, ASettingsFolderThatIsNotThereIsPassedOver) {
    folder.remove("settings");
    form.load();
    dialogs.choose("/x/x.mdb");
    clickTab(1);
    click("btnExistOK");
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_EQ(log.at(1), "caption Verdolin - x.mdb");
}

TEST_F(FormOpenTest, ASettingsFileOfOddEncodingOrTenMegabytesIsRead) {
    const std::string odd =
        "\xEF\xBB\xBF[RecentArchives]\r\n\x01\xFF\xFE=\r\nCURRENT=/\xE9/c.mdb\r\n";
    writeSettings(odd);
    form.load();
    EXPECT_EQ(text("textCurrent"), "c.mdb  found at: /é/");
    writeSettings("[other]\n" + std::string(10 << 20, 'x') +
                  "\n[recentarchives]\ncurrent=/b.mdb\n");
    clickTab(0);
    EXPECT_EQ(text("textCurrent"), "b.mdb  found at: /");
}

TEST_F(FormOpenTest, APathLongerThanTheBufferIsCut) {
    writeSettings("[recentarchives]\ncurrent=/" + std::string(300, 'a') + "\n");
    form.load();
    EXPECT_EQ(state.currentArchive().fullPath(), "/" + std::string(253, 'a'));
}

TEST_F(FormOpenTest, NamesAreShownAsTheyAre) {
    writeSettings("[recentarchives]\ncurrent=/<b>/<i>&.mdb\n");
    form.load();
    EXPECT_EQ(text("textCurrent"), "<i>&.mdb  found at: /<b>/");
}

TEST_F(FormOpenTest, TheFocusGoesThroughTheRecentTabAsOneReads) {
    form.load();
    const char* const order[] = {"TabOpen", "textCurrent", "listRecent", "btnRecentOpen",
                                 "btnRecentCancel"};
    find<QWidget>(order[0])->setFocus();
    for (const char* name : order) {
        ASSERT_NE(form.focusWidget(), nullptr);
        EXPECT_EQ(form.focusWidget()->objectName().toStdString(), name);
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(form.focusWidget()->objectName(), "TabOpen");
}

TEST_F(FormOpenTest, EveryControlHasANameForAScreenReader) {
    for (const char* name : {"TabOpen", "textCurrent", "listRecent", "textExisting", "textNew"}) {
        EXPECT_FALSE(find<QWidget>(name)->accessibleName().isEmpty()) << name;
    }
}

}  // namespace
}  // namespace open
