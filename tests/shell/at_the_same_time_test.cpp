// What comes of it when the user does one thing while another is at work, in the real windows: the
// pairs of docs/at-the-same-time.md that are not those of a single window.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>

#include "archive/makedb.h"
#include "jet/checker.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "shell/archive_tree.h"
#include "shell/record_list.h"
#include "shell/workspace.h"
#include "tests/archive/archive_fixture.h"
#include "tests/explore/sample_rows.h"
#include "tests/shell/desktop_fixture.h"

namespace shell {
namespace {

using base::MessageAnswer;
using support::file;
using support::medium;
using Texts = std::vector<std::string>;

/// Archive a.mdb, which is open, holds medium 1; b.mdb holds medium 5. Drive d has 42 entries,
/// drive e five.
class AtTheSameTimeTest : public support::DesktopTest {
  protected:
    AtTheSameTimeTest() {
        makeArchive("b.mdb", 5, "other");
        makeArchive("a.mdb", 1, "stored");
        machine.machineDrives.add('d', "HOLIDAY", 4);
        machine.machineDrives.add('e', "CARD", 1);
        machine.disk.addFolder("d:\\photos");
        for (int i = 0; i < 40; ++i) {
            machine.disk.addFile("d:\\photos\\photo " + std::to_string(i));
        }
        machine.disk.addFile("d:\\readme");
        for (int i = 0; i < 5; ++i) {
            machine.disk.addFile("e:\\card " + std::to_string(i));
        }
        start();
        openArchive("a.mdb");
    }
    ~AtTheSameTimeTest() override {
        for (const char* name : {"a.mdb", "b.mdb"}) {
            const jet::CheckReport report =
                jet::checkDatabase(*machine.opener, folder.pathOf(name));
            for (const jet::CheckFinding& finding : report.findings()) {
                ADD_FAILURE() << name << ", page " << finding.page << ": " << finding.text;
            }
        }
    }

    base::ArchiveLocation archiveOf(const std::string& name) const {
        return {folder.path() + "/", name};
    }
    /// A medium with a folder of 30 files and one file in its root, with keywords and notes.
    void makeArchive(const std::string& name, int id, const std::string& word) {
        archive::createArchive(engine, archiveOf(name));
        const std::string root = std::to_string(id) + ":";
        std::vector<base::ScanEntry> records{support::folder(root, "docs"), file(root, word)};
        for (int i = 0; i < 30; ++i) {
            records.push_back(file(root + "\\docs", word + " " + std::to_string(i)));
        }
        for (base::ScanEntry& record : records) {
            record.keywords = word;
            record.Notes1 = "note of " + word;
        }
        tables.addMedia(archiveOf(name), {medium(id, word, "LABEL")});
        tables.addRecords(archiveOf(name), records);
    }

    /// Has `action` done in the tenth round of events from now.
    void meanwhile(std::function<void()> action, int rounds = 10) {
        QTimer::singleShot(0, &here, [this, action = std::move(action), rounds] {
            if (rounds > 1) {
                meanwhile(action, rounds - 1);
            } else {
                ++happened;
                action();
            }
        });
    }
    void prepareScan(char drive, const char* name) {
        choose("mnuArchScan");
        auto* drives = desktop.scanWindow()->findChild<QComboBox*>("driveScan");
        drives->setCurrentIndex(drive == 'd' ? 0 : 1);
        desktop.scanWindow()->findChild<QLineEdit*>("inputMediaName")->setText(name);
    }
    void scan(char drive, const char* name = "photos") {
        prepareScan(drive, name);
        click(desktop.scanWindow(), "btnScan");
    }
    void save() {
        choose("mnuArchSave");
        click(desktop.saveWindow(), "btnArchive");
    }
    void explore() { choose("mnArchExplore"); }
    void clickNode(const std::string& key) {
        ArchiveTree& tree = *desktop.mainWindow()->workspace().tree();
        QTreeWidgetItem* node = tree.node(key);
        ASSERT_NE(node, nullptr) << key;
        tree.scrollToItem(node);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(node).center());
    }
    void openArchive(const std::string& name) {
        choose("mnuFileOpen");
        dialogs.choose(folder.pathOf(name));
        clickTab(1);
        click(desktop.openWindow(), "btnExistOK");
    }

