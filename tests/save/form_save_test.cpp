#include "save/form_save.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "base/failure.h"
#include "tests/save/save_fixture.h"
#include "tests/support/recording_boundary.h"

namespace save {
namespace {

using base::MessageAnswer;
using Texts = std::vector<std::string>;

class FormSaveTest : public support::SaveFixture {
  protected:
    ~FormSaveTest() override {
        delete form.data();
        EXPECT_TRUE(messages.allAnswersUsed());
    }

    void make() {
        form = new FormSave(SaveSession(state, engine, data, messages), boundary,
                            [this] { ++unloaded; });
    }
    void open() {
        make();
        form->load();
        form->show();
    }

    template <typename Widget>
    Widget* find(const char* name) {
        auto* widget = form->findChild<Widget*>(name);
        if (widget == nullptr) {
            throw std::logic_error(std::string("there is no ") + name);
        }
        return widget;
    }
    QRadioButton* option(int index) {
        for (QRadioButton* button : form->findChildren<QRadioButton*>("optUpdate")) {
            if (button->property("index").toInt() == index) {
                return button;
            }
        }
        throw std::logic_error("there is no such option");
    }
    std::string text(const char* label) { return find<QLabel>(label)->text().toStdString(); }
    std::string caption() { return find<QGroupBox>("frameSave")->title().toStdString(); }
    Texts media() {
        Texts texts;
        for (int row = 0; row < find<QListWidget>("listMedia")->count(); ++row) {
            texts.push_back(find<QListWidget>("listMedia")->item(row)->text().toStdString());
        }
        return texts;
    }
    void click(QAbstractButton* button) {
        QTest::mouseClick(button, Qt::LeftButton, {}, {8, button->height() / 2});
    }
    void click(const char* button) { click(find<QPushButton>(button)); }
    void clickRow(int row) {
        auto* list = find<QListWidget>("listMedia");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row)).center());
    }
    QProgressBar* bar() { return find<QProgressBar>("progressArchive"); }
    static void deleteWhatIsOver() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    support::RecordingBoundary boundary;
    int unloaded = 0;
    QPointer<FormSave> form;
};

TEST_F(FormSaveTest, HoldsTheControlsWithTheirCaptions) {
    make();
    EXPECT_EQ(form->objectName(), "form_save");
    EXPECT_EQ(form->windowTitle(), "Save to Archive");
    EXPECT_FALSE(form->isModal());
    EXPECT_EQ(caption(), "Current Archive");
    EXPECT_EQ(text("displayArchiving"), "Ready to Archive");
    EXPECT_EQ(option(0)->text(), "New Media Save");
    EXPECT_EQ(option(1)->text(), "Update Existing Media");
    EXPECT_EQ(find<QPushButton>("btnArchive")->text(), "Archive");
    EXPECT_EQ(find<QPushButton>("btnCancel")->text(), "Cancel");
    EXPECT_TRUE(find<QPushButton>("btnArchive")->isDefault());
}

TEST_F(FormSaveTest, LoadShowsMediumArchiveAndItsMedia) {
    storeTwoMedia();
    open();
    EXPECT_EQ(bar()->minimum(), 0);
    EXPECT_EQ(bar()->maximum(), 3);
    EXPECT_EQ(bar()->value(), 1);
    EXPECT_FALSE(bar()->isVisible());
    EXPECT_EQ(text("displayDrive"),
              "Scanned Media is: DISC; your name of: photos 2001 is a: CDROM");
    EXPECT_EQ(caption(), "Current Archive: " + folder.path() + "/test.mdb");
    EXPECT_EQ(media(),
              (Texts{"letters (Fixed)  as MediaID: 3", "music (Removable)  as MediaID: 5"}));
    EXPECT_FALSE(find<QListWidget>("listMedia")->isEnabled());
    EXPECT_TRUE(option(0)->isChecked());
    EXPECT_FALSE(option(1)->isChecked());
}

