#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <optional>

#include "archive/makedb.h"
#include "keywords/form_keywords.h"
#include "open/form_open.h"
#include "shell/desktop.h"
#include "shell/form_main.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/archive/archive_fixture.h"
#include "tests/keywords/keywords_fixture.h"
#include "tests/shell/desktop_fixture.h"
#include "tests/shell/modal.h"

namespace shell {
namespace {

using base::MessageAnswer;
using support::entryWith;
using support::textsOf;
using Texts = std::vector<std::string>;
using Entries = std::vector<base::ScanEntry>;

class DesktopKeywordsTest : public support::DesktopTest {
  protected:
    void makeArchive(const std::string& name, const Entries& entries) {
        const base::ArchiveLocation archive{folder.path() + "/", name};
        archive::createArchive(engine, archive);
        support::ArchiveTables(engine).addRecords(archive, entries);
    }
    void open(const std::string& name) {
        dialogs.choose(folder.pathOf(name));
        clickTab(1);
        click(desktop.openWindow(), "btnExistOK");
    }
    std::string progressText() {
        return desktop.progress().findChild<QLabel*>("displayProgress")->text().toStdString();
    }
};

TEST_F(DesktopKeywordsTest, OpeningAnArchiveCollectsItsKeywordsAndNotes) {
    makeArchive("a.mdb", {entryWith("red,green", "first", "second"), entryWith("green", "first")});
    start();
    open("a.mdb");
    EXPECT_EQ(textsOf(state.archiveKeywords), (Texts{"green", "red"}));
    EXPECT_EQ(textsOf(state.archiveNotes), (Texts{"first", "second"}));
    EXPECT_EQ(title(), "Verdolin - a.mdb");
    EXPECT_FALSE(desktop.openWindow()->isVisible());
    EXPECT_FALSE(desktop.progress().isVisible());
    EXPECT_EQ(progressText(), "Initializing Keywords and Notes.  Record 2 of 2");
}

TEST_F(DesktopKeywordsTest, TheProgressWindowIsShownMeanwhile) {
    makeArchive("a.mdb", Entries(50, entryWith("k", "n")));
    start();
    bool wasVisible = false;
    bool wasModal = true;
    std::string text;
    QTimer::singleShot(0, [&] {
        wasVisible = desktop.progress().isVisible();
        wasModal = desktop.progress().isModal();
        text = progressText();
    });
    open("a.mdb");
    EXPECT_TRUE(wasVisible);
    EXPECT_FALSE(wasModal);
    EXPECT_EQ(desktop.progress().windowHandle()->transientParent(),
              desktop.mainWindow()->windowHandle());
    EXPECT_EQ(text, "Initializing Keywords and Notes.  Record 1 of 50");
}

TEST_F(DesktopKeywordsTest, AnArchiveWithoutTextsIsOpenAndTheOpenWindowStays) {
    makeArchive("a.mdb", {entryWith("")});
    start();
    messages.expect(MessageAnswer::Ok);
    open("a.mdb");
    EXPECT_EQ(messages.asked.back().title, "Verdolin");
    EXPECT_TRUE(holds("The archive is open"));
    EXPECT_TRUE(holds("holds no notes or keywords yet"));
    EXPECT_TRUE(desktop.openWindow()->isVisible());
    EXPECT_FALSE(desktop.progress().isVisible());
    desktop.openWindow()->close();
    EXPECT_EQ(state.archiveName, "a.mdb");
    EXPECT_EQ(title(), "Verdolin - a.mdb");
}

TEST_F(DesktopKeywordsTest, SoIsOneThatOnlyLacksNotes) {
    makeArchive("a.mdb", {entryWith("k")});
    start();
    messages.expect(MessageAnswer::Ok);
    open("a.mdb");
    EXPECT_TRUE(holds("the archive holds no notes yet"));
    EXPECT_TRUE(desktop.openWindow()->isVisible());
}

TEST_F(DesktopKeywordsTest, AnEmptyArchiveIsOpenedWithoutAWord) {
    makeArchive("a.mdb", {});
    support::know(state.archiveKeywords, {"former"});
    start();
    open("a.mdb");
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_FALSE(desktop.openWindow()->isVisible());
    EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"former"});
}

