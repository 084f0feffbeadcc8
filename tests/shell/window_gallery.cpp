// Draws every window into a folder, to be looked at: window_gallery FOLDER [dark]

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleFactory>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

#include "archive/makedb.h"
#include "base/program_state.h"
#include "jet/engine.h"
#include "keywords/collection_failures.h"
#include "keywords/form_keywords.h"
#include "open/archive_texts.h"
#include "open/form_open.h"
#include "platform/platform.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "shell/application.h"
#include "shell/archive_tree.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/failure_report.h"
#include "shell/form_about.h"
#include "shell/form_flashloading.h"
#include "shell/form_main.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "shell/keyword_columns.h"
#include "shell/pictures.h"
#include "shell/record_list.h"
#include "shell/window_message_box.h"
#include "shell/workspace.h"
#include "tests/archive/archive_fixture.h"
#include "tests/explore/sample_rows.h"
#include "tests/support/dark_palette.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_boundary.h"
#include "tests/support/scripted_file_dialogs.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace shell;

class Gallery {
  public:
    Gallery(std::string folder, Desktop& desktop, support::ScriptedFileDialogs& dialogs,
            base::ProgramState& state, jet::Engine& engine, std::function<void()> openArchive)
        : folder_(std::move(folder)),
          desktop_(desktop),
          dialogs_(dialogs),
          state_(state),
          engine_(engine),
          openArchive_(std::move(openArchive)) {}

    void drawAll() {
        desktop_.showSplash();
        QTest::qWait(3000);
        draw(*desktop_.splash(), "splash");
        desktop_.splash()->findChild<QPushButton*>("btnStart")->click();
        drawOpenWindow();
        draw(*desktop_.mainWindow(), "main-empty");
        drawExploring();
        draw(*desktop_.mainWindow(), "main");
        drawLongTree();
        drawMenus();
        desktop_.mainWindow()->resize(640, 420);
        draw(*desktop_.mainWindow(), "main-small");
        drawScanAndSave();
        drawKeywords();
        drawSmallWindows();
        drawHelp();
        drawMessages();
    }

  private:
    void draw(QWidget& window, const std::string& name) {
        window.show();
        QTest::qWait(150);
        const std::string path = folder_ + "/" + name + ".png";
        if (!window.grab().save(QString::fromStdString(path))) {
            std::cerr << "cannot write " << path << "\n";
        }
    }

    void drawOpenWindow() {
        open::FormOpen& window = *desktop_.openWindow();
        auto* list = window.findChild<QTreeWidget*>("listRecent");
        list->setCurrentItem(list->topLevelItem(1));
        draw(window, "open-recent");
        auto* tabs = window.findChild<QTabBar*>("TabOpen");
        dialogs_.choose("/home/anna/Catalogues/Holiday 2003.mdb");
        tabs->setCurrentIndex(1);
        draw(window, "open-existing");
        dialogs_.cancel();
        tabs->setCurrentIndex(2);
        draw(window, "open-new");
        window.hide();
    }