TEST_F(FormSaveTest, WithoutAnArchiveTheFrameSaysSo) {
    state.archiveName.clear();
    open();
    EXPECT_EQ(caption(), "No Current Archive.  You need to open one.");
    EXPECT_TRUE(media().empty());
    EXPECT_TRUE(find<QPushButton>("btnArchive")->isEnabled());
}

TEST_F(FormSaveTest, ArchiveWithoutAnArchiveFailsAndTheWindowStays) {
    state.archiveName.clear();
    state.archiveFolder.clear();
    open();
    click("btnArchive");
    EXPECT_EQ(boundary.failures, Texts{"no archive is open to store the scan in"});
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(text("displayArchiving"), "Archiving . . .");
}

TEST_F(FormSaveTest, AnAmpersandInTheArchivesNameIsShown) {
    state.archiveName = "you & me.mdb";
    archive::createArchive(engine, state.currentArchive());
    open();
    EXPECT_EQ(caption(), "Current Archive: " + folder.path() + "/you && me.mdb");
    EXPECT_EQ(find<QGroupBox>("frameSave")->accessibleName().toStdString(),
              "Current Archive: " + folder.path() + "/you & me.mdb");
}

TEST_F(FormSaveTest, ALongArchiveNameDoesNotWidenTheWindow) {
    state.archiveName = std::string(200, 'w') + ".mdb";
    archive::createArchive(engine, state.currentArchive());
    open();
    EXPECT_LT(form->minimumSizeHint().width(), 600);
}

TEST_F(FormSaveTest, AnArchiveWithoutMediaListsNothingAndLoadsAllTheSame) {
    open();
    EXPECT_TRUE(media().empty());
    EXPECT_TRUE(option(0)->isChecked());
}

TEST_F(FormSaveTest, TheArchiveIsListedAnewEachTime) {
    storeTwoMedia();
    open();
    tables.addMedia(state.currentArchive(), {medium(6, "L", "third", "Remote")});
    form->initCurrentArchive();
    EXPECT_EQ(media().size(), 3U);
    EXPECT_EQ(media().back(), "third (Remote)  as MediaID: 6");
}

TEST_F(FormSaveTest, AnArchiveThatCannotBeReadEndsTheLoad) {
    state.archiveName = "missing.mdb";
    make();
    EXPECT_THROW(form->load(), base::EngineFailure);
    EXPECT_EQ(caption(), "Current Archive: " + folder.path() + "/missing.mdb");
}

TEST_F(FormSaveTest, BeforeTheFirstScanThereIsNothingToCount) {
    state.scanList = {};
    open();
    EXPECT_EQ(bar()->maximum(), 0);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FormSaveTest, ABarThatHasNothingToCountStandsStillAndEmpty) {
    state.scanList = {};
    open();
    bar()->show();
    QProgressBar empty(form.data());
    empty.setRange(0, 1);
    empty.setValue(0);
    empty.setFormat("");
    empty.setGeometry(bar()->geometry());
    EXPECT_EQ(bar()->text(), "");
    EXPECT_EQ(bar()->grab().toImage(), empty.grab().toImage());
}

TEST_F(FormSaveTest, TheListIsThereForAnUpdateOnly) {
    storeTwoMedia();
    open();
    auto* list = find<QListWidget>("listMedia");
    click(option(1));
    EXPECT_TRUE(list->isEnabled());
    click(option(0));
    EXPECT_FALSE(list->isEnabled());
}