TEST_F(DesktopKeywordsTest, TooManyNotesAreTold) {
    makeArchive("a.mdb", Entries(16384, entryWith("k", "n", "m")));
    start();
    messages.expect(MessageAnswer::Ok);
    open("a.mdb");
    EXPECT_TRUE(holds("32768 notes are more than the 32767"));
    EXPECT_TRUE(holds("it is open"));
    EXPECT_FALSE(desktop.progress().isVisible());
    EXPECT_TRUE(state.archiveNotes.neverGrown());
}

TEST_F(DesktopKeywordsTest, AFileThatIsNoArchiveIsToldInPlainWords) {
    folder.makeFile("letter.mdb", "Dear Anna, ...");
    start();
    messages.expect(MessageAnswer::Ok);
    open("letter.mdb");
    EXPECT_EQ(messages.asked.back().title, "Verdolin");
    EXPECT_TRUE(holds("letter.mdb"));
    EXPECT_TRUE(holds("Choose another archive with \"Open Archive\""));
    EXPECT_TRUE(desktop.openWindow()->isVisible());
    EXPECT_EQ(state.archiveName, "letter.mdb");
    EXPECT_EQ(folder.read("letter.mdb"), "Dear Anna, ...");
}

TEST_F(DesktopKeywordsTest, ADatabaseOfAnotherKindIsToldInPlainWords) {
    const base::ArchiveLocation other{folder.path() + "/", "other.mdb"};
    archive::createArchive(engine, other);
    std::string bytes = folder.read("other.mdb");
    bytes.resize(bytes.size() / 3);
    folder.makeFile("cut.mdb", bytes);
    start();
    messages.expect(MessageAnswer::Ok);
    open("cut.mdb");
    EXPECT_TRUE(holds("cut.mdb")) << messages.asked.back().text;
}

TEST_F(DesktopKeywordsTest, TheProgramMayEndMeanwhile) {
    makeArchive("a.mdb", Entries(500, entryWith("k", "n")));
    start();
    QTimer::singleShot(0, [this] { choose("mnuFileExit"); });
    open("a.mdb");
    EXPECT_EQ(left, 1);
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_TRUE(state.archiveKeywords.neverGrown());
    EXPECT_FALSE(desktop.progress().isVisible());
}

TEST_F(DesktopKeywordsTest, AnotherArchiveMayBeOpenedMeanwhile) {
    makeArchive("a.mdb", Entries(500, entryWith("k", "n")));
    makeArchive("b.mdb", {entryWith("other", "other")});
    start();
    QTimer::singleShot(0, [this] {
        open("b.mdb");
        EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"other"});
    });
    open("a.mdb");
    EXPECT_EQ(title(), "Verdolin - b.mdb");
    EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"k"});
}

TEST_F(DesktopKeywordsTest, TheArchiveMayBeClosedMeanwhile) {
    makeArchive("a.mdb", Entries(500, entryWith("k", "n")));
    start();
    QTimer::singleShot(0, [this] { click(desktop.openWindow(), "btnExistCancel"); });
    open("a.mdb");
    EXPECT_EQ(state.archiveName, "");
    EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"k"});
}

TEST_F(DesktopKeywordsTest, TheProgressWindowMayBeClosedMeanwhile) {
    makeArchive("a.mdb", Entries(500, entryWith("k", "n")));
    start();
    QTimer::singleShot(0, [this] { desktop.progress().close(); });
    open("a.mdb");
    EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"k"});
}

