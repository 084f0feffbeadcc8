#include "searchcontrol/search_control.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QImage>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "base/random_access_file.h"
#include "searchcontrol/query_line.h"
#include "tests/search/golden_queries.h"
#include "tests/searchcontrol/control_fixture.h"

namespace searchcontrol {
namespace {

using Names = std::vector<std::string>;
enum Column { Name, Medium, Folder, Size, Modified, Type, Keywords, Notes1, Notes2 };

class SearchControlTest : public support::ControlTest {
  protected:
    /// Uses the window that will be modal, as soon as it is there.
    void whenModal(std::function<void(QDialog&)> use) {
        QTimer::singleShot(0, qApp, [this, use] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                whenModal(use);
                return;
            }
            use(*dialog);
        });
    }
    static void press(QDialog& dialog, int key) {
        QWidget* target = dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog;
        QTest::keyClick(target, static_cast<Qt::Key>(key));
    }
    using support::ControlTest::press;

    QTreeWidgetItem* facet(const char* group, const char* label) {
        auto* tree = find<QTreeWidget>("tvFacets");
        for (QTreeWidgetItem* item : tree->findItems(label, Qt::MatchRecursive)) {
            if (item->parent() != nullptr && item->parent()->text(0) == group) {
                return item;
            }
        }
        throw std::logic_error(std::string("there is no facet ") + label);
    }
    void clickFacet(QTreeWidgetItem* item, Qt::KeyboardModifiers modifiers = {}) {
        auto* tree = find<QTreeWidget>("tvFacets");
        const QRect place = tree->visualItemRect(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers, place.center());
        waitUntilDone();
    }
    std::string query() { return line()->text().toStdString(); }
    void trigger(const char* action) { control->findChild<QAction*>(action)->trigger(); }
    int rows() { return table()->model()->rowCount(); }
    /// The archive as another program that has it for itself; the file's end lets go of it.
    std::unique_ptr<base::RandomAccessFile> lockedArchive() {
        auto opened =
            machine.opener->open(folder.pathOf("golden.mdb"), base::FileOpener::Mode::ReadWrite);
        if (opened.file == nullptr ||
            !opened.file->tryLock(base::RandomAccessFile::Lock::Exclusive)) {
            throw std::logic_error("the archive cannot be locked");
        }
        return std::move(opened.file);
    }
    std::string storedKeywords(const std::string& name) {
        archive::ArchiveTable open(engine, placeOf("golden.mdb"), "main", jet::LockType::ReadOnly);
        const archive::RecordReader reader(open.rows());
        base::ScanEntry entry;
        for (; !open.rows().endOfFile(); open.rows().moveNext()) {
            reader.read(entry);
            if (entry.FileName == name) {
                return entry.keywords + "|" + entry.Notes1 + "|" + entry.Notes2;
            }
        }
        return "none";
    }
};

// What is found

TEST_F(SearchControlTest, WithoutAnArchiveItSaysSoAndTakesAnEmptyPath) {
    open("");
    control->setProperty("archivePath", "");
    EXPECT_EQ(control->property("archivePath").toString(), "");
    EXPECT_EQ(status(), "No archive is open");
    search("anything");
    EXPECT_EQ(names(), Names{});
}

TEST_F(SearchControlTest, AnArchiveThatIsNotThereIsSaidToBeMissing) {
    open("missing.mdb");
    EXPECT_NE(status().find("The archive cannot be read"), std::string::npos);
    EXPECT_EQ(rows(), 0);
}

TEST_F(SearchControlTest, AFileThatIsNoArchiveIsSaidToBeNone) {
    folder.makeFile("text.mdb", std::string(9000, 'x'));
    open("text.mdb");
    EXPECT_NE(status().find("The archive cannot be read"), std::string::npos);
    writeGoldenArchive();
    control->setProperty("archivePath", text(folder.pathOf("golden.mdb")));
    waitUntilDone();
    EXPECT_EQ(rows(), static_cast<int>(golden::entries().size()));
}

TEST_F(SearchControlTest, EveryGoldenQueryFindsItsEntries) {
    openGolden();
    std::map<std::string, std::string> nameOf;
    for (const golden::Entry& entry : golden::entries()) {
        nameOf[std::string(entry.key)] = golden::scanEntry(entry).FileName;
    }
    for (const golden::Query& each : golden::queries()) {
        line()->setText(text(std::string(each.line)));
        waitUntilDone();
        Names expected;
        for (const QString& key : text(std::string(each.found)).split(' ', Qt::SkipEmptyParts)) {
            expected.push_back(nameOf[key.toStdString()]);
        }
        Names found = names();
        if (each.order == golden::Order::Any) {
            std::sort(expected.begin(), expected.end());
            std::sort(found.begin(), found.end());
        }
        EXPECT_EQ(found, expected) << each.line;
    }
}

TEST_F(SearchControlTest, AnEmptyQueryShowsEverything) {
    openGolden();
    EXPECT_EQ(rows(), static_cast<int>(golden::entries().size()));
    EXPECT_EQ(status().substr(0, 8), "40 hits,");
}

TEST_F(SearchControlTest, WholeNamesComeFirstThenStartsThenWordsThenTheRest) {
    openGolden();
    search("holiday");
    const Names found = names();
    EXPECT_EQ(found[0], "Holiday");
    EXPECT_EQ((Names{found.begin() + 1, found.begin() + 5}),
              (Names{"Holiday.mp4", "holiday.avi", "our summer holiday.mkv", "bigholiday"}));
}