    void drawExploring() {
        FormMain& main = *desktop_.mainWindow();
        main.setCaption("Verdolin - Holiday 2003.mdb");
        openArchive_();
        main.findChild<QAction*>("mnArchExplore")->trigger();
        draw(main, "main-explored");
        ArchiveTree& tree = *main.workspace().tree();
        clickNode(tree, "1:");
        clickNode(tree, "1:\\Photos");
        RecordList& list = *main.workspace().list();
        main.listScan_ColumnClick(10);
        list.selectionModel()->select(list.records().index(2, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
        main.workspace().status(0)->setText("7: HOLIDAY as User Name: Holiday 2003 is a: CDROM");
        main.workspace().status(1)->setText(
            "1534 files and folders totalling: 512 of 650 total size.");
        tree.setFocus();
    }

    static void clickNode(ArchiveTree& tree, const std::string& key) {
        QTreeWidgetItem* node = tree.node(key);
        if (node->parent() != nullptr) {
            node->parent()->setExpanded(true);
        }
        node->setExpanded(true);
        tree.scrollToItem(node);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(node).center());
        node->setExpanded(true);
    }

    void drawLongTree() {
        ArchiveTree& tree = *desktop_.mainWindow()->workspace().tree();
        tree.expandAll();
        draw(*desktop_.mainWindow(), "main-tree-expanded");
    }

    void drawMenus() {
        for (QMenu* menu : desktop_.mainWindow()->menuBar()->findChildren<QMenu*>()) {
            if (menu->objectName().isEmpty()) {
                continue;  // the bar's own, for what does not fit it
            }
            menu->popup(QPoint(10, 10));
            draw(*menu, "menu-" + menu->objectName().toStdString());
            menu->close();
        }
    }

    void choose(const char* action) {
        desktop_.mainWindow()->findChild<QAction*>(action)->trigger();
    }

    void drawScanAndSave() {
        desktop_.mainWindow()->resize(1000, 660);
        state_.archiveFolder.clear();
        state_.archiveName.clear();
        // Without an archive the drive counts as not ready, which a message says first.
        drawNextMessage("message-not-ready");
        choose("mnuArchScan");
        draw(*desktop_.scanWindow(), "scan-no-archive");
        desktop_.scanWindow()->close();
        choose("mnuArchSave");
        draw(*desktop_.saveWindow(), "save-no-archive");
        desktop_.saveWindow()->close();

        state_.archiveFolder = folder_ + "/A folder with quite a long name, as folders have/";
        state_.archiveName = "Holiday & more 2003.mdb";
        std::filesystem::create_directories(state_.archiveFolder);
        std::filesystem::remove(state_.currentArchive().fullPath());
        archive::createArchive(engine_, state_.currentArchive());
        for (const char* name : {"photos 2001", "letters", "summer in Ærø"}) {
            choose("mnuArchScan");
            desktop_.scanWindow()->findChild<QLineEdit*>("inputMediaName")->setText(name);
            draw(*desktop_.scanWindow(), "scan");
            desktop_.scanWindow()->findChild<QPushButton*>("btnScan")->click();
            choose("mnuArchSave");
            draw(*desktop_.saveWindow(), "save");
            if (desktop_.saveWindow()->findChild<QListWidget*>("listMedia")->count() < 2) {
                desktop_.saveWindow()->findChild<QPushButton*>("btnArchive")->click();
            }
        }
        draw(*desktop_.mainWindow(), "main-scan");
        for (QRadioButton* option :
             desktop_.saveWindow()->findChildren<QRadioButton*>("optUpdate")) {
            option->setChecked(option->property("index").toInt() == 1);
        }
        drawNextMessage("message-selection");
        desktop_.saveWindow()->findChild<QPushButton*>("btnArchive")->click();
        desktop_.saveWindow()->findChild<QListWidget*>("listMedia")->setCurrentRow(1);
        draw(*desktop_.saveWindow(), "save-update");
        desktop_.saveWindow()->close();
    }

    void drawNextMessage(const std::string& name) {
        QTimer::singleShot(200, [this, name] {
            QWidget* box = QApplication::activeModalWidget();
            draw(*box, name);
            box->close();
        });
    }

    void drawSmallWindows() {
        desktop_.showAbout();
        draw(*desktop_.about(), "about");
        desktop_.loading().show();
        QTest::qWait(900);
        draw(desktop_.loading(), "loading");
        FormProgress& progress = desktop_.progress();
        progress.setRange(1, 20000);
        progress.setPosition(7421);
        progress.setText("Initializing Keywords and Notes.  Record 7421 of 20000");
        draw(progress, "progress");
    }

    void drawKeywords() {
        base::ProgramState state;
        support::RecordingBoundary boundary;
        KeywordColumns columns(*desktop_.mainWindow()->workspace().list());
        for (const char* keyword : {"sea", "summer", "sun", "Ærø", "Θάλασσα", "море"}) {
            state.archiveKeywords.append({keyword, "archive"});
        }
        state.archiveNotes.append({"Lent to Peter, who has not given it back yet", "archive"});
        keywords::FormKeywords first(state, columns, boundary, desktop_.mainWindow());
        first.load();
        draw(first, "keywords-nothing-selected");
        first.close();
        state.selectedRecords.growTo(3);
        keywords::FormKeywords window(state, columns, boundary, desktop_.mainWindow());
        window.load();
        draw(window, "keywords");
        auto* combo = window.findChild<QComboBox*>("comboKeywords");
        combo->setFocus();
        QTest::keyClicks(combo->lineEdit(), "S");
        draw(*combo->completer()->popup(), "keywords-offered");
        combo->completer()->popup()->hide();
        combo->showPopup();
        draw(*combo->view()->window(), "keywords-listed");
        combo->hidePopup();
        selectText(window, "comboKeywords", 4, "btnSelectKW");
        selectText(window, "comboKeywords", 0, "btnSelectKW");
        selectText(window, "comboNotes", 0, "btnSelectNote");
        draw(window, "keywords-selected");
        for (int i = 0; i < 20; ++i) {
            selectText(window, "comboKeywords", i % 6, "btnSelectKW");
        }
        draw(window, "keywords-many-selected");
        window.close();
    }

    static void selectText(QWidget& window, const char* name, int index, const char* button) {
        auto* combo = window.findChild<QComboBox*>(name);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
        window.findChild<QPushButton*>(button)->click();
    }

    void drawHelp() {
        desktop_.mainWindow()->findChild<QAction*>("mnuHelpHelp")->trigger();
        if (desktop_.help() == nullptr) {
            std::cerr << "there is no help\n";
            return;
        }
        draw(*desktop_.help(), "help");
        desktop_.help()->findChild<QListWidget*>("listContents")->setCurrentRow(3);
        draw(*desktop_.help(), "help-main");
        desktop_.help()->findChild<QLineEdit*>("inputSearch")->setText("archive erased");
        draw(*desktop_.help(), "help-search");
    }

    void drawMessages() {
        drawMessage(open::eraseQuestion(), "message-erase");
        drawMessage(*open::extensionQuestion("catalog.MDB"), "message-extension");
        drawMessage(open::creationFailedMessage(), "message-creation");
        drawMessage(failureReport(keywords::NothingCollectedFailure(
                        "the archive holds no notes or keywords yet")),
                    "message-no-keywords");
        drawMessage(failureReport(base::OverflowFailure("a number does not fit 16 bits")),
                    "message-failure");
    }

    void drawMessage(const base::Message& message, const std::string& name) {
        drawNextMessage(name);
        WindowMessageBox().show(message);
    }

    std::string folder_;
    Desktop& desktop_;
    support::ScriptedFileDialogs& dialogs_;
    base::ProgramState& state_;
    jet::Engine& engine_;
    std::function<void()> openArchive_;
};

/// An archive with media of every type, one of which has folders and files.
void makeArchive(jet::Engine& engine, const base::ArchiveLocation& archive) {
    using support::file;
    using support::folder;
    using support::medium;
    archive::createArchive(engine, archive);
    support::ArchiveTables tables(engine);
    tables.addMedia(
        archive,
        {medium(1, "Holiday 2003", "HOLIDAY"), medium(2, "Letters", "DISK 12", "Removable"),
         medium(3, "Study", "DATA", "Fixed"), medium(4, "Office share", "\\\\srv\\all", "Remote"),
         medium(5, "Scratch", "", "RAMDisk"), medium(6, "Odd one", "", "UnKnown")});
    std::vector<base::ScanEntry> rows = {folder("1:", "Photos"),
                                         folder("1:\\Photos", "Αθήνα"),
                                         folder("1:\\Photos", "Ærø"),
                                         folder("1:", "Музыка"),
                                         folder("1:\\Photos\\Ærø", "2003-07 From the ferry"),
                                         folder("1:\\Photos\\Ærø\\2003-07 From the ferry", "Kept"),
                                         file("1:", "readme.txt")};
    for (int i = 1; i <= 40; ++i) {
        base::ScanEntry& picture =
            rows.emplace_back(file("1:\\Photos", "IMG_" + std::to_string(2000 + i) + ".JPG"));
        picture.keywords = i % 3 == 0 ? "sea,sun" : "";
        picture.Size = i * 91237;
    }
    tables.addRecords(archive, rows);
}

class GalleryMachine : public support::FakePlatform {
  public:
    GalleryMachine() : real_(platform::createPlatform()) {
        opener = &real_->files();
        fakeShell.folder = VERDOLIN_PROGRAM_FOLDER;
        profile.files[fakeShell.folder + "/settings/vdln.ini"] =
            "[recentarchives]\ncurrent=/home/anna/Catalogues/Holiday 2003.mdb\n"
            "recent1=/home/anna/Catalogues/Letters.mdb\nrecent2=/media/usb/Music.mdb\n"
            "recent3=/home/anna/A folder with quite a long name, as folders have/Study.mdb\n";
        for (const auto& [letter, label] : {std::pair{'c', "SYSTEM"}, {'d', "HOLIDAY"}}) {
            support::FakeDrive& drive = machineDrives.add(letter, label);
            drive.totalBytes = 681'574'400'000;
            drive.totalFree = 123'456'789'012;
        }
        for (int i = 1; i <= 40; ++i) {
            disk.addFile("c:\\Photos\\IMG_" + std::to_string(2000 + i) + ".JPG",
                         static_cast<std::uint64_t>(i) * 91237);
        }
    }

  private:
    std::unique_ptr<platform::Platform> real_;
};

}  // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    if (argc < 2) {
        std::cerr << "window_gallery FOLDER [dark]\n";
        return 2;
    }
    std::filesystem::create_directories(argv[1]);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (argc > 2) {
        QApplication::setPalette(support::darkPalette());
    }
    GalleryMachine machine;
    jet::Engine engine(machine.files());
    const support::TemporaryFolder catalogues;
    base::ProgramState state;
    WindowMessageBox messages;
    FailureBoundary boundary(messages);
    support::ScriptedFileDialogs dialogs;
    Desktop desktop({state, machine, engine, messages, dialogs, boundary, [] {}});
    const base::ArchiveLocation archive{catalogues.path() + "/", "Holiday 2003.mdb"};
    makeArchive(engine, archive);
    Gallery(argv[1], desktop, dialogs, state, engine, [&] {
        state.archiveFolder = archive.folder;
        state.archiveName = archive.name;
    }).drawAll();
    return 0;
}