TEST_F(DesktopKeywordsTest, TheKeywordsWindowMayBeUsedMeanwhile) {
    makeArchive("a.mdb", Entries(500, entryWith("k", "n")));
    start();
    QTimer::singleShot(0, [this] {
        support::whenModal<keywords::FormKeywords>([](keywords::FormKeywords& window) {
            QTest::keyClicks(window.findChild<QComboBox*>("comboKeywords")->lineEdit(), "mine");
            window.findChild<QPushButton*>("btnKeyAdd")->click();
            window.close();
        });
        choose("mnuPULKeywords");
        EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"mine"});
    });
    open("a.mdb");
    EXPECT_EQ(textsOf(state.archiveKeywords), Texts{"k"});
}

/// With three scanned records in the list.
class KeywordsWindowTest : public DesktopKeywordsTest {
  protected:
    using Window = keywords::FormKeywords;

    void SetUp() override {
        start();
        desktop.openWindow()->close();
        state.scanList = support::listOf<base::ScanEntry>(
            {entryWith("k1", "n1", "m1"), entryWith("k2", "n2", "m2"), entryWith("", "", "")});
        state.viewMode = "scan";
        desktop.mainWindow()->arrangeWorkspace();
        for (int column = 1; column <= 10; ++column) {
            list().records().insertColumnAt(column, QString::number(column));
        }
        fillList();
    }

