#include "controls/passing_window.h"

#include <utility>

#include "base/event_boundary.h"

namespace controls {

class PassingWindow::Use {
  public:
    explicit Use(PassingWindow& window) : window_(window) { ++window_.uses_; }
    ~Use() {
        --window_.uses_;
        window_.deleteWhenUnused();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

  private:
    PassingWindow& window_;
};

PassingWindow::PassingWindow(base::EventBoundary& boundary, std::function<void()> unloaded)
    : boundary_(boundary), afterUnload_(std::move(unloaded)) {}

void PassingWindow::handle(const std::function<void()>& handler) {
    const Use use(*this);
    boundary_.run(handler);
}

void PassingWindow::whileInUse(const std::function<void()>& action) {
    const Use use(*this);
    action();
}

void PassingWindow::reject() {
    handle([this] { cancel(); });
}

void PassingWindow::unload() {
    if (unloaded_) {
        return;
    }
    unloaded_ = true;
    hide();
    if (afterUnload_) {
        afterUnload_();
    }
    deleteWhenUnused();
}

/// Not at once: the event that led here may have come through one of the window's controls. Qt
/// deletes it when control is back in the event loop that delivered that event.
void PassingWindow::deleteWhenUnused() {
    if (unloaded_ && uses_ == 0) {
        deleteLater();
    }
}

}  // namespace controls
