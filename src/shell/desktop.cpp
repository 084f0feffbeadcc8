#include "shell/desktop.h"

#include <QApplication>
#include <QWindow>

#include "archive/makedb.h"
#include "keywords/form_keywords.h"
#include "keywords/initkeywords.h"
#include "open/form_open.h"
#include "platform/platform.h"
#include "shell/form_about.h"
#include "shell/form_flashloading.h"
#include "shell/form_main.h"
#include "shell/form_progress.h"
#include "shell/form_splash.h"
#include "shell/keyword_columns.h"
#include "shell/workspace.h"

namespace shell {

namespace {

void bringToFront(QWidget& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

Desktop::Desktop(DesktopParts parts)
    : parts_(std::move(parts)),
      movies_(parts_.platform.shell()),
      choice_(
          parts_.state, parts_.platform.shell(), parts_.platform.privateProfile(), parts_.messages,
          [this](const base::ArchiveLocation& archive) {
              return archive::createArchive(parts_.engine, archive);
          },
          openCommands()) {}

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
    }
    bringToFront(*splash_);
}

void Desktop::showOpenWindow() {
    if (!open_) {
        createOpenWindow();
        return;
    }
    bringToFront(*open_);
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
    keepOpenWindowInFront();
}

void Desktop::createMainWindow() {
    MainCommands commands;
    commands.openArchive = [this] { showOpenWindow(); };
    commands.exitProgram = [this] { endProgram(); };
    commands.showKeywords = [this] { showKeywords(); };
    commands.showAbout = [this] { showAbout(); };
    commands.createLoadingWindow = [this] { loading(); };
    main_ = std::make_unique<FormMain>(parts_.state, parts_.platform.shell(), parts_.boundary,
                                       help_, std::move(commands));
}

/// Not every window system lets a program raise its windows; all of them keep one that belongs to
/// another in front of it.
void Desktop::keepOpenWindowInFront() {
    if (open_ && main_->windowHandle() != nullptr) {
        open_->winId();
        open_->windowHandle()->setTransientParent(main_->windowHandle());
    }
}

/// How far it is, is shown in front of the main window, in its middle.
void Desktop::collectKeywords() {
    FormProgress& window = progress();
    if (main_ && main_->windowHandle() != nullptr) {
        window.winId();
        window.windowHandle()->setTransientParent(main_->windowHandle());
        window.adjustSize();
        window.move(main_->frameGeometry().center() - window.rect().center());
    }
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
        about_ = std::make_unique<FormAbout>(parts_.platform.shell());
    }
    bringToFront(*about_);
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
