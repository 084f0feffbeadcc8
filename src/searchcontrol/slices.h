#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

#include "search/budget.h"

namespace base {
class EventBoundary;
}

namespace searchcontrol {

/// Work that is done piece by piece between the window's events, so that no key press waits longer
/// than one piece. A work that fails ends where it stands; the boundary shows why.
class Slices : public QObject {
    Q_OBJECT

  public:
    /// How long one piece takes.
    static constexpr std::chrono::milliseconds length{10};

    /// Does a piece; true when nothing is left to do.
    using Step = std::function<bool(const search::Budget&)>;

    Slices(base::EventBoundary& boundary, QObject* parent);

    /// Begins a work, in the place of the one before. `step` must not delete this.
    void start(Step step);
    /// The same, but the first piece is done at once.
    void startNow(Step step);
    void stop();
    bool isRunning() const { return timer_.isActive(); }

  private:
    void doPiece();

    base::EventBoundary& boundary_;
    QTimer timer_;
    Step step_;
};

}  // namespace searchcontrol
