#pragma once

#include <QDialog>
#include <functional>

namespace base {
class EventBoundary;
}

namespace controls {

/// A window that is made for one use and goes for good when that is over. Its handlers may be long
/// operations that let events run, and one of those events may be what closes the window; so it is
/// hidden at once and deleted when the last of its handlers has ended. Until then handlers use it
/// as before, only that nobody sees it.
///
/// Its owner is told when it goes and owns it no longer then, but may delete it where it is left
/// over at the end of the program.
class PassingWindow : public QDialog {
    Q_OBJECT

  public:
    /// Escape and the close box: the same as the window's Cancel button.
    void reject() override;

    /// Hides the window and lets it go. Doing that twice is the same as once.
    void unload();

  protected:
    /// `boundary` must outlive the window. `unloaded` is called once, when the window has gone.
    PassingWindow(base::EventBoundary& boundary, std::function<void()> unloaded);

    /// Runs an event handler inside the boundary.
    void handle(const std::function<void()>& handler);
    /// The same for a part of a handler that is not the window's own; failures pass.
    void whileInUse(const std::function<void()>& action);

    /// What Cancel does.
    virtual void cancel() { unload(); }

  private:
    class Use;

    void deleteWhenUnused();

    base::EventBoundary& boundary_;
    std::function<void()> afterUnload_;
    int uses_ = 0;  // handlers on the stack, one inside the other
    bool unloaded_ = false;
};

}  // namespace controls