    void fillList() {
        list().records().removeAllRows();
        std::vector<RecordModel::Row> rows;
        std::int64_t number = 0;
        for (const base::ScanEntry& entry : state.scanList.elements()) {
            ++number;
            rows.push_back({"name " + std::to_string(number), entry.path, entry.Folder, entry.Type,
                            entry.keywords, entry.Notes1, entry.Notes2, "", "", "0"});
        }
        list().records().appendRows(std::move(rows));
    }
    void select(std::initializer_list<int> positions) {
        list().clearSelection();
        for (const int position : positions) {
            list().selectionModel()->select(
                list().records().index(position - 1, 0),
                QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }
    void withWindow(std::function<void(Window&)> user) {
        support::whenModal<Window>(std::move(user));
        choose("mnuPULKeywords");
    }
    static void chooseKeyword(Window& window, const char* keyword) {
        auto* combo = window.findChild<QComboBox*>("comboKeywords");
        QTest::keyClicks(combo->lineEdit(), keyword);
        click(&window, "btnKeyAdd");
        combo->setCurrentIndex(-1);
        while (combo->currentText() != keyword) {
            QTest::keyClick(combo, Qt::Key_Down);
        }
        click(&window, "btnSelectKW");
    }
    static std::string info(Window& window) {
        return window.findChild<QLabel*>("displayInfo")->text().toStdString();
    }
    Texts row(std::int64_t position) {
        const RecordModel& model = list().records();
        return {model.text(position, 1), model.text(position, 5), model.text(position, 6),
                model.text(position, 7)};
    }
};

TEST_F(KeywordsWindowTest, IsModalAndTheMainWindowsOwn) {
    select({1});
    withWindow([this](Window& window) {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.parentWidget(), desktop.mainWindow());
        window.close();
    });
}

TEST_F(KeywordsWindowTest, WhatIsAppliedIsSeenInTheListAndHeldByTheScan) {
    select({1, 3});
    withWindow([](Window& window) {
        EXPECT_NE(info(window).find("(qty: 2)"), std::string::npos);
        chooseKeyword(window, "new");
        click(&window, "btnApply");
    });
    EXPECT_EQ(row(1), (Texts{"name 1", "new", "n1", "m1"}));
    EXPECT_EQ(row(2), (Texts{"name 2", "k2", "n2", "m2"}));
    EXPECT_EQ(row(3), (Texts{"name 3", "new", "", ""}));
    EXPECT_EQ(state.scanList[1].keywords, "new");
    EXPECT_EQ(state.scanList[3].keywords, "new");
}

TEST_F(KeywordsWindowTest, InASortedListThePositionsAreThoseOfTheRows) {
    // Downwards by name: "name 3" stands first.
    list().sortBy(0, RecordModel::Order::Descending);
    select({1});
    withWindow([](Window& window) {
        chooseKeyword(window, "new");
        click(&window, "btnApply");
    });
    EXPECT_EQ(state.scanList[1].keywords, "new");
    EXPECT_EQ(state.scanList[3].keywords, "");
    EXPECT_EQ(row(1), (Texts{"name 3", "new", "n1", "m1"}));
}

TEST_F(KeywordsWindowTest, IsMadeAnewEachTime) {
    select({1});
    withWindow([](Window& window) {
        chooseKeyword(window, "new");
        window.findChild<QCheckBox*>("checkNotes2")->click();
        window.close();
    });
    withWindow([](Window& window) {
        EXPECT_EQ(info(window).substr(0, 6), "Select");
        EXPECT_FALSE(window.findChild<QPushButton*>("btnApply")->isEnabled());
        EXPECT_FALSE(window.findChild<QCheckBox*>("checkNotes2")->isChecked());
        EXPECT_EQ(window.findChild<QComboBox*>("comboKeywords")->count(), 1);
        window.close();
    });
    EXPECT_TRUE(desktop.mainWindow()->findChildren<Window*>().isEmpty());
}

TEST_F(KeywordsWindowTest, BeforeAnythingWasSelectedItOpensWithNone) {
    withWindow([](Window& window) {
        EXPECT_NE(info(window).find("(qty: 0)"), std::string::npos);
        EXPECT_TRUE(window.findChild<QLabel*>("labelSelectFirst")->isVisible());
        chooseKeyword(window, "new");
        click(&window, "btnApply");
    });
    EXPECT_EQ(state.scanList[1].keywords, "k1");
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(KeywordsWindowTest, WithNothingSelectedItMeansTheSelectionBefore) {
    select({2});
    withWindow([](Window& window) { window.close(); });
    select({});
    withWindow([](Window& window) {
        EXPECT_NE(info(window).find("(qty: 1)"), std::string::npos);
        chooseKeyword(window, "new");
        click(&window, "btnApply");
    });
    EXPECT_EQ(row(2), (Texts{"name 2", "new", "n2", "m2"}));
}

TEST_F(KeywordsWindowTest, ApplyingToAListThatHasBeenCutIsToldAndTheWindowStays) {
    select({1, 3});
    messages.expect(MessageAnswer::Ok);
    withWindow([this](Window& window) {
        chooseKeyword(window, "new");
        state.scanList.growTo(2);
        click(&window, "btnApply");
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(holds("record 3 of the selected ones is not in the list any more"));
        EXPECT_TRUE(holds("Select the records once more"));
        window.close();
    });
    EXPECT_EQ(row(1), (Texts{"name 1", "new", "n1", "m1"}));
}

TEST_F(KeywordsWindowTest, TheProgramMayEndWhileItIsOpen) {
    select({1});
    withWindow([this](Window&) { desktop.endProgram(); });
    EXPECT_EQ(left, 1);
    EXPECT_FALSE(desktop.mainWindow()->isVisible());
}

TEST_F(KeywordsWindowTest, AllRowsOfTheLargestListAreChangedWithoutDelay) {
    constexpr std::int64_t most = 32767;
    state.scanList.growTo(most);
    fillList();
    list().selectAll();
    QElapsedTimer watch;
    withWindow([&](Window& window) {
        EXPECT_NE(info(window).find("(qty: 32767)"), std::string::npos);
        chooseKeyword(window, "new");
        watch.start();
        click(&window, "btnApply");
        RecordProperty("applying_ms", static_cast<int>(watch.elapsed()));
        EXPECT_LT(watch.elapsed(), 2000);
    });
    EXPECT_EQ(row(most), (Texts{"name 32767", "new", "", ""}));
}

}  // namespace
}  // namespace shell
