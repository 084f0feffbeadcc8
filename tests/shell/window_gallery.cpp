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
#include <QStyleFactory>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

#include "base/program_state.h"
#include "jet/engine.h"
#include "keywords/collection_failures.h"
#include "keywords/form_keywords.h"
#include "open/archive_texts.h"
#include "open/form_open.h"
#include "platform/platform.h"
#include "shell/application.h"
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
#include "tests/support/fake_platform.h"
#include "tests/support/recording_boundary.h"
#include "tests/support/scripted_file_dialogs.h"

namespace {

using namespace shell;

QPalette darkPalette() {
    const QColor window(0x2d, 0x2f, 0x31);
    const QColor base(0x23, 0x25, 0x27);
    const QColor text(0xee, 0xee, 0xee);
    QPalette palette(window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, QColor(0x3a, 0x3d, 0x40));
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x2a, 0x2c, 0x2e));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::Highlight, QColor(0x2b, 0x8f, 0x6c));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xc5, 0xf0));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9a, 0x9a));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    }
    return palette;
}

class Gallery {
  public:
    Gallery(std::string folder, Desktop& desktop, support::ScriptedFileDialogs& dialogs)
        : folder_(std::move(folder)), desktop_(desktop), dialogs_(dialogs) {}

    void drawAll() {
        desktop_.showSplash();
        QTest::qWait(3000);
        draw(*desktop_.splash(), "splash");
        desktop_.splash()->findChild<QPushButton*>("btnStart")->click();
        drawOpenWindow();
        draw(*desktop_.mainWindow(), "main-empty");
        fillWorkspace();
        draw(*desktop_.mainWindow(), "main");
        drawMenus();
        desktop_.mainWindow()->resize(640, 420);
        draw(*desktop_.mainWindow(), "main-small");
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

    void fillWorkspace() {
        FormMain& main = *desktop_.mainWindow();
        main.setCaption("Verdolin - Holiday 2003.mdb");
        main.arrangeWorkspace();
        fillTree(*main.workspace().tree());
        fillList(*main.workspace().list());
        main.workspace().status(0)->setText("7: HOLIDAY as User Name: Holiday 2003 is a: CDROM");
        main.workspace().status(1)->setText(
            "1534 files and folders totalling: 512 of 650 total size.");
    }

    static QTreeWidgetItem* addNode(QTreeWidget& tree, QTreeWidgetItem* parent, const char* text,
                                    const char* image) {
        auto* item = parent == nullptr ? new QTreeWidgetItem(&tree) : new QTreeWidgetItem(parent);
        item->setText(0, text);
        item->setIcon(0, ImageList().image(image));
        return item;
    }

    static void fillTree(QTreeWidget& tree) {
        QTreeWidgetItem* disc = addNode(tree, nullptr, "1: Holiday 2003(HOLIDAY)", "cdrom");
        QTreeWidgetItem* photos = addNode(tree, disc, "Photos", "folderopen");
        addNode(tree, photos, "Αθήνα", "folder");
        addNode(tree, photos, "Ærø", "folder");
        addNode(tree, disc, "Музыка", "folder");
        addNode(tree, nullptr, "2: Letters(DISK 12)", "removable");
        addNode(tree, nullptr, "3: Study(DATA)", "fixed");
        addNode(tree, nullptr, "4: Office share(\\\\srv\\all)", "remote");
        addNode(tree, nullptr, "5: Scratch()", "ramdisk");
        addNode(tree, nullptr, "6: Odd one()", "unknown");
        addNode(tree, nullptr, "A file", "file");
        tree.expandAll();
        tree.setCurrentItem(photos);
    }

    static void fillList(RecordList& list) {
        const char* const headings[] = {"Name",          "Path",    "Type",    "Type",
                                        "Keywords",      "Notes 1", "Notes 2", "Date Created",
                                        "Date Modified", "Size"};
        const double widths[] = {.1, .2, .05, .15, .1, .1, .1, .05, .05, .1};
        for (int column = 1; column <= 10; ++column) {
            list.records().insertColumnAt(column, headings[column - 1]);
            list.header()->resizeSection(column - 1,
                                         static_cast<int>(list.width() * widths[column - 1]));
        }
        for (int i = 1; i <= 40; ++i) {
            list.records().appendRow({"IMG_" + std::to_string(2000 + i) + ".JPG", "1:\\Photos",
                                      "file", "JPEG image", i % 3 == 0 ? "sea,sun" : "", "", "",
                                      "07/14/2003 18:05:11", "07/14/2003 18:05:12",
                                      std::to_string(i * 91237)});
        }
        list.sortBy(9, RecordModel::Order::Descending);
        list.selectionModel()->select(list.records().index(2, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
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
        QTimer::singleShot(200, [this, name] {
            QWidget* box = QApplication::activeModalWidget();
            draw(*box, name);
            box->close();
        });
        WindowMessageBox().show(message);
    }

    std::string folder_;
    Desktop& desktop_;
    support::ScriptedFileDialogs& dialogs_;
};

class GalleryMachine : public support::FakePlatform {
  public:
    GalleryMachine() : real_(platform::createPlatform()) {
        opener = &real_->files();
        fakeShell.folder = VERDOLIN_PROGRAM_FOLDER;
        profile.files[fakeShell.folder + "/settings/vdln.ini"] =
            "[recentarchives]\ncurrent=/home/anna/Catalogues/Holiday 2003.mdb\n"
            "recent1=/home/anna/Catalogues/Letters.mdb\nrecent2=/media/usb/Music.mdb\n"
            "recent3=/home/anna/A folder with quite a long name, as folders have/Study.mdb\n";
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
        QApplication::setPalette(darkPalette());
    }
    GalleryMachine machine;
    jet::Engine engine(machine.files());
    base::ProgramState state;
    WindowMessageBox messages;
    FailureBoundary boundary(messages);
    support::ScriptedFileDialogs dialogs;
    Desktop desktop({state, machine, engine, messages, dialogs, boundary, [] {}});
    Gallery(argv[1], desktop, dialogs).drawAll();
    return 0;
}