TEST_F(FormSaveTest, ANewMediumIsStoredAndTheWindowGoes) {
    storeTwoMedia();
    open();
    std::vector<int> values;
    events.atEvents = [&] {
        values.push_back(bar()->value());
        EXPECT_TRUE(bar()->isVisible());
        EXPECT_EQ(text("displayArchiving"), "Archiving . . .");
    };
    click("btnArchive");
    EXPECT_EQ(values, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(column("media", "mediaid"), (Texts{"3", "5", "7"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"old", "kept", "old", "a", "b", "c"}));
    EXPECT_EQ(unloaded, 1);
    EXPECT_FALSE(form->isVisible());
    deleteWhatIsOver();
    EXPECT_TRUE(form.isNull());
}

TEST_F(FormSaveTest, AnEmptyScanStoresTheMediumAlone) {
    state.scanList = {};
    open();
    click("btnArchive");
    EXPECT_EQ(column("media", "mediaid"), Texts{"7"});
    EXPECT_TRUE(column("main", "filename").empty());
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormSaveTest, AnUpdateWithoutASelectionAsksForOneAndLeavesBarAndTextAsTheyAre) {
    storeTwoMedia();
    open();
    click(option(1));
    messages.expect(MessageAnswer::Ok);
    click("btnArchive");
    EXPECT_EQ(messages.asked.at(0).title, "Media Selection Required");
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_EQ(text("displayArchiving"), "Archiving . . .");
    EXPECT_EQ(column("main", "filename"), (Texts{"old", "kept", "old"}));
    clickRow(0);
    EXPECT_TRUE(bar()->isVisible());
    click("btnArchive");
    EXPECT_EQ(column("main", "filename"), (Texts{"kept", "a", "b", "c"}));
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormSaveTest, TheFocusAloneSelectsNoMedium) {
    storeTwoMedia();
    open();
    click(option(1));
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.data()));
    find<QListWidget>("listMedia")->setFocus(Qt::TabFocusReason);
    messages.expect(MessageAnswer::Ok);
    click("btnArchive");
    EXPECT_EQ(column("main", "filename"), (Texts{"old", "kept", "old"}));
}

TEST_F(FormSaveTest, AnArchiveWithoutMediaCanOnlyAskForASelection) {
    open();
    click(option(1));
    messages.expect(MessageAnswer::Ok);
    click("btnArchive");
    EXPECT_EQ(messages.asked.size(), 1U);
    EXPECT_TRUE(column("media", "mediaid").empty());
}

TEST_F(FormSaveTest, AnUpdateReplacesTheChosenMedium) {
    storeTwoMedia();
    open();
    click(option(1));
    clickRow(1);
    click("btnArchive");
    EXPECT_EQ(rows("media")[1], (Row{"5", "OTHER", "music", "650", "Removable", "138",
                                     "03/07/2001 09:05:00", "03/07/2001 09:05:00", "3"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"old", "old", "a", "b", "c"}));
    EXPECT_EQ(column("main", "path").back(), "5:\\docs");
    EXPECT_EQ(state.scanList[1].path, "5:\\docs");
}

TEST_F(FormSaveTest, ADeclinedUpdateReplacesTheRecordsAllTheSame) {
    storeTwoMedia();
    open();
    base::MediaInfo other = medium(3, "NEW LABEL", "renamed", "Fixed");
    {
        archive::ArchiveTable table(engine, state.currentArchive(), "media");
        archive::updateMedia(table.rows(), archive::MediaFields(table.rows()), other);
        table.close();
    }
    click(option(1));
    clickRow(0);
    messages.expect(MessageAnswer::No);
    click("btnArchive");
    EXPECT_EQ(column("media", "medialabel")[0], "NEW LABEL");
    EXPECT_EQ(column("main", "filename"), (Texts{"kept", "a", "b", "c"}));
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormSaveTest, CancelCloseBoxAndEscapeWriteNothing) {
    open();
    click("btnCancel");
    EXPECT_EQ(unloaded, 1);
    deleteWhatIsOver();
    EXPECT_TRUE(form.isNull());
    open();
    form->close();
    EXPECT_EQ(unloaded, 2);
    deleteWhatIsOver();
    open();
    QTest::keyClick(form.data(), Qt::Key_Escape);
    EXPECT_EQ(unloaded, 3);
    EXPECT_TRUE(rows("media").empty());
    EXPECT_TRUE(rows("main").empty());
}

TEST_F(FormSaveTest, CancelInTheMiddleOfASaveTakesTheWindowAwayAndTheSaveGoesOn) {
    open();
    events.atEvents = [this] {
        if (events.count == 1) {
            click("btnCancel");
            EXPECT_FALSE(form->isVisible());
        }
        deleteWhatIsOver();
        ASSERT_FALSE(form.isNull());
    };
    click("btnArchive");
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(unloaded, 1);
    deleteWhatIsOver();
    EXPECT_TRUE(form.isNull());
}