TEST_F(SearchControlTest, ResultsComeAsOneTypes) {
    openGolden();
    type("summ");
    EXPECT_EQ(names(), Names{"our summer holiday.mkv"});
    QTest::keyClicks(line(), "erx");
    EXPECT_EQ(names(), Names{});
    QTest::keyClick(line(), Qt::Key_Backspace);
    EXPECT_EQ(names(), Names{"our summer holiday.mkv"});
}

TEST_F(SearchControlTest, AHalfTypedQueryKeepsTheListAndSaysWhatIsMissing) {
    openGolden();
    search("size:>1gb ");
    const Names complete = names();
    ASSERT_FALSE(complete.empty());
    for (const char* half :
         {"size:>1gb size:", "size:>1gb size:>", "size:>1gb (", "size:>1gb date:"}) {
        search(half);
        EXPECT_EQ(names(), complete) << half;
        EXPECT_NE(status().find(". "), std::string::npos) << half << ": " << status();
    }
}

TEST_F(SearchControlTest, AWordThatCannotBeUnderstoodYetKeepsTheHitsOfTheLineBefore) {
    openGolden();
    search("regex:img_");
    const Names before = names();
    ASSERT_FALSE(before.empty());
    ASSERT_LT(before.size(), golden::entries().size());
    for (const char* typed : {"(", "0", "0"}) {
        QTest::keyClicks(line(), typed);
        waitUntilDone();
        EXPECT_EQ(names(), before) << query();
        EXPECT_NE(status().find("regex"), std::string::npos) << status();
    }
    trigger("actionReload");
    waitUntilDone();
    EXPECT_EQ(names(), before);
    QTest::keyClicks(line(), "01)");
    waitUntilDone();
    EXPECT_EQ(names(), (Names{"IMG_0001.jpg", "img_0001.JPG", "img_0001.jpg"}));
    line()->setText("regex:(");
    waitUntilDone();
    EXPECT_EQ(rows(), static_cast<int>(golden::entries().size()));
}

TEST_F(SearchControlTest, AWordThatIsTypedInTheMiddleKeepsTheHitsOfTheLineBefore) {
    openGolden();
    search("regex:img ext:jpg medium:1");
    const Names before = names();
    ASSERT_EQ(before.size(), 2U);
    line()->setCursorPosition(9);
    for (const char* typed : {"_", "0*", "("}) {
        QTest::keyClicks(line(), typed);
        waitUntilDone();
        EXPECT_EQ(names(), before) << query();
    }
    EXPECT_EQ(query(), "regex:img_0*( ext:jpg medium:1");
    QTest::keyClicks(line(), "1)");
    waitUntilDone();
    EXPECT_EQ(names(), Names{"IMG_0001.jpg"});
}

TEST_F(SearchControlTest, AnUnknownFieldIsPlainTextAndTheStatusSaysSo) {
    openGolden();
    search("artist:title");
    EXPECT_EQ(rows(), 0);
    EXPECT_NE(status().find("artist"), std::string::npos);
}

TEST_F(SearchControlTest, TheStatusTellsHitsSizeAndMedia) {
    openGolden();
    search("ext:jpg");
    EXPECT_EQ(status().substr(0, status().rfind(',')), "5 hits, 16.0 KB on 3 media");
    search("ext:avi");
    EXPECT_EQ(status().substr(0, status().rfind(',')), "1 hit, at least 2.0 GB on 1 medium");
    search("sort:name limit:2");
    EXPECT_NE(status().find("40 hits, the first 2 shown"), std::string::npos) << status();
}

TEST_F(SearchControlTest, TheArchiveIsReadAgainWhenItHasChanged) {
    openGolden();
    search("newcomer");
    EXPECT_EQ(rows(), 0);
    base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
    entry.FileName = "newcomer.jpg";
    addEntries("golden.mdb", {entry});
    control->setProperty("archivePath", text(folder.pathOf("golden.mdb")));
    waitUntilDone();
    EXPECT_EQ(names(), Names{"newcomer.jpg"});
}

TEST_F(SearchControlTest, AChangeWhileTheWindowIsOpenIsSeen) {
    openGolden();
    search("newcomer");
    base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
    entry.FileName = "newcomer.jpg";
    addEntries("golden.mdb", {entry});
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 1; }, patience));
}

TEST_F(SearchControlTest, WhileAnotherProgramHasTheArchiveWhatWasReadStays) {
    openGolden();
    search("ext:jpg");
    const Names before = names();
    auto other = lockedArchive();
    trigger("actionReload");
    waitUntilDone();
    EXPECT_NE(status().find("in use"), std::string::npos) << status();
    EXPECT_EQ(names(), before);
    other.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return status().starts_with("5 hits"); }, patience))
        << status();
    EXPECT_EQ(names(), before);
}

TEST_F(SearchControlTest, AnotherArchiveTakesThePlaceOfTheFirst) {
    openGolden();
    writeArchive("other.mdb", {golden::media()[0]}, {golden::scanEntry(golden::entries()[7])});
    control->setProperty("archivePath", text(folder.pathOf("other.mdb")));
    waitUntilDone();
    EXPECT_EQ(names(), Names{"README"});
    control->setProperty("archivePath", "");
    EXPECT_EQ(names(), Names{});
}

// Keys

