#include "shell/desktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QScreen>
#include <QUrl>
#include <QWindow>

#include "archive/makedb.h"
#include "controls/bring_to_front.h"
#include "explore/explorearchive.h"
#include "keywords/form_keywords.h"
#include "keywords/initkeywords.h"
#include "open/form_open.h"
#include "platform/platform.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "search/form_search.h"
#include "search/search.h"
#include "shell/archive_tree.h"
#include "shell/form_about.h"
#include "shell/form_flashloading.h"
#include "shell/form_main.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "shell/keyword_columns.h"
#include "shell/record_list.h"
#include "shell/workspace.h"

namespace shell {

Desktop::Desktop(DesktopParts parts)
    : parts_(std::move(parts)),
      data_(parts_.state, parts_.engine, events_),
      movies_(parts_.platform.shell()),
      choice_(
          parts_.state, parts_.platform.shell(), parts_.platform.privateProfile(), parts_.messages,
          [this](const base::ArchiveLocation& archive) {
              return archive::createArchive(parts_.engine, archive);
          },
          openCommands()),
      scan_(parts_.state, parts_.engine, parts_.platform, events_, scanDisplay_),
      searchLibrary_(searchHost()) {}

Desktop::~Desktop() = default;

open::OpenCommands Desktop::openCommands() {
    open::OpenCommands commands;
    commands.showMainWindow = [this] { showMainWindow(); };
    commands.setMainCaption = [this](const std::string& caption) { setMainCaption(caption); };
    commands.initKeywords = [this] { collectKeywords(); };
    commands.hideProgress = [this] {
        if (progress_) {
            progress_->hide();
        }
    };
    return commands;
}

void Desktop::showSplash() {
    if (!splash_) {
        splash_ = std::make_unique<FormSplash>(
            parts_.platform.shell(), movies_, parts_.boundary,
            FormSplash::Commands{[this] { showOpenWindow(); }, [this] { endProgram(); }});
        splash_->adjustSize();
        placeInMiddle(*splash_);
    }
    controls::bringToFront(*splash_);
}

void Desktop::showOpenWindow() {
    if (!open_) {
        createOpenWindow();
        return;
    }
    controls::bringToFront(*open_);
}

void Desktop::createOpenWindow() {
    open_ = std::make_unique<open::FormOpen>(choice_, parts_.fileDialogs, parts_.messages,
                                             parts_.boundary);
    try {
        open_->load();
    } catch (...) {
        open_.reset();
        throw;
    }
}

void Desktop::showMainWindow() {
    if (!main_) {
        createMainWindow();
    }
    main_->show();
    if (open_) {
        keepInFront(*open_);
    }
}

void Desktop::createMainWindow() {
    MainCommands commands;
    commands.openArchive = [this] { showOpenWindow(); };
    commands.exitProgram = [this] { endProgram(); };
    commands.scanForArchive = [this] { showScanWindow(); };
    commands.saveIntoArchive = [this] { showSaveWindow(); };
    commands.search = [this] { showSearchWindow(); };
    commands.createSearchWindow = [this] { createSearchWindow(); };
    commands.showKeywords = [this] { showKeywords(); };
    commands.showAbout = [this] { showAbout(); };
    commands.createLoadingWindow = [this] { loading(); };
    commands.exploreArchive = [this] { explore_->exploreArchive(); };
    commands.clickNode = [this](const std::string& key) { explore_->clickNode(key); };
    main_ = std::make_unique<FormMain>(parts_.state, parts_.platform.shell(), parts_.boundary,
                                       help_, std::move(commands));
    scanDisplay_.setWindow(*main_);
    createExploring();
}

void Desktop::createExploring() {
    explore::ExploreCommands commands;
    commands.arrangeWorkspace = [this] {
        main_->arrangeWorkspace();
        main_->workspace().tree()->setFocus();
    };
    commands.showLoading = [this] { showLoading(); };
    commands.hideLoading = [this] { loading().hide(); };
    commands.showOpenWindow = [this] { showOpenWindow(); };
    Workspace& workspace = main_->workspace();
    explore_ = std::make_unique<explore::ExploreArchive>(parts_.state, data_, parts_.messages,
                                                         *workspace.tree(), *workspace.list(),
                                                         std::move(commands));
}

void Desktop::showLoading() {
    FormFlashLoading& window = loading();
    placeInMiddle(window);
    window.show();
    window.raise();
}

/// In front of the main window, in its middle; before there is one, in the middle of the screen.
void Desktop::placeInMiddle(QWidget& window) {
    keepInFront(window);
    const QRect around = main_ ? main_->frameGeometry() : window.screen()->availableGeometry();
    QRect place = window.frameGeometry();
    place.moveCenter(around.center());
    window.move(place.topLeft());
}

/// Not every window system lets a program raise its windows; all of them keep one that belongs to
/// another in front of it.
void Desktop::keepInFront(QWidget& window) {
    if (main_ && main_->windowHandle() != nullptr) {
        window.winId();
        window.windowHandle()->setTransientParent(main_->windowHandle());
    }
}

void Desktop::showScanWindow() {
    // One that a scan has hidden shows what was before that scan.
    if (scanWindow_.get() == nullptr || !scanWindow_.get()->isVisible()) {
        createScanWindow();
    }
    controls::bringToFront(*scanWindow_.get());
}

void Desktop::createScanWindow() {
    auto window = std::make_unique<scan::FormScan>(scan_, parts_.messages, parts_.boundary,
                                                   [this] { scanWindow_.letGo(); });
    window->load();
    keepInFront(*window);
    if (scanWindow_.get() != nullptr) {
        scanWindow_.get()->unload();
    }
    scanWindow_.put(std::move(window));
}

void Desktop::showSaveWindow() {
    if (saveWindow_.get() == nullptr) {
        createSaveWindow();
    }
    controls::bringToFront(*saveWindow_.get());
}

void Desktop::createSaveWindow() {
    auto window = std::make_unique<save::FormSave>(
        save::SaveSession(parts_.state, parts_.engine, data_, parts_.messages), parts_.boundary,
        [this] { saveWindow_.letGo(); });
    window->load();
    keepInFront(*window);
    saveWindow_.put(std::move(window));
}

search::SearchHost Desktop::searchHost() {
    return {parts_.boundary,
            parts_.messages,
            parts_.engine,
            parts_.platform,
            [this](const search::FoundEntry& entry) { showEntry(entry); },
            [](const std::string& path) {
                QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
            }};
}

void Desktop::createSearchWindow() {
    if (!search_) {
        search_ =
            std::make_unique<search::FormSearch>([this] { return searchLibrary_.makeControl(); });
    }
}

void Desktop::showSearchWindow() {
    search::showSearch(parts_.state, [this]() -> search::SearchFrame& {
        createSearchWindow();
        return *search_;
    });
}

void Desktop::showEntry(const search::FoundEntry& entry) {
    controls::bringToFront(*main_);
    // A folder is shown by what is in it, as the list holds files only.
    const std::string key = entry.isFolder ? entry.path + "\\" + entry.name : entry.path;
    if (!explore_->showFolder(entry.mediaId, key)) {
        return;
    }
    Workspace& workspace = main_->workspace();
    workspace.tree()->showNode(key);
    workspace.list()->selectRow(entry.isFolder ? std::string() : entry.name);
}

void Desktop::collectKeywords() {
    FormProgress& window = progress();
    window.adjustSize();
    placeInMiddle(window);
    keywords::initKeywords(parts_.state, parts_.engine, events_, window);
}

void Desktop::showKeywords() {
    KeywordColumns columns(*main_->workspace().list());
    keywords::FormKeywords window(parts_.state, columns, parts_.boundary, main_.get());
    window.load();
    window.exec();
}

void Desktop::showAbout() {
    if (!about_) {
        about_ = std::make_unique<FormAbout>(parts_.platform.shell(), parts_.boundary);
        about_->adjustSize();
        placeInMiddle(*about_);
    }
    controls::bringToFront(*about_);
}

FormFlashLoading& Desktop::loading() {
    if (!loading_) {
        loading_ = std::make_unique<FormFlashLoading>(parts_.platform.shell(), movies_);
    }
    return *loading_;
}

FormProgress& Desktop::progress() {
    if (!progress_) {
        progress_ = std::make_unique<FormProgress>();
    }
    return *progress_;
}

void Desktop::setMainCaption(const std::string& caption) {
    if (main_) {
        main_->setCaption(caption);
    }
}

void Desktop::endProgram() {
    end_.request();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        window->hide();
    }
    parts_.leave();
}

}  // namespace shell