    int roots() { return desktop.mainWindow()->workspace().tree()->topLevelItemCount(); }
    bool hasNode(const std::string& key) {
        return desktop.mainWindow()->workspace().tree()->node(key) != nullptr;
    }
    Texts column(const std::string& archive, const char* table, const char* field) {
        return tables.column(archiveOf(archive), table, field);
    }
    static std::ptrdiff_t count(const Texts& texts, const std::string& begin) {
        return std::count_if(texts.begin(), texts.end(),
                             [&](const std::string& text) { return text.starts_with(begin); });
    }

    support::ArchiveTables tables{engine};
    int happened = 0;
    QObject here;  // what has not happened by its end does not happen any more
};

// While a drive is walked

TEST_F(AtTheSameTimeTest, ArchiveDuringAWalkStoresTheListAsItIsThen) {
    prepareScan('d', "photos");
    std::int64_t listed = 0;
    meanwhile([&] {
        save();
        listed = state.scanList.upperBound();
    });
    click(desktop.scanWindow(), "btnScan");
    ASSERT_EQ(happened, 1);
    EXPECT_LT(listed, 42);
    EXPECT_EQ(column("a.mdb", "media", "medianame"), (Texts{"stored", "photos"}));
    EXPECT_EQ(column("a.mdb", "media", "numberfiles")[1], "0") << "no scan had ended yet";
    EXPECT_EQ(static_cast<std::int64_t>(column("a.mdb", "main", "filename").size()), 32 + listed);
    EXPECT_EQ(names().size(), 42U);
}

TEST_F(AtTheSameTimeTest, ExploreDuringAWalkIsReplacedByItsList) {
    prepareScan('d', "photos");
    meanwhile([&] {
        explore();
        clickNode("1:");
        EXPECT_EQ(names(), Texts{"stored"});
        EXPECT_EQ(state.viewMode, "archive");
    });
    click(desktop.scanWindow(), "btnScan");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(roots(), 1);
    EXPECT_TRUE(hasNode("1:\\docs"));
    EXPECT_EQ(names().size(), 42U);
    EXPECT_EQ(list().records().columnCount(), 10);
    EXPECT_EQ(state.viewMode, "scan");
}

TEST_F(AtTheSameTimeTest, AnotherArchiveDuringAWalkGetsTheScanWithTheNumberOfTheFormer) {
    prepareScan('d', "photos");
    meanwhile([&] { openArchive("b.mdb"); });
    click(desktop.scanWindow(), "btnScan");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(names().size(), 42U);
    EXPECT_EQ(list().records().text(42, 2), "2:\\photos");
    save();
    EXPECT_EQ(column("a.mdb", "media", "mediaid"), Texts{"1"});
    EXPECT_EQ(column("b.mdb", "media", "mediaid"), (Texts{"5", "2"}));
    EXPECT_EQ(count(column("b.mdb", "main", "path"), "2:"), 42);
}

TEST_F(AtTheSameTimeTest, ANewScanWindowWhileAHiddenOneStillWalks) {
    prepareScan('d', "photos");
    const QPointer<scan::FormScan> walking = desktop.scanWindow();
    meanwhile([&] {
        click(walking, "btnScan");
        EXPECT_FALSE(walking->isVisible());
        choose("mnuArchScan");
        ASSERT_FALSE(walking.isNull()) << "its first walk has not ended";
        EXPECT_NE(desktop.scanWindow(), walking.data());
    });
    click(walking, "btnScan");
    ASSERT_EQ(happened, 1);
    EXPECT_GT(names().size(), 42U);
    EXPECT_TRUE(desktop.scanWindow()->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(walking.isNull());
}

TEST_F(AtTheSameTimeTest, EnterHeldDownScansOnce) {
    prepareScan('d', "photos");
    auto* button = desktop.scanWindow()->findChild<QPushButton*>("btnScan");
    auto* name = desktop.scanWindow()->findChild<QLineEdit*>("inputMediaName");
    for (int round = 1; round <= 10; ++round) {
        meanwhile(
            [button, name, round] {
                QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true);
                QCoreApplication::sendEvent(round % 2 == 0 ? static_cast<QWidget*>(button) : name,
                                            &again);
            },
            round);
    }
    QTest::keyClick(name, Qt::Key_Return);
    ASSERT_EQ(happened, 10);
    EXPECT_EQ(names().size(), 42U);
}

TEST_F(AtTheSameTimeTest, OtherWindowsMayBeClosedDuringAWalk) {
    choose("mnuArchSave");
    choose("mnuFileOpen");
    choose("mnuHelpAbout");
    prepareScan('d', "photos");
    meanwhile([&] {
        desktop.saveWindow()->close();
        desktop.openWindow()->close();
        desktop.about()->close();
    });
    click(desktop.scanWindow(), "btnScan");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(names().size(), 42U);
    EXPECT_EQ(desktop.saveWindow(), nullptr);
    EXPECT_EQ(state.archiveName, "a.mdb");
}

// While a scan is stored

TEST_F(AtTheSameTimeTest, ScanDuringASaveLetsTheRestBeOfTheNewList) {
    scan('d');
    choose("mnuArchSave");
    for (int i = 0; i < 60; ++i) {
        machine.disk.addFile("e:\\card " + std::to_string(100 + i));
    }
    meanwhile([&] { scan('e', "card"); });
    click(desktop.saveWindow(), "btnArchive");
    ASSERT_EQ(happened, 1);
    const Texts stored = column("a.mdb", "main", "filename");
    EXPECT_EQ(stored.size(), 32U + 42U);
    const auto ofTheCard = count(stored, "card ");
    EXPECT_GT(ofTheCard, 0);
    EXPECT_LT(ofTheCard, 42);
    const Texts ids = column("a.mdb", "main", "mediaid");
    EXPECT_EQ(std::count(ids.begin(), ids.end(), "2"), 42);
    EXPECT_EQ(names().size(), 65U);
}

TEST_F(AtTheSameTimeTest, AShorterScanDuringASaveEndsItWithAMessage) {
    scan('d');
    choose("mnuArchSave");
    meanwhile([&] { scan('e', "card"); });
    messages.expect(MessageAnswer::Ok);
    click(desktop.saveWindow(), "btnArchive");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(messages.asked.back().title, "Verdolin");
    const Texts stored = column("a.mdb", "main", "filename");
    EXPECT_GT(stored.size(), 32U);
    EXPECT_LT(stored.size(), 32U + 42U);
    EXPECT_EQ(count(stored, "card "), 0);
    EXPECT_TRUE(desktop.saveWindow()->isVisible());
}

TEST_F(AtTheSameTimeTest, ExploreDuringASaveShowsTheRowsStoredSoFar) {
    scan('d');
    choose("mnuArchSave");
    std::size_t shown = 0;
    meanwhile([&] {
        explore();
        EXPECT_EQ(roots(), 2);
        clickNode("2:");
        clickNode("2:\\photos");
        shown = names().size();
    });
    click(desktop.saveWindow(), "btnArchive");
    ASSERT_EQ(happened, 1);
    EXPECT_GT(shown, 0U);
    EXPECT_LT(shown, 40U);
    EXPECT_EQ(column("a.mdb", "main", "filename").size(), 32U + 42U);
    EXPECT_EQ(names().size(), shown) << "until it is explored again";
    explore();
    clickNode("2:");
    clickNode("2:\\photos");
    EXPECT_EQ(names().size(), 40U);
}

TEST_F(AtTheSameTimeTest, AnotherArchiveDuringASaveGetsNothingOfIt) {
    scan('d');
    choose("mnuArchSave");
    meanwhile([&] { openArchive("b.mdb"); });
    click(desktop.saveWindow(), "btnArchive");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(state.archiveName, "b.mdb");
    EXPECT_EQ(column("a.mdb", "main", "filename").size(), 32U + 42U);
    EXPECT_EQ(column("b.mdb", "main", "filename").size(), 32U);
}

TEST_F(AtTheSameTimeTest, ANewArchiveOverTheOneThatIsWrittenStaysEmpty) {
    scan('d');
    choose("mnuArchSave");
    meanwhile([&] {
        choose("mnuFileOpen");
        dialogs.choose(folder.pathOf("a.mdb"));
        messages.expect(MessageAnswer::Yes);
        clickTab(2);
        click(desktop.openWindow(), "btnNewOk");
    });
    click(desktop.saveWindow(), "btnArchive");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(messages.asked.size(), 1U);
    EXPECT_TRUE(column("a.mdb", "media", "mediaid").empty());
    EXPECT_TRUE(column("a.mdb", "main", "filename").empty());
    EXPECT_EQ(desktop.saveWindow(), nullptr);
    save();
    EXPECT_EQ(column("a.mdb", "main", "filename").size(), 42U);
}

// While a medium is read

TEST_F(AtTheSameTimeTest, ScanDuringAReadingLeavesItsColumnsAndTheFilesOfTheNode) {
    explore();
    meanwhile([&] {
        scan('d');
        EXPECT_EQ(names().size(), 42U);
    });
    clickNode("1:");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(names(), Texts{"stored"});
    EXPECT_EQ(list().records().columnCount(), 10);
    EXPECT_TRUE(hasNode("1:\\docs"));
    EXPECT_EQ(state.viewMode, "scan");
}

TEST_F(AtTheSameTimeTest, ArchiveDuringAReadingIsNoConcernOfIt) {
    scan('d');
    explore();
    meanwhile([&] { save(); });
    clickNode("1:");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(names(), Texts{"stored"});
    clickNode("1:\\docs");
    EXPECT_EQ(names().size(), 30U);
    EXPECT_FALSE(hasNode("2:"));
    EXPECT_EQ(column("a.mdb", "main", "filename").size(), 32U + 42U);
}

TEST_F(AtTheSameTimeTest, AnUpdateOfTheMediumThatIsReadShowsWhatWasReadBefore) {
    scan('d');
    explore();
    choose("mnuArchSave");
    desktop.saveWindow()->findChildren<QRadioButton*>("optUpdate").last()->click();
    desktop.saveWindow()->findChild<QListWidget*>("listMedia")->setCurrentRow(0);
    meanwhile([&] { click(desktop.saveWindow(), "btnArchive"); });
    clickNode("1:");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(count(names(), "stored"), 1) << "it was read already";
    EXPECT_TRUE(hasNode("1:\\docs"));
    EXPECT_EQ(column("a.mdb", "main", "filename").size(), 42U);
    explore();
    clickNode("1:");
    clickNode("1:\\photos");
    EXPECT_EQ(names().size(), 40U);
}

// While keywords and notes are collected

TEST_F(AtTheSameTimeTest, TheMainRoadDuringACollectionIsNoConcernOfIt) {
    meanwhile([&] {
        scan('d');
        save();
        explore();
        clickNode("6:");
        EXPECT_EQ(names(), Texts{"readme"});
    });
    openArchive("b.mdb");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(column("b.mdb", "media", "mediaid"), (Texts{"5", "6"}));
    EXPECT_EQ(column("b.mdb", "main", "filename").size(), 32U + 42U);
    ASSERT_EQ(state.archiveKeywords.upperBound(), 1);
    EXPECT_EQ(state.archiveKeywords[1].text, "other");
    EXPECT_EQ(names(), Texts{"readme"});
}

TEST_F(AtTheSameTimeTest, ClosingTheOpenWindowDuringACollectionStopsNothing) {
    meanwhile([&] { desktop.openWindow()->close(); });
    openArchive("b.mdb");
    ASSERT_EQ(happened, 1);
    EXPECT_EQ(state.archiveName, "b.mdb");
    EXPECT_EQ(state.archiveKeywords[1].text, "other");
    EXPECT_FALSE(desktop.progress().isVisible());
    EXPECT_FALSE(desktop.openWindow()->isVisible());
}

}  // namespace
}  // namespace shell