TEST_F(SearchControlTest, DownEntersTheListAndTypingThereGoesBackToTheLine) {
    openGolden();
    search("holi");
    press(Qt::Key_Down);
    EXPECT_TRUE(table()->hasFocus());
    EXPECT_EQ(table()->currentIndex().row(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(table()->currentIndex().row(), 1);
    QTest::keyClick(table(), 'd');
    EXPECT_TRUE(line()->hasFocus());
    EXPECT_EQ(query(), "holid");
    press(Qt::Key_Down);
    QTest::keyClick(table(), Qt::Key_Backspace);
    EXPECT_EQ(query(), "holi");
    EXPECT_TRUE(line()->hasFocus());
}

TEST_F(SearchControlTest, UpFromTheFirstRowGoesBackToTheLine) {
    openGolden();
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_TRUE(line()->hasFocus());
}

TEST_F(SearchControlTest, EnterShowsTheEntryInTheMainWindow) {
    openGolden();
    search("strand");
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    const search::FoundEntry strand{1, "1:\\photos\\2004", "Müller am Strand.jpeg", false};
    EXPECT_EQ(shownEntries, (std::vector<search::FoundEntry>{strand, strand}));
}

TEST_F(SearchControlTest, EnterWithoutAnyHitDoesNothing) {
    openGolden();
    search("nothing of that name");
    press(Qt::Key_Return);
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(shownEntries.empty());
}

TEST_F(SearchControlTest, CtrlEnterOpensTheFileWhereItsMediumIsMounted) {
    openGolden();
    const std::string file = folder.makeFile("cd/photos/2004/IMG_0001.jpg");
    machine.machineDrives.add('e', "CD_HOL01").folder = folder.pathOf("cd");
    search("medium:1 img_0001");
    press(Qt::Key_Return, Qt::ControlModifier);
    press(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(openedFiles, (Names{file, folder.pathOf("cd/photos/2004")}));
}

TEST_F(SearchControlTest, CtrlEnterSaysElseWhichMediumToFetch) {
    openGolden();
    search("medium:1 img_0001");
    messages.expect(base::MessageAnswer::Ok);
    press(Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(messages.asked.size(), 1U);
    EXPECT_NE(messages.asked[0].text.find("1: Holiday 2001, label CD_HOL01"), std::string::npos);
    EXPECT_TRUE(openedFiles.empty());
}

TEST_F(SearchControlTest, CtrlLGoesToTheQueryAndEscapeClearsIt) {
    openGolden();
    search("holiday");
    press(Qt::Key_Down);
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(line()->hasFocus());
    EXPECT_EQ(line()->selectedText(), "holiday");
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_EQ(query(), "");
    EXPECT_TRUE(line()->hasFocus());
}

TEST_F(SearchControlTest, AQueryThatWasClearedCanBeTakenBack) {
    openGolden();
    search("holiday");
    press(Qt::Key_Escape);
    line()->undo();
    EXPECT_EQ(query(), "holiday");
}

TEST_F(SearchControlTest, F1ShowsTheSyntaxWithExamplesThatCanBeClicked) {
    openGolden();
    press(Qt::Key_F1);
    auto* card = find<QDialog>("form_syntax");
    EXPECT_TRUE(card->isVisible());
    EXPECT_TRUE(card->findChild<QTextBrowser*>("textSyntax")->toPlainText().contains("ext:txt"));
    emit card->findChild<QTextBrowser*>("textSyntax")->anchorClicked(QUrl("query:ext%3Atxt"));
    EXPECT_EQ(query(), "ext:txt");
}

TEST_F(SearchControlTest, TheHistoryIsGoneThroughWithAltAndTheArrows) {
    openGolden();
    search("first");
    press(Qt::Key_Return);
    search("second");
    press(Qt::Key_Return);
    search("half");
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(query(), "second");
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(query(), "first");
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(query(), "first");
    press(Qt::Key_Down, Qt::AltModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(query(), "half");
}

TEST_F(SearchControlTest, WordsAreCompletedFromTheArchive) {
    openGolden();
    search("kw:hol");
    auto* queryLine = find<QueryLine>("queryLine");
    EXPECT_EQ(queryLine->proposal(), "iday");
    press(Qt::Key_Right);
    EXPECT_EQ(query(), "kw:Holiday");
}

TEST_F(SearchControlTest, CtrlDigitOrdersByThatColumn) {
    openGolden();
    search("ext:jpg");
    press(Qt::Key_Down);
    press(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(query(), "ext:jpg sort:size");
    press(Qt::Key_4, Qt::ControlModifier);
    waitUntilDone();
    EXPECT_EQ(query(), "ext:jpg sort:-size");
    EXPECT_EQ(names().front(), "img_0002.JPG");
    press(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(query(), "ext:jpg");
}

// The mouse

TEST_F(SearchControlTest, AClickOnAHeadingOrdersByItsValues) {
    openGolden();
    search("medium:2 file:");
    QHeaderView* header = table()->horizontalHeader();
    const auto click = [&](int column) {
        const QPoint place(header->sectionViewportPosition(column) + 10, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
        waitUntilDone();
    };
    click(Size);
    EXPECT_EQ(query(), "medium:2 file: sort:size");
    EXPECT_EQ(names(), (Names{"readme.txt", "STRASSE.pdf", "img_0001.JPG", "our summer holiday.mkv",
                              "Holiday.mp4", "holiday.avi"}));
    EXPECT_EQ(header->sortIndicatorSection(), Size);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);
    click(Modified);
    EXPECT_EQ(names().front(), "img_0001.JPG");
    EXPECT_EQ(names().back(), "readme.txt");
}

TEST_F(SearchControlTest, AFacetNarrowsAndWithCtrlExcludesByEditingTheLine) {
    openGolden();
    search("holiday");
    clickFacet(facet("Extensions", "txt"));
    EXPECT_EQ(query(), "holiday ext:txt");
    EXPECT_EQ(rows(), 4);
    clickFacet(facet("Extensions", "txt"), Qt::ControlModifier);
    EXPECT_EQ(query(), "holiday !ext:txt");
    EXPECT_EQ(rows(), 10);
    clickFacet(facet("Media", "2: Backup 12"));
    EXPECT_EQ(query(), "holiday !ext:txt medium:2");
    EXPECT_EQ(facet("Media", "2: Backup 12")->text(1), "4");
}

TEST_F(SearchControlTest, FacetsAreUsedWithTheKeysAsWell) {
    openGolden();
    auto* tree = find<QTreeWidget>("tvFacets");
    tree->setFocus();
    tree->setCurrentItem(facet("Years", "2019"));
    QTest::keyClick(tree, Qt::Key_Return);
    waitUntilDone();
    EXPECT_EQ(query(), "date:2019");
    tree->setCurrentItem(facet("Media", "1: Holiday 2001"));
    QTest::keyClick(tree, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(query(), "date:2019 !medium:1");
}

TEST_F(SearchControlTest, EveryFacetFindsAsManyAsItSays) {
    openGolden();
    auto* tree = find<QTreeWidget>("tvFacets");
    std::vector<std::pair<QString, QString>> facets;
    for (int group = 0; group < tree->topLevelItemCount(); ++group) {
        const QTreeWidgetItem* item = tree->topLevelItem(group);
        for (int i = 0; i < item->childCount(); ++i) {
            const QString term = item->child(i)->data(0, Qt::UserRole).toString();
            if (!term.isEmpty()) {
                facets.emplace_back(term, item->child(i)->text(1));
            }
        }
    }
    ASSERT_GT(facets.size(), 15U);
    for (const auto& [term, count] : facets) {
        line()->setText(term);
        waitUntilDone();
        EXPECT_EQ(QString::number(rows()), count) << term.toStdString();
    }
}

TEST_F(SearchControlTest, ALongListOfFacetsIsShownWholeWhenItsLastLineIsClicked) {
    std::vector<base::ScanEntry> entries;
    for (int i = 0; i < 15; ++i) {
        entries.push_back(golden::scanEntry(golden::entries()[2]));
        entries.back().FileName = "file.x" + std::to_string(100 + i);
    }
    writeArchive("kinds.mdb", golden::media(), entries);
    open("kinds.mdb");
    QTreeWidgetItem* const group = facet("Extensions", "x100")->parent();
    ASSERT_EQ(group->childCount(), 11);
    EXPECT_EQ(group->child(10)->text(0), "All 15\u2026");
    clickFacet(group->child(10));
    ASSERT_TRUE(QTest::qWaitFor([&] { return group->childCount() == 15; }, patience));
    clickFacet(group->child(14));
    EXPECT_EQ(query(), "ext:x114");
}

TEST_F(SearchControlTest, WhatIsSelectedIsCountedAndSummedUp) {
    openGolden();
    EXPECT_EQ(selectionStatus(), "");
    search("ext:jpg");
    press(Qt::Key_Down);
    press(Qt::Key_A, Qt::ControlModifier);
    waitUntilDone();
    EXPECT_EQ(selectionStatus(), "5 selected, 16.0 KB");
    search("ext:avi;jpg sort:size");
    press(Qt::Key_Down);
    // Two stretches of the table, the second of a size that is not known.
    table()->selectionModel()->select(table()->model()->index(5, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    waitUntilDone();
    EXPECT_EQ(selectionStatus(), "2 selected, at least 2.0 GB");
    // Painted headings must not look through millions of selected rows.
    EXPECT_NE(table()->horizontalHeader()->selectionModel(), table()->selectionModel());
}

TEST_F(SearchControlTest, MatchedLettersAreEmphasised) {
    openGolden();
    const auto picture = [&](const char* query) {
        search(query);
        EXPECT_EQ(rows(), 1) << query;
        const QRect place = table()->visualRect(table()->model()->index(0, Name));
        return table()->viewport()->grab(place).toImage();
    };
    const QImage plain = picture("note:anna");
    EXPECT_EQ(picture("note:anna file:"), plain);
    EXPECT_NE(picture("strand"), plain);
    EXPECT_NE(picture("strand"), picture("am strand"));
}

TEST_F(SearchControlTest, NumbersStandBelowTheEndOfTheirHeading) {
    openGolden();
    const auto aligned = [&](int column) {
        return table()->model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
               Qt::AlignHorizontal_Mask;
    };
    EXPECT_EQ(aligned(Size), Qt::AlignRight);
    EXPECT_EQ(aligned(Name), Qt::AlignLeft);
}

TEST_F(SearchControlTest, TheDetailsTellOfTheCurrentEntry) {
    openGolden();
    search("img_0002");
    press(Qt::Key_Down);
    waitUntilDone();
    const QString details = find<QTextBrowser>("textDetails")->toPlainText();
    EXPECT_TRUE(details.contains("10.0 KB (10,240 bytes)")) << details.toStdString();
    EXPECT_EQ(selectionStatus(), "1 selected, 10.0 KB");
}

TEST_F(SearchControlTest, ACopyInTheDetailsLeadsToItsPlace) {
    openGolden();
    search("medium:1 img_0001");
    press(Qt::Key_Down);
    waitUntilDone();
    auto* details = find<QTextBrowser>("textDetails");
    const QString html = details->toHtml();
    const qsizetype link = html.indexOf("entry:");
    ASSERT_GE(link, 0);
    emit details->anchorClicked(QUrl(html.mid(link, html.indexOf('"', link) - link)));
    ASSERT_EQ(shownEntries.size(), 1U);
    EXPECT_EQ(shownEntries[0].name, "img_0001.JPG");
}

TEST_F(SearchControlTest, ColumnsAreHiddenByTheHeadersMenuAndRemembered) {
    openGolden();
    QHeaderView* header = table()->horizontalHeader();
    emit header->customContextMenuRequested(QPoint(5, 5));
    auto* menu = find<QMenu>("menuColumns");
    menu->actions()[Type]->trigger();
    menu->close();
    EXPECT_TRUE(table()->isColumnHidden(Type));
    header->moveSection(header->visualIndex(Size), 0);
    control->hide();
    open();
    EXPECT_TRUE(table()->isColumnHidden(Type));
    EXPECT_EQ(table()->horizontalHeader()->logicalIndex(0), Size);
    EXPECT_NE(folder.read("settings/vdln.ini").find("[search]"), std::string::npos);
}

// Actions

TEST_F(SearchControlTest, NamesPathsAndRowsAreCopiedAsText) {
    openGolden();
    search("cat.txt sort:name");
    press(Qt::Key_Down);
    press(Qt::Key_A, Qt::ControlModifier);
    trigger("actionCopyName");
    EXPECT_EQ(QApplication::clipboard()->text(), "cat.txt\nconcat.txt");
    press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "3:\\Holiday\\cat.txt\n3:\\Holiday\\concat.txt");
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(
        "cat.txt\t3: Backup 1\t3:\\Holiday\t9\t01/01/2000 00:00:00\tplain text document"));
}

TEST_F(SearchControlTest, CopiesAreFoundAndPlacesExcludedByTheLine) {
    openGolden();
    search("medium:1 img_0001");
    press(Qt::Key_Down);
    trigger("actionFindCopies");
    waitUntilDone();
    EXPECT_EQ(rows(), 3);
    search("holiday");
    press(Qt::Key_Down);
    table()->selectRow(3);
    trigger("actionExcludeMedium");
    EXPECT_EQ(query(), "holiday !medium:2");
    search("ext:txt");
    press(Qt::Key_Down);
    trigger("actionExcludeExtension");
    EXPECT_EQ(query(), "!ext:txt");
}

TEST_F(SearchControlTest, NoActionIsRepeatedWhileItsKeysAreHeldDown) {
    openGolden();
    int actions = 0;
    for (const QAction* action : control->actions()) {
        EXPECT_FALSE(action->autoRepeat()) << action->objectName().toStdString();
        ++actions;
    }
    EXPECT_GT(actions, 5);
}

TEST_F(SearchControlTest, KeywordsOfOneEntryAreSetAndTakenBack) {
    openGolden();
    search("medium:1 img_0001");
    press(Qt::Key_Down);
    whenModal([](QDialog& dialog) {
        auto* keywords = dialog.findChild<QLineEdit*>("inputKeywords");
        EXPECT_EQ(keywords->text(), "holiday, beach");
        keywords->selectAll();
        QTest::keyClicks(keywords, "sea");
        auto* note = dialog.findChild<QLineEdit*>("inputNotes1");
        QTest::keyClicks(note, "a note");
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    waitUntilDone();
    EXPECT_EQ(storedKeywords("IMG_0001.jpg"), "sea|a note|");
    EXPECT_EQ(cell(0, Keywords), "sea");
    table()->setFocus();
    press(Qt::Key_Z, Qt::ControlModifier);
    waitUntilDone();
    EXPECT_EQ(storedKeywords("IMG_0001.jpg"), "holiday, beach||");
    EXPECT_EQ(cell(0, Keywords), "holiday, beach");
    EXPECT_FALSE(control->findChild<QAction*>("actionUndo")->isEnabled());
}

TEST_F(SearchControlTest, WhatAFailureKeptFromBeingUndoneCanBeUndoneLater) {
    openGolden();
    search("medium:1 img_0001");
    press(Qt::Key_Down);
    whenModal([](QDialog& dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit*>("inputNotes1"), "a note");
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    waitUntilDone();
    ASSERT_EQ(storedKeywords("IMG_0001.jpg"), "holiday, beach|a note|");
    auto other = lockedArchive();
    trigger("actionUndo");
    waitUntilDone();
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("in use"), std::string::npos);
    expectedFailures = boundary.failures;
    EXPECT_TRUE(control->findChild<QAction*>("actionUndo")->isEnabled());
    other.reset();
    trigger("actionUndo");
    waitUntilDone();
    EXPECT_EQ(storedKeywords("IMG_0001.jpg"), "holiday, beach||");
    EXPECT_FALSE(control->findChild<QAction*>("actionUndo")->isEnabled());
}

TEST_F(SearchControlTest, AnnotationsTellWhatIsWrittenAndWhatIsInMemoryOnly) {
    openGolden();
    press(Qt::Key_Down);
    whenModal([](QDialog& dialog) {
        EXPECT_TRUE(dialog.findChild<QLabel*>("labelHint")->text().contains("in memory only"));
        press(dialog, Qt::Key_Escape);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    press(Qt::Key_F1);
    EXPECT_TRUE(find<QDialog>("form_syntax")
                    ->findChild<QTextBrowser*>("textSyntax")
                    ->toPlainText()
                    .contains("in memory only"));
}

TEST_F(SearchControlTest, KeywordsAreAddedOverTheWholeSelection) {
    openGolden();
    search("ext:jpg medium:1");
    press(Qt::Key_Down);
    press(Qt::Key_A, Qt::ControlModifier);
    whenModal([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>("labelEntries")->text(), "2 entries");
        QTest::keyClicks(dialog.findChild<QLineEdit*>("inputKeywords"), "sea,holiday");
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    waitUntilDone();
    EXPECT_EQ(storedKeywords("IMG_0001.jpg"), "holiday, beach,sea||");
    EXPECT_EQ(storedKeywords("img_0002.JPG"), "Holiday,sea||");
    trigger("actionUndo");
    waitUntilDone();
    EXPECT_EQ(storedKeywords("IMG_0001.jpg"), "holiday, beach||");
    EXPECT_EQ(storedKeywords("img_0002.JPG"), "Holiday||");
}

TEST_F(SearchControlTest, CancellingTheKeywordsWritesNothing) {
    openGolden();
    const std::string before = folder.read("golden.mdb");
    press(Qt::Key_Down);
    whenModal([](QDialog& dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit*>("inputKeywords"), "x");
        press(dialog, Qt::Key_Escape);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(folder.read("golden.mdb"), before);
}

TEST_F(SearchControlTest, KeywordsThatWouldBeTooLongAreRefusedBeforeAnythingIsWritten) {
    openGolden();
    search("ext:jpg medium:1");
    press(Qt::Key_Down);
    press(Qt::Key_A, Qt::ControlModifier);
    whenModal([](QDialog& dialog) {
        auto* keywords = dialog.findChild<QLineEdit*>("inputKeywords");
        QTest::keyClicks(keywords, QString(250, 'x'));
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    waitUntilDone();
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("keywords"), std::string::npos) << boundary.failures[0];
    expectedFailures = boundary.failures;
    EXPECT_EQ(storedKeywords("IMG_0001.jpg"), "holiday, beach||");
    EXPECT_EQ(storedKeywords("img_0002.JPG"), "Holiday||");
    EXPECT_FALSE(control->findChild<QAction*>("actionUndo")->isEnabled());
}

TEST_F(SearchControlTest, KeywordsAreRefusedWhileAnotherProgramHasTheArchive) {
    openGolden();
    search("medium:1 img_0001");
    press(Qt::Key_Down);
    const std::string before = folder.read("golden.mdb");
    auto other = lockedArchive();
    whenModal([](QDialog& dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit*>("inputNotes1"), "a note");
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_K, Qt::ControlModifier);
    other.reset();
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("in use"), std::string::npos) << boundary.failures[0];
    expectedFailures = boundary.failures;
    EXPECT_EQ(folder.read("golden.mdb"), before);
}

TEST_F(SearchControlTest, AnExportOfAllColumnsHasHiddenOnesTooAndNeutralisesFormulas) {
    base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
    entry.FileName = "=1+1.jpg";
    writeArchive("formulas.mdb", golden::media(), {entry});
    open("formulas.mdb");
    whenModal([&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("textFile")->setText(text(folder.pathOf("all.csv")));
        dialog.findChild<QCheckBox*>("checkShownColumns")->setChecked(false);
        dialog.findChild<QCheckBox*>("checkFormulas")->setChecked(true);
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_E, Qt::ControlModifier);
    waitUntilDone();
    const std::string csv = folder.read("all.csv");
    EXPECT_TRUE(
        csv.starts_with("Name,Medium,Folder,Size,Modified,Type,Keywords,Notes 1,Notes "
                        "2,Created,Copies\r\n'=1+1.jpg,"))
        << csv;
}

TEST_F(SearchControlTest, AnExportWritesTheShownColumnsOfAllHits) {
    openGolden();
    search("ext:txt medium:3 sort:name");
    const std::string file = folder.pathOf("out.csv");
    whenModal([&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("textFile")->setText(text(file));
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_E, Qt::ControlModifier);
    waitUntilDone();
    const std::string csv = folder.read("out.csv");
    EXPECT_EQ(csv.substr(0, csv.find("\r\n")),
              "Name,Medium,Folder,Size,Modified,Type,Keywords,Notes 1,Copies");
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 5);
    EXPECT_NE(csv.find("\"say \"\"hi\"\".txt\",3: Backup 1"), std::string::npos);
    EXPECT_EQ(status(), "4 entries exported to " + file);
}

TEST_F(SearchControlTest, TheExportsFileFollowsTheFormat) {
    openGolden();
    search("cat");
    whenModal([&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("textFile")->setText(text(folder.pathOf("out.csv")));
        dialog.findChild<QComboBox*>("comboFormat")->setCurrentIndex(2);
        EXPECT_TRUE(dialog.findChild<QLineEdit*>("textFile")->text().endsWith("out.json"));
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_E, Qt::ControlModifier);
    waitUntilDone();
    EXPECT_EQ(folder.read("out.json").substr(0, 1), "{");
}

TEST_F(SearchControlTest, EveryLetterOfTheExportWindowLeadsToAField) {
    openGolden();
    whenModal([](QDialog& dialog) {
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
        }
        press(dialog, Qt::Key_Escape);
    });
    press(Qt::Key_E, Qt::ControlModifier);
}

TEST_F(SearchControlTest, AnExportThatCannotBeWrittenIsAFailureOfItsOwn) {
    openGolden();
    search("cat");
    const std::string file = folder.pathOf("missing/out.csv");
    whenModal([&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("textFile")->setText(text(file));
        press(dialog, Qt::Key_Return);
    });
    press(Qt::Key_E, Qt::ControlModifier);
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("out.csv"), std::string::npos);
    expectedFailures = boundary.failures;
    EXPECT_FALSE(control->isBusy());
}

TEST_F(SearchControlTest, ThePickListIsWrittenAsAPdf) {
    openGolden();
    search("ext:jpg");
    const std::string file = folder.pathOf("pick.pdf");
    bool wasShown = false;
    whenModal([&](QDialog& dialog) {
        wasShown = dialog.objectName() == "form_picklist";
        EXPECT_TRUE(dialog.findChild<QTextBrowser*>("textPickList")
                        ->toPlainText()
                        .contains("Medium 1: Holiday 2001, label CD_HOL01"));
        whenModal([&](QDialog& files) {
            files.findChild<QLineEdit*>("fileNameEdit")->setText(text(file));
            files.accept();
        });
        dialog.findChild<QPushButton*>("btnPdf")->click();
        press(dialog, Qt::Key_Escape);
    });
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_TRUE(wasShown);
    const std::string pdf = folder.read("pick.pdf");
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("%%EOF"), std::string::npos);
}

TEST_F(SearchControlTest, ASavedSearchIsFoundInTheMenu) {
    openGolden();
    search("ext:jpg size:>1kb");
    whenModal([](QDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>();
        name->selectAll();
        QTest::keyClicks(name, "My pictures");
        QTest::keyClick(name, Qt::Key_Return);
    });
    press(Qt::Key_S, Qt::ControlModifier);
    search("");
    auto* menu = find<QMenu>("menuSaved");
    emit menu->aboutToShow();
    QAction* saved = nullptr;
    for (QAction* action : menu->actions()) {
        saved = action->text() == "My pictures" ? action : saved;
    }
    ASSERT_NE(saved, nullptr);
    saved->trigger();
    EXPECT_EQ(query(), "ext:jpg size:>1kb");
    EXPECT_NE(folder.read("settings/vdln.ini").find("[searches]"), std::string::npos);
}

// The other tabs

TEST_F(SearchControlTest, DuplicatesAreGroupedAndLeadToTheirQuery) {
    openGolden();
    find<QTabWidget>("tabSearch")->setCurrentIndex(1);
    waitUntilDone();
    auto* groups = find<QTableView>("listDuplicates");
    ASSERT_EQ(groups->model()->rowCount(), 2);
    EXPECT_EQ(groups->model()->index(0, 0).data().toString(), "IMG_0001.jpg");
    EXPECT_EQ(groups->model()->index(0, 5).data().toString(), "4.0 KB");
    groups->setFocus();
    groups->selectRow(0);
    EXPECT_EQ(find<QListWidget>("listPlaces")->count(), 3);
    QTest::keyClick(groups, Qt::Key_Return);
    waitUntilDone();
    EXPECT_EQ(find<QTabWidget>("tabSearch")->currentIndex(), 0);
    EXPECT_EQ(rows(), 3);
}

TEST_F(SearchControlTest, DuplicatesAreSortedBehindIdenticalFoldersAndTheCurrentGroupStays) {
    std::vector<base::ScanEntry> entries;
    const auto add = [&](const char* path, const char* name, const char* kind, int size) {
        base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
        entry.path = path;
        entry.FileName = name;
        entry.Folder = kind;
        entry.Size = size;
        entry.mediaId = path[0] - '0';
        entries.push_back(entry);
    };
    for (const char* path : {"1:", "2:"}) {
        add(path, "same", "folder", 0);
        add((std::string(path) + "\\same").c_str(), "inside.txt", "file", 5);
        add(path, "a.txt", "file", 100);
        add(path, "c.txt", "file", 300);
        add(path, "b.txt", "file", 900);
    }
    writeArchive("folders.mdb", golden::media(), entries);
    open("folders.mdb");
    find<QTabWidget>("tabSearch")->setCurrentIndex(1);
    waitUntilDone();
    auto* groups = find<QTableView>("listDuplicates");
    const auto shown = [&] {
        Names result;
        for (int row = 0; row < groups->model()->rowCount(); ++row) {
            result.push_back(groups->model()->index(row, 0).data().toString().toStdString());
        }
        return result;
    };
    EXPECT_EQ(shown(), (Names{"same", "b.txt", "c.txt", "a.txt"}));
    EXPECT_EQ(groups->model()->index(0, 1).data().toString(), "identical folders");
    groups->selectRow(1);
    groups->sortByColumn(0, Qt::DescendingOrder);
    waitUntilDone();
    EXPECT_EQ(shown(), (Names{"same", "c.txt", "b.txt", "a.txt"}));
    EXPECT_EQ(groups->currentIndex().row(), 2);
    EXPECT_TRUE(find<QListWidget>("listPlaces")->item(0)->text().endsWith("b.txt"));
    groups->sortByColumn(4, Qt::AscendingOrder);
    waitUntilDone();
    EXPECT_EQ(shown(), (Names{"same", "a.txt", "c.txt", "b.txt"}));
}

TEST_F(SearchControlTest, DuplicatesAreNarrowedByTheQuery) {
    openGolden();
    find<QTabWidget>("tabSearch")->setCurrentIndex(1);
    search("ext:pdf");
    auto* groups = find<QTableView>("listDuplicates");
    ASSERT_EQ(groups->model()->rowCount(), 1);
    EXPECT_EQ(groups->model()->index(0, 0).data().toString(), "Straße.pdf");
    find<QComboBox>("comboSame")->setCurrentIndex(1);
    waitUntilDone();
    EXPECT_EQ(groups->model()->rowCount(), 0);
}

TEST_F(SearchControlTest, TheQueryOfDuplicatesOfOneDateNamesItsDay) {
    base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
    entry.FileName = "same & <b>.jpg";
    entry.DateModified = "05/06/2007 08:09:10";
    base::ScanEntry later = entry;
    later.DateModified = "05/07/2007 08:09:10";
    base::ScanEntry undated = entry;
    undated.DateModified.clear();
    writeArchive("dates.mdb", golden::media(), {entry, entry, later, undated, undated});
    open("dates.mdb");
    find<QTabWidget>("tabSearch")->setCurrentIndex(1);
    find<QComboBox>("comboSame")->setCurrentIndex(1);
    waitUntilDone();
    auto* groups = find<QTableView>("listDuplicates");
    ASSERT_EQ(groups->model()->rowCount(), 2);
    EXPECT_EQ(groups->model()->index(0, 0).data(Qt::ToolTipRole).toString(),
              "<span>same &amp; &lt;b&gt;.jpg</span>");
    Names queries;
    for (int row = 0; row < 2; ++row) {
        line()->setText("");
        find<QTabWidget>("tabSearch")->setCurrentIndex(1);
        waitUntilDone();
        groups->setFocus();
        groups->selectRow(row);
        QTest::keyClick(groups, Qt::Key_Return);
        waitUntilDone();
        EXPECT_EQ(rows(), 2) << query();
        queries.push_back(query().substr(query().find(" size:")));
    }
    std::ranges::sort(queries);
    const std::string size = " size:" + std::to_string(entry.Size);
    EXPECT_EQ(queries, (Names{size + " !has:date", size + " date:2007-05-06"}));
}

TEST_F(SearchControlTest, ToolTipsShowATextAsItIs) {
    base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
    entry.FileName = "a & <b>.x&y";
    writeArchive("signs.mdb", golden::media(), {entry});
    open("signs.mdb");
    EXPECT_EQ(table()->model()->index(0, Name).data(Qt::ToolTipRole).toString(),
              "<span>a &amp; &lt;b&gt;.x&amp;y</span>");
    EXPECT_EQ(facet("Extensions", "x&y")->toolTip(0), "<span>x&amp;y</span>");
    find<QTabWidget>("tabSearch")->setCurrentIndex(2);
    EXPECT_EQ(find<QTreeWidget>("listByExtension")->topLevelItem(0)->toolTip(0),
              "<span>x&amp;y</span>");
}

TEST_F(SearchControlTest, EveryFigureOfTheStatisticsIsALinkToWhatItCounts) {
    openGolden();
    find<QTabWidget>("tabSearch")->setCurrentIndex(2);
    int checked = 0;
    for (const char* name : {"listByMedium", "listByExtension", "listByYear", "listBySize"}) {
        line()->setText("");
        waitUntilDone();
        const int count = find<QTreeWidget>(name)->topLevelItemCount();
        for (int i = 0; i < count; ++i) {
            line()->setText("");
            waitUntilDone();
            auto* tree = find<QTreeWidget>(name);
            const QString entries = tree->topLevelItem(i)->text(1);
            emit tree->itemActivated(tree->topLevelItem(i), 0);
            waitUntilDone();
            EXPECT_EQ(QString::number(rows()), entries) << query();
            ++checked;
        }
    }
    EXPECT_GT(checked, 25);
}

TEST_F(SearchControlTest, TheNumbersOfTheStatisticsAreLinksAsWell) {
    openGolden();
    find<QTabWidget>("tabSearch")->setCurrentIndex(2);
    auto* tree = find<QTreeWidget>("listByExtension");
    for (const int column : {0, 1, 2}) {
        line()->setText("");
        waitUntilDone();
        const QTreeWidgetItem* item = tree->topLevelItem(0);
        EXPECT_TRUE(item->font(column).underline());
        const QString entries = item->text(1);
        const QRect place = tree->visualItemRect(item);
        const int x = tree->columnViewportPosition(column) + tree->columnWidth(column) / 2;
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, QPoint(x, place.center().y()));
        waitUntilDone();
        EXPECT_NE(query(), "") << column;
        EXPECT_EQ(QString::number(rows()), entries) << query();
    }
}

// Whoever cannot see it

TEST_F(SearchControlTest, EveryControlHasAnAccessibleName) {
    openGolden();
    for (const QWidget* widget : control->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_")) {
            continue;
        }
        QAccessibleInterface* face =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        ASSERT_NE(face, nullptr);
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
}

TEST_F(SearchControlTest, ResultsAreReadThroughTheAccessibleTable) {
    openGolden();
    search("ext:avi");
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(table());
    ASSERT_NE(face, nullptr);
    ASSERT_NE(face->tableInterface(), nullptr);
    EXPECT_EQ(face->tableInterface()->rowCount(), 1);
    EXPECT_EQ(face->tableInterface()->cellAt(0, Name)->text(QAccessible::Name), "holiday.avi");
}

TEST_F(SearchControlTest, TheWindowMayGoInTheMiddleOfAnything) {
    writeGoldenArchive();
    open();
    type("holi");
    control->setProperty("archivePath", text(folder.pathOf("golden.mdb")));
    trigger("actionReload");
    control.reset();
    QTest::qWait(50);
}

}  // namespace
}  // namespace searchcontrol