TEST_F(FormSaveTest, TheCloseBoxInTheMiddleOfASaveIsTheSame) {
    open();
    events.atEvents = [this] {
        if (events.count == 2) {
            form->close();
        }
    };
    click("btnArchive");
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormSaveTest, ArchiveInTheMiddleOfASaveStoresOnceMore) {
    open();
    events.atEvents = [this] {
        if (events.count == 1) {
            click("btnArchive");
        }
    };
    click("btnArchive");
    EXPECT_TRUE(boundary.failures.empty());
    EXPECT_EQ(column("media", "mediaid"), (Texts{"7", "7"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "a", "b", "c", "b", "c"}));
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormSaveTest, ADoubleClickOnArchiveStoresTwice) {
    open();
    events.atEvents = [this] {
        if (events.count != 1) {
            return;
        }
        auto* button = find<QPushButton>("btnArchive");
        const QPointF place = button->rect().center();
        QMouseEvent second(QEvent::MouseButtonDblClick, place, button->mapToGlobal(place),
                           Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(button, &second);
        QTest::mouseRelease(button, Qt::LeftButton);
    };
    click("btnArchive");
    EXPECT_EQ(column("media", "mediaid"), (Texts{"7", "7"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"a", "a", "b", "c", "b", "c"}));
}

TEST_F(FormSaveTest, AnotherArchiveInTheMiddleOfASaveGetsNothingOfIt) {
    const base::ArchiveLocation first = state.currentArchive();
    const base::ArchiveLocation second{first.folder, "second.mdb"};
    archive::createArchive(engine, second);
    open();
    events.atEvents = [&] { state.archiveName = second.name; };
    click("btnArchive");
    EXPECT_EQ(tables.column(first, "main", "filename"), (Texts{"a", "b", "c"}));
    EXPECT_TRUE(tables.rows(second, "media").empty());
    EXPECT_TRUE(tables.rows(second, "main").empty());
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormSaveTest, AnotherDriveChosenInTheMiddleOfASaveChangesNothingOfIt) {
    open();
    events.atEvents = [this] { state.currentMedia = medium(9, "OTHER", "", "Fixed"); };
    click("btnArchive");
    EXPECT_EQ(column("media", "medialabel"), Texts{"DISC"});
    EXPECT_EQ(column("main", "mediaid"), (Texts{"7", "7", "7"}));
}

TEST_F(FormSaveTest, AScanListThatIsCutInTheMiddleEndsTheSave) {
    open();
    events.atEvents = [this] { state.scanList.growTo(1); };
    click("btnArchive");
    EXPECT_EQ(boundary.failures.size(), 1U);
    EXPECT_EQ(column("main", "filename"), Texts{"a"});
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FormSaveTest, AnArchiveThatAnotherProgramWritesIsRefusedAndTheWindowStays) {
    open();
    const auto elsewhere = platform::createPlatform();
    jet::Engine other(elsewhere->files());
    archive::ArchiveTable table(other, state.currentArchive(), "media");
    archive::addMedia(table.rows(), archive::MediaFields(table.rows()),
                      medium(1, "L", "n", "Fixed"));
    click("btnArchive");
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("test.mdb"), std::string::npos);
    EXPECT_TRUE(form->isVisible());
    table.close();
    click("btnArchive");
    EXPECT_EQ(column("media", "mediaid"), (Texts{"1", "7"}));
    EXPECT_EQ(column("main", "filename").size(), 3U);
}

TEST_F(FormSaveTest, ANameThatDoesNotFitIsRefusedByName) {
    state.currentMedia.mediaName = std::string(256, 'x');
    open();
    click("btnArchive");
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("medianame"), std::string::npos) << boundary.failures[0];
    EXPECT_TRUE(rows("media").empty());
    EXPECT_TRUE(rows("main").empty());
}

}  // namespace
}  // namespace save
