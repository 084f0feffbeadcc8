#pragma once

#include <functional>
#include <memory>

#include "base/event_boundary.h"
#include "base/message_box.h"
#include "base/program_state.h"
#include "open/archive_choice.h"
#include "shell/end_of_program.h"
#include "shell/help_window.h"
#include "shell/movie_library.h"
#include "shell/system_file_dialogs.h"
#include "shell/window_events.h"

namespace jet {
class Engine;
}
namespace open {
class FormOpen;
}
namespace platform {
class Platform;
}

namespace shell {

class FormAbout;
class FormFlashLoading;
class FormMain;
class FormProgress;
class FormSplash;

/// What the desktop asks of the world around it. A test brings its own.
struct DesktopParts {
    base::ProgramState& state;
    platform::Platform& platform;
    jet::Engine& engine;
    base::MessageBox& messages;
    open::FileDialogs& fileDialogs;
    base::EventBoundary& boundary;
    /// Leaves the event loop.
    std::function<void()> leave;
};

/// The program's windows and what leads from one to the other. Each window is made when it is first
/// wanted and lives until the end.
class Desktop {
  public:
    /// Everything in `parts` must outlive this.
    explicit Desktop(DesktopParts parts);
    ~Desktop();

    void showSplash();
    void showOpenWindow();
    void showMainWindow();
    void showAbout();
    /// Ends the program at once: every window goes, nothing is asked, no settings are written.
    void endProgram();

    // The windows; null until made, but for the last two, which are made when asked for.
    FormSplash* splash() { return splash_.get(); }
    FormMain* mainWindow() { return main_.get(); }
    open::FormOpen* openWindow() { return open_.get(); }
    FormAbout* about() { return about_.get(); }
    HelpWindow* help() { return help_.window(); }
    FormFlashLoading& loading();
    FormProgress& progress();
    /// For long operations.
    base::PendingEvents& events() { return events_; }

  private:
    void createMainWindow();
    void createOpenWindow();
    open::OpenCommands openCommands();
    void setMainCaption(const std::string& caption);
    void keepOpenWindowInFront();
    void collectKeywords();
    /// Made anew each time; returns when it has been closed.
    void showKeywords();

    DesktopParts parts_;
    ProgramEnd end_;
    WindowEvents events_{end_};
    MovieLibrary movies_;
    HelpDesk help_;
    open::ArchiveChoice choice_;

    std::unique_ptr<FormSplash> splash_;
    std::unique_ptr<FormFlashLoading> loading_;
    std::unique_ptr<FormProgress> progress_;
    std::unique_ptr<FormMain> main_;
    std::unique_ptr<open::FormOpen> open_;
    std::unique_ptr<FormAbout> about_;
};

}  // namespace shell
