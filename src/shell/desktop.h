#pragma once

#include <functional>
#include <memory>

#include "archive/data.h"
#include "base/event_boundary.h"
#include "base/message_box.h"
#include "base/program_state.h"
#include "open/archive_choice.h"
#include "scan/desktop_scan.h"
#include "shell/end_of_program.h"
#include "shell/help_window.h"
#include "shell/movie_library.h"
#include "shell/scan_display.h"
#include "shell/search_library.h"
#include "shell/system_file_dialogs.h"
#include "shell/window_events.h"
#include "shell/window_place.h"

class QWidget;

namespace explore {
class ExploreArchive;
}
namespace jet {
class Engine;
}
namespace open {
class FormOpen;
}
namespace platform {
class Platform;
}
namespace save {
class FormSave;
}
namespace scan {
class FormScan;
}

namespace search {
class FormSearch;
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
/// wanted and lives until the end, but for the scan window and the save window: these are made for
/// each use.
class Desktop {
  public:
    /// Everything in `parts` must outlive this.
    explicit Desktop(DesktopParts parts);
    ~Desktop();

    void showSplash();
    void showOpenWindow();
    void showMainWindow();
    /// The scan window, or a new one where it has been used or closed.
    void showScanWindow();
    /// The save window, or a new one where there is none.
    void showSaveWindow();
    /// The search window, handed the current archive.
    void showSearchWindow();
    /// An entry that was found: its node in the tree, and its line in the list.
    void showEntry(const search::FoundEntry& entry);
    void showAbout();
    /// Ends the program at once: every window goes, nothing is asked, no settings are written.
    void endProgram();

    // The windows; null until made, but for the last two, which are made when asked for.
    FormSplash* splash() { return splash_.get(); }
    FormMain* mainWindow() { return main_.get(); }
    open::FormOpen* openWindow() { return open_.get(); }
    scan::FormScan* scanWindow() { return scanWindow_.get(); }
    save::FormSave* saveWindow() { return saveWindow_.get(); }
    search::FormSearch* searchWindow() { return search_.get(); }
    FormAbout* about() { return about_.get(); }
    HelpWindow* help() { return help_.window(); }
    FormFlashLoading& loading();
    FormProgress& progress();
    /// For long operations.
    base::PendingEvents& events() { return events_; }

  private:
    void createMainWindow();
    void createOpenWindow();
    void createExploring();
    void showLoading();
    void placeInMiddle(QWidget& window);
    open::OpenCommands openCommands();
    void setMainCaption(const std::string& caption);
    void createScanWindow();
    void createSaveWindow();
    void createSearchWindow();
    search::SearchHost searchHost();
    void keepInFront(QWidget& window);
    void collectKeywords();
    /// Made anew each time; returns when it has been closed.
    void showKeywords();

    DesktopParts parts_;
    ProgramEnd end_;
    WindowEvents events_{end_};
    archive::Data data_;
    MovieLibrary movies_;
    HelpDesk help_;
    open::ArchiveChoice choice_;
    ScanDisplay scanDisplay_;
    scan::DesktopScan scan_;
    SearchLibrary searchLibrary_;

    std::unique_ptr<FormSplash> splash_;
    std::unique_ptr<FormFlashLoading> loading_;
    std::unique_ptr<FormProgress> progress_;
    std::unique_ptr<FormMain> main_;
    std::unique_ptr<open::FormOpen> open_;
    std::unique_ptr<FormAbout> about_;
    WindowPlace<scan::FormScan> scanWindow_;
    WindowPlace<save::FormSave> saveWindow_;
    std::unique_ptr<explore::ExploreArchive> explore_;
    std::unique_ptr<search::FormSearch> search_;
};

}  // namespace shell
