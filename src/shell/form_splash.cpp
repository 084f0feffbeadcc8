#include "shell/form_splash.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/event_boundary.h"
#include "platform/program_file.h"
#include "shell/movie_player.h"

namespace shell {

FormSplash::FormSplash(platform::ShellServices& shell, MovieOpener& movies,
                       base::EventBoundary& boundary, Commands commands)
    : shell_(shell),
      boundary_(boundary),
      commands_(std::move(commands)),
      flashOverview_(new MoviePlayer(movies, this)) {
    setObjectName("form_splash");
    setWindowTitle("Verdolin");
    flashOverview_->setObjectName("flashOverview");
    flashOverview_->setAccessibleName("What Verdolin does");
    flashOverview_->setMinimumSize(flashOverview_->sizeHint());
    auto* btnStart = new QPushButton("Start", this);
    btnStart->setObjectName("btnStart");
    btnStart->setAutoDefault(true);
    auto* btnExit = new QPushButton("Exit", this);
    btnExit->setObjectName("btnExit");
    btnExit->setAutoDefault(true);
    connect(btnStart, &QPushButton::clicked, this, [this] { boundary_.run([this] { start(); }); });
    connect(btnExit, &QPushButton::clicked, this, [this] { boundary_.run(commands_.exitProgram); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnStart);
    buttons->addWidget(btnExit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(flashOverview_, 1);
    layout->addLayout(buttons);
    btnStart->setFocus();
    initializeFlash();
}

void FormSplash::initializeFlash() {
    flashOverview_->setMovie(platform::programFile(shell_, {"settings", "overview.swf"}));
}

void FormSplash::start() {
    hide();
    try {
        commands_.showOpenWindow();
    } catch (...) {
        // Nothing else can be seen yet: without this window the program would be out of reach.
        show();
        throw;
    }
}

void FormSplash::closeEvent(QCloseEvent* event) {
    event->accept();
    boundary_.run(commands_.exitProgram);
}

}  // namespace shell
