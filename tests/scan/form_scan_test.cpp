#include "scan/form_scan.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <memory>
#include <stdexcept>

#include "tests/scan/scan_fixture.h"
#include "tests/support/recording_boundary.h"
#include "tests/support/scripted_message_box.h"

namespace scan {
namespace {

using base::MessageAnswer;
using Texts = std::vector<std::string>;

const char* const prompt = "Select Drive and Enter User Defined Name above.";
const base::Message notReady{"Drive Not Ready", "Drive is not ready.", base::MessageButtons::Ok};

/// Lets a test look at the windows while a message is shown.
class WatchedMessages : public support::ScriptedMessageBox {
  public:
    MessageAnswer show(const base::Message& message) override {
        if (atShow) {
            atShow();
        }
        return ScriptedMessageBox::show(message);
    }
    std::function<void()> atShow;
};

class FormScanTest : public support::ScanFixture {
  protected:
    FormScanTest() { QLocale::setDefault(QLocale::c()); }
    ~FormScanTest() override {
        delete form.data();
        EXPECT_TRUE(messages.allAnswersUsed());
    }

    void make() {
        form = new FormScan(scan, messages, boundary, [this] { ++unloaded; });
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
    std::string text(const char* label) { return find<QLabel>(label)->text().toStdString(); }
    Texts driveInfo() {
        Texts texts(4);
        for (const QLabel* label : form->findChildren<QLabel*>("displayDriveInfo")) {
            texts.at(static_cast<std::size_t>(label->property("index").toInt())) =
                label->text().toStdString();
        }
        return texts;
    }
    Texts drives() {
        Texts texts;
        for (int i = 0; i < find<QComboBox>("driveScan")->count(); ++i) {
            texts.push_back(find<QComboBox>("driveScan")->itemText(i).toStdString());
        }
        return texts;
    }
    void choose(const char* entry) { find<QComboBox>("driveScan")->setCurrentText(entry); }
    void type(const char* name) {
        find<QLineEdit>("inputMediaName")->clear();
        QTest::keyClicks(find<QLineEdit>("inputMediaName"), name);
    }
    void click(const char* button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    bool canScan() { return find<QPushButton>("btnScan")->isEnabled(); }
    static void deleteWhatIsOver() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Puts more onto the disc until it has that many entries, 200 in each folder.
    void fillDisc(int entries) {
        std::string folder;
        for (int count = 3; count < entries; ++count) {
            if (count % 200 == 3) {
                folder = "d:\\" + std::to_string(count) + "\\";
                machine.disk.addFolder(folder);
            } else {
                machine.disk.addFile(folder + std::to_string(count));
            }
        }
    }

    /// Opens the window, chooses the disc and types a name.
    void prepare() {
        open();
        choose("d: [HOLIDAY]");
        type("photos 2001");
    }

    WatchedMessages messages;
    support::RecordingBoundary boundary;
    int unloaded = 0;
    QPointer<FormScan> form;
};

TEST_F(FormScanTest, HoldsTheControls) {
    open();
    EXPECT_EQ(form->objectName(), "form_scan");
    EXPECT_FALSE(form->isModal());
    EXPECT_EQ(find<QPushButton>("btnScan")->text(), "Scan");
    EXPECT_EQ(find<QPushButton>("btnCancel")->text(), "Cancel");
    EXPECT_TRUE(find<QPushButton>("btnScan")->isDefault());
    EXPECT_NE(find<QGroupBox>("frameScan"), nullptr);
    EXPECT_EQ(form->findChildren<QLabel*>("displayDriveInfo").size(), 4);
    EXPECT_EQ(text("displayMediaId"), "Media ID Number:12");
    EXPECT_EQ(find<QLineEdit>("inputMediaName")->accessibleName(), "Name of the medium");
}

TEST_F(FormScanTest, LoadDisablesScanShowsThePromptAndReadsTheFirstDrive) {
    open();
    EXPECT_FALSE(canScan());
    EXPECT_EQ(text("displayProgress"), prompt);
    EXPECT_EQ(drives(), (Texts{"c: [SYSTEM]", "d: [HOLIDAY]"}));
    EXPECT_EQ(driveInfo(), (Texts{"Disk Label: SYSTEM", "Disk Type: Fixed", "Disk Size: 1,234 Mb",
                                  "Disk Free Space: 234 Mb"}));
    EXPECT_EQ(text("displayArchiveName"), "Scan for current archive: /archives/test.mdb");
    EXPECT_TRUE(find<QComboBox>("driveScan")->isEnabled());
}

TEST_F(FormScanTest, WithoutAnArchiveTheMessageComesFirstAndTheDrivesAreDisabled) {
    state.archiveName.clear();
    make();
    messages.expect(MessageAnswer::Ok);
    messages.atShow = [this] {
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(text("displayProgress"), prompt);
        EXPECT_EQ(text("displayArchiveName"), "");
    };
    form->load();
    EXPECT_EQ(messages.asked, std::vector<base::Message>{notReady});
    EXPECT_FALSE(find<QComboBox>("driveScan")->isEnabled());
    EXPECT_EQ(text("displayArchiveName"),
              "No current archive, go to File menu to make current archive.");
    // Label and letter were read before the archive was asked for.
    EXPECT_EQ(driveInfo(), (Texts{"Disk Label: SYSTEM", "Disk Type: ", "Disk Size: 0 Mb",
                                  "Disk Free Space: 0 Mb"}));
}

TEST_F(FormScanTest, AnArchiveThatCannotBeReadCountsAsADriveThatIsNotReady) {
    state.archiveName = "missing.mdb";
    messages.expect(MessageAnswer::Ok);
    open();
    EXPECT_EQ(messages.asked, std::vector<base::Message>{notReady});
    EXPECT_EQ(text("displayArchiveName"), "Scan for current archive: /archives/missing.mdb");
    EXPECT_TRUE(find<QComboBox>("driveScan")->isEnabled());
}

TEST_F(FormScanTest, AMachineWithoutDrivesIsNotReady) {
    machine.machineDrives.drives.clear();
    messages.expect(MessageAnswer::Ok);
    open();
    EXPECT_TRUE(drives().empty());
    EXPECT_FALSE(canScan());
}

TEST_F(FormScanTest, AMachineWithoutDrivesHasNothingToScan) {
    machine.machineDrives.drives.clear();
    messages.expect(MessageAnswer::Ok);
    open();
    type("x");
    click("btnScan");
    EXPECT_TRUE(boundary.failures.empty());
    EXPECT_TRUE(main.items.empty());
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormScanTest, AnotherDriveIsReadAndShown) {
    open();
    choose("d: [HOLIDAY]");
    EXPECT_EQ(driveInfo(), (Texts{"Disk Label: HOLIDAY", "Disk Type: CDROM", "Disk Size: 650 Mb",
                                  "Disk Free Space: 138 Mb"}));
    EXPECT_EQ(state.currentMedia.driveLetter, "D");
}

TEST_F(FormScanTest, ADriveThatIsNotReadySaysSoAndTheLastGoodValuesStay) {
    open();
    type("x");
    machine.machineDrives.at('d').ready = false;
    messages.expect(MessageAnswer::Ok);
    messages.atShow = [this] { EXPECT_TRUE(canScan()) << "the message comes first"; };
    choose("d: [HOLIDAY]");
    EXPECT_EQ(messages.asked, std::vector<base::Message>{notReady});
    EXPECT_FALSE(canScan());
    EXPECT_EQ(driveInfo()[0], "Disk Label: SYSTEM");
    EXPECT_EQ(driveInfo()[2], "Disk Size: 1,234 Mb");
    EXPECT_EQ(text("displayMediaId"), "Media ID Number:12");
    type("y");
    EXPECT_TRUE(canScan());
}

TEST_F(FormScanTest, ADriveThatIsReadyDoesNotEnableScanOnlyTheNameDoes) {
    open();
    type("x");
    machine.machineDrives.at('d').ready = false;
    messages.expect(MessageAnswer::Ok);
    choose("d: [HOLIDAY]");
    choose("c: [SYSTEM]");
    EXPECT_EQ(driveInfo()[0], "Disk Label: SYSTEM");
    EXPECT_FALSE(canScan());
    EXPECT_EQ(text("displayProgress"), "Ready to Scan. . .");
}

TEST_F(FormScanTest, ANotReadyDriveLeavesTheBareCaptions) {
    open();
    type("x");
    messages.expect(MessageAnswer::Ok);
    form->driveNotReady();
    EXPECT_FALSE(canScan());
    EXPECT_EQ(driveInfo(),
              (Texts{"Disk Label: ", "Disk Type: ", "Disk Size: ", "Disk Free Space: "}));
    form->showDriveInfo();
    EXPECT_EQ(driveInfo()[3], "Disk Free Space: 234 Mb");
}

TEST_F(FormScanTest, EveryChangeOfTheNameEnablesScanAnEmptiedBoxToo) {
    open();
    type("p");
    EXPECT_TRUE(canScan());
    EXPECT_EQ(text("displayProgress"), "Ready to Scan. . .");
    EXPECT_EQ(state.currentMedia.mediaName, "p");
    find<QPushButton>("btnScan")->setEnabled(false);
    QTest::keyClick(find<QLineEdit>("inputMediaName"), Qt::Key_Backspace);
    EXPECT_TRUE(canScan());
    EXPECT_EQ(state.currentMedia.mediaName, "");
    choose("d: [HOLIDAY]");
    click("btnScan");
    EXPECT_EQ(main.status[0], "12: HOLIDAY as User Name:  is a: CDROM");
}

TEST_F(FormScanTest, AnotherDriveEmptiesTheNameWhileTheBoxStillShowsIt) {
    open();
    type("photos 2001");
    choose("d: [HOLIDAY]");
    EXPECT_EQ(find<QLineEdit>("inputMediaName")->text(), "photos 2001");
    EXPECT_TRUE(canScan());
    click("btnScan");
    EXPECT_EQ(state.currentMedia.mediaName, "");
    EXPECT_EQ(main.status[0], "12: HOLIDAY as User Name:  is a: CDROM");
    form->show();
    QTest::keyClick(find<QLineEdit>("inputMediaName"), '!');
    EXPECT_EQ(state.currentMedia.mediaName, "photos 2001!") << "until the box is edited again";
}

TEST_F(FormScanTest, AScanFillsTheMainWindowAndHidesItsOwn) {
    prepare();
    Texts progress;
    events.atEvents = [&] {
        progress.push_back(text("displayProgress"));
        EXPECT_TRUE(form->isVisible());
        EXPECT_TRUE(canScan());
        EXPECT_TRUE(find<QPushButton>("btnCancel")->isEnabled());
        EXPECT_TRUE(main.calls.empty());
    };
    click("btnScan");
    EXPECT_EQ(progress, (Texts{"Scanning:  File 1", "Scanning:  File 2", "Scanning:  File 3"}));
    EXPECT_EQ(main.calls, (Texts{"arrange", "columns", "remove items", "add items", "status 0",
                                 "status 1", "enable save"}));
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
    EXPECT_EQ(main.items[1], (ListItem{"f.txt", "12:", "file", "Text", "", "", "",
                                       "03/07/2001 09:05:00", "04/08/2002 10:06:01", "1234"}));
    EXPECT_EQ(main.status[0], "12: HOLIDAY as User Name: photos 2001 is a: CDROM");
    EXPECT_EQ(main.status[1], "3 files and folders totalling: 512 of 650 total size.");
    EXPECT_EQ(state.viewMode, "scan");
    EXPECT_EQ(state.currentMedia.numberFiles, 3);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(unloaded, 0);
}

TEST_F(FormScanTest, TheProgressTextIsTheLastOneAlsoWhereItWasNotPainted) {
    for (int i = 0; i < 500; ++i) {
        machine.disk.addFile("d:\\a\\" + std::to_string(i));
    }
    prepare();
    int count = 0;
    events.atEvents = [&] {
        EXPECT_EQ(text("displayProgress"), "Scanning:  File " + std::to_string(++count));
        QCoreApplication::processEvents();
    };
    click("btnScan");
    EXPECT_EQ(count, 503);
    EXPECT_TRUE(find<QLabel>("displayProgress")->updatesEnabled());
}

TEST_F(FormScanTest, TheWindowShowsThousandsApartAndTheSummaryDoesNot) {
    open();
    type("x");
    click("btnScan");
    EXPECT_EQ(driveInfo()[2], "Disk Size: 1,234 Mb");
    EXPECT_EQ(main.status[1], "0 files and folders totalling: 1000 of 1234 total size.");
}

TEST_F(FormScanTest, TheSystemSaysHowThousandsAreSetApart) {
    QLocale::setDefault(QLocale(QLocale::German));
    open();
    EXPECT_EQ(driveInfo()[2], "Disk Size: 1.234 Mb");
}

TEST_F(FormScanTest, AnEmptyDriveShowsThePreviousScanAgain) {
    prepare();
    click("btnScan");
    delete form.data();
    open();
    type("empty");
    click("btnScan");
    EXPECT_EQ(state.scanCount, 0);
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
    EXPECT_EQ(main.status[1], "3 files and folders totalling: 1000 of 1234 total size.");
}

TEST_F(FormScanTest, AMediumThatIsGoneBeforeScanGivesThePreviousScanAgain) {
    prepare();
    click("btnScan");
    delete form.data();
    prepare();
    machine.disk.remove("d:\\");
    machine.machineDrives.remove('d');
    click("btnScan");
    EXPECT_TRUE(messages.asked.empty());
    EXPECT_TRUE(boundary.failures.empty());
    EXPECT_EQ(state.scanCount, 0);
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
    EXPECT_EQ(main.status[1], "3 files and folders totalling: 512 of 650 total size.");
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormScanTest, AMediumThatGoesDuringTheScanLeavesWhatWasRead) {
    prepare();
    events.atEvents = [this] {
        if (events.count == 2) {
            machine.disk.remove("d:\\");
            machine.machineDrives.remove('d');
        }
    };
    click("btnScan");
    EXPECT_TRUE(boundary.failures.empty());
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt"}));
    EXPECT_EQ(main.status[1], "2 files and folders totalling: 512 of 650 total size.");
}

TEST_F(FormScanTest, ASecondScanWalksInsideTheFirstAndTheFirstGoesOnBehindIt) {
    prepare();
    events.atEvents = [this] {
        if (events.count == 2) {
            click("btnScan");
            EXPECT_EQ(state.scanCount, 3);
            EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
            EXPECT_FALSE(form->isVisible());
        }
    };
    click("btnScan");
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt", "g.txt"}));
    EXPECT_EQ(state.currentMedia.numberFiles, 4);
    EXPECT_TRUE(boundary.failures.empty());
}

TEST_F(FormScanTest, ADoubleClickOnScanScansInsideTheScan) {
    prepare();
    events.atEvents = [this] {
        if (events.count != 2) {
            return;
        }
        // The second half of a double click comes while the first half walks.
        auto* button = find<QPushButton>("btnScan");
        const QPointF place = button->rect().center();
        QMouseEvent second(QEvent::MouseButtonDblClick, place, button->mapToGlobal(place),
                           Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(button, &second);
        QTest::mouseRelease(button, Qt::LeftButton);
    };
    click("btnScan");
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt", "g.txt"}));
    EXPECT_EQ(events.count, 6);
}

TEST_F(FormScanTest, CancelDuringTheWalkUnloadsTheWindowAndTheWalkGoesOn) {
    prepare();
    events.atEvents = [this] {
        if (events.count == 1) {
            click("btnCancel");
            EXPECT_EQ(unloaded, 1);
            EXPECT_FALSE(form->isVisible());
        }
        deleteWhatIsOver();
        ASSERT_FALSE(form.isNull());
    };
    click("btnScan");
    EXPECT_EQ(events.count, 3);
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
    EXPECT_EQ(state.viewMode, "scan");
    EXPECT_EQ(unloaded, 1);
    deleteWhatIsOver();
    EXPECT_TRUE(form.isNull());
}

TEST_F(FormScanTest, TheCloseBoxDuringTheWalkIsTheSame) {
    prepare();
    events.atEvents = [this] {
        if (events.count == 2) {
            form->close();
            EXPECT_EQ(unloaded, 1);
        }
        deleteWhatIsOver();
        ASSERT_FALSE(form.isNull());
    };
    click("btnScan");
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
    EXPECT_EQ(state.viewMode, "scan");
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FormScanTest, AnotherNameDuringTheWalkIsTheNameOfTheScan) {
    prepare();
    events.atEvents = [this] {
        if (events.count == 1) {
            type("other");
            EXPECT_EQ(text("displayProgress"), "Ready to Scan. . .");
        }
    };
    click("btnScan");
    EXPECT_EQ(main.status[0], "12: HOLIDAY as User Name: other is a: CDROM");
    EXPECT_EQ(text("displayProgress"), "Scanning:  File 3");
}

TEST_F(FormScanTest, AnotherDriveDuringTheWalkIsShownWithTheEntriesOfTheWalk) {
    prepare();
    events.atEvents = [this] {
        if (events.count == 1) {
            base::MediaInfo stored;
            stored.mediaId = 20;
            tables.addMedia(state.currentArchive(), {stored});
            choose("c: [SYSTEM]");
        }
    };
    click("btnScan");
    EXPECT_EQ(main.names(), (Texts{"a", "f.txt", "g.txt"}));
    EXPECT_EQ(main.items[0][1], "12:");
    EXPECT_EQ(main.items[1][1], "21:");
    EXPECT_EQ(state.scanList[3].mediaId, 21);
    EXPECT_EQ(main.status[0], "21: SYSTEM as User Name:  is a: Fixed");
}

TEST_F(FormScanTest, CancelUnloadsTheWindowAndChangesNothingElse) {
    prepare();
    const base::MediaInfo before = state.currentMedia;
    click("btnCancel");
    EXPECT_EQ(unloaded, 1);
    EXPECT_EQ(state.currentMedia, before);
    EXPECT_TRUE(main.calls.empty());
    EXPECT_EQ(state.viewMode, "");
    deleteWhatIsOver();
    EXPECT_TRUE(form.isNull());
}

TEST_F(FormScanTest, CloseBoxAndEscapeAreCancel) {
    open();
    form->close();
    EXPECT_EQ(unloaded, 1);
    deleteWhatIsOver();
    open();
    QTest::keyClick(form.data(), Qt::Key_Escape);
    EXPECT_EQ(unloaded, 2);
    EXPECT_FALSE(form->isVisible());
    deleteWhatIsOver();
    EXPECT_TRUE(form.isNull());
}

TEST_F(FormScanTest, TheReturnKeyScans) {
    prepare();
    QTest::keyClick(find<QLineEdit>("inputMediaName"), Qt::Key_Return);
    EXPECT_EQ(main.names().size(), 3U);
}

TEST_F(FormScanTest, The32768thEntryEndsTheScanWhereItStands) {
    fillDisc(32768);
    prepare();
    click("btnScan");
    ASSERT_EQ(boundary.failures.size(), 1U);
    EXPECT_NE(boundary.failures[0].find("32,767"), std::string::npos);
    EXPECT_NE(boundary.failures[0].find("vdln scan"), std::string::npos);
    EXPECT_EQ(text("displayProgress"), "Scanning:  File 32767");
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(main.calls.empty());
    EXPECT_EQ(state.viewMode, "");
    EXPECT_EQ(state.scanCount, 32768);
    EXPECT_TRUE(find<QLabel>("displayProgress")->updatesEnabled());
}

TEST_F(FormScanTest, OneEntryLessIsAWholeScan) {
    fillDisc(32767);
    prepare();
    click("btnScan");
    EXPECT_TRUE(boundary.failures.empty());
    EXPECT_EQ(main.items.size(), 32767U);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormScanTest, AFailureOfTheWalkIsNotCaughtHere) {
    machine.disk.at("d:\\f.txt").size = 0x8000'0000'0000'0000;
    prepare();
    click("btnScan");
    EXPECT_EQ(boundary.failures.size(), 1U);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(main.calls.empty());
}

TEST_F(FormScanTest, DrivesThatComeAreListedWhenTheListIsOpened) {
    open();
    machine.machineDrives.add('e', "CARD", 1);
    find<QComboBox>("driveScan")->showPopup();
    EXPECT_EQ(drives(), (Texts{"c: [SYSTEM]", "d: [HOLIDAY]", "e: [CARD]"}));
    find<QComboBox>("driveScan")->hidePopup();
    EXPECT_EQ(state.currentMedia.mediaLabel, "SYSTEM");
}

TEST_F(FormScanTest, DrivesThatComeAreListedWhenTheUserComesBack) {
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.data()));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    machine.machineDrives.add('e', "CARD", 1);
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.data()));
    EXPECT_EQ(drives().size(), 3U);
}

TEST_F(FormScanTest, DrivesThatComeAndGoAreSeenWhileTheWindowIsShown) {
    open();
    machine.machineDrives.add('e', "CARD", 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return drives().size() == 3; }));
    machine.machineDrives.remove('e');
    EXPECT_TRUE(QTest::qWaitFor([this] { return drives().size() == 2; }));
}

