#pragma once

#include <QWidget>
#include <functional>

namespace base {
class EventBoundary;
}
namespace platform {
class ShellServices;
}

namespace shell {

class MovieOpener;
class MoviePlayer;

/// What the program shows first. "Start" hands over to the open-archive window and hides this one,
/// which stays hidden for the rest of the run; "Exit" and the close box end the program.
class FormSplash : public QWidget {
  public:
    struct Commands {
        std::function<void()> showOpenWindow;
        std::function<void()> exitProgram;
    };

    /// All but the commands must outlive the window.
    FormSplash(platform::ShellServices& shell, MovieOpener& movies, base::EventBoundary& boundary,
               Commands commands);

    /// Sets the movie that tells what the program does, where the program lies now.
    void initializeFlash();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void start();

    platform::ShellServices& shell_;
    base::EventBoundary& boundary_;
    Commands commands_;
    MoviePlayer* flashOverview_;
};

}  // namespace shell