TEST_F(FormScanTest, AnotherMediumInTheChosenDriveTakesThePlaceOfTheFormer) {
    prepare();
    machine.machineDrives.at('d').label = "OTHER";
    find<QComboBox>("driveScan")->showPopup();
    find<QComboBox>("driveScan")->hidePopup();
    EXPECT_EQ(drives(), (Texts{"c: [SYSTEM]", "d: [OTHER]"}));
    EXPECT_EQ(find<QComboBox>("driveScan")->currentText(), "d: [OTHER]");
    EXPECT_EQ(state.currentMedia.mediaName, "photos 2001");
    auto* list = find<QComboBox>("driveScan");
    list->showPopup();
    emit list->activated(list->currentIndex());
    list->hidePopup();
    EXPECT_EQ(state.currentMedia.mediaLabel, "OTHER");
}

TEST_F(FormScanTest, AChosenDriveStaysChosenWhenItIsGone) {
    prepare();
    machine.machineDrives.remove('d');
    machine.machineDrives.add('e', "CARD", 1);
    find<QComboBox>("driveScan")->showPopup();
    find<QComboBox>("driveScan")->hidePopup();
    EXPECT_EQ(drives(), (Texts{"c: [SYSTEM]", "d: [HOLIDAY]", "e: [CARD]"}));
    EXPECT_EQ(find<QComboBox>("driveScan")->currentText(), "d: [HOLIDAY]");
    EXPECT_EQ(state.currentMedia.mediaName, "photos 2001");
    choose("c: [SYSTEM]");
    find<QComboBox>("driveScan")->showPopup();
    find<QComboBox>("driveScan")->hidePopup();
    EXPECT_EQ(drives(), (Texts{"c: [SYSTEM]", "e: [CARD]"}));
}

TEST_F(FormScanTest, ADriveThatWasNotReadyIsReadWhenItIsChosenOnceMore) {
    machine.machineDrives.at('c').ready = false;
    messages.expect(MessageAnswer::Ok);
    open();
    machine.machineDrives.at('c').ready = true;
    auto* list = find<QComboBox>("driveScan");
    const auto chooseAgain = [&] {
        list->showPopup();
        emit list->activated(list->currentIndex());
        list->hidePopup();
    };
    chooseAgain();
    EXPECT_EQ(driveInfo()[0], "Disk Label: SYSTEM");
    // One that was ready is as it was, with the name that was typed.
    type("x");
    chooseAgain();
    EXPECT_EQ(state.currentMedia.mediaName, "x");
}

TEST_F(FormScanTest, ADriveThatIsNotReadySaysSoOnceWhenItIsChosenWithTheKeys) {
    machine.machineDrives.at('d').ready = false;
    open();
    messages.expect(MessageAnswer::Ok);
    QTest::keyClick(find<QComboBox>("driveScan"), Qt::Key_Down);
    EXPECT_EQ(messages.asked.size(), 1U);
}

}  // namespace
}  // namespace scan
