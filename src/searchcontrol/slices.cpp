#include "searchcontrol/slices.h"

#include <utility>

#include "base/event_boundary.h"

namespace searchcontrol {

Slices::Slices(base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), boundary_(boundary) {
    timer_.setInterval(0);
    timer_.callOnTimeout(this, &Slices::doPiece);
}

void Slices::start(Step step) {
    step_ = std::move(step);
    timer_.start();
}

void Slices::startNow(Step step) {
    start(std::move(step));
    doPiece();
}

void Slices::stop() {
    timer_.stop();
    step_ = nullptr;
}

void Slices::doPiece() {
    // Stopped while the piece runs: a message may let events come meanwhile, and the piece itself
    // may begin the next work.
    timer_.stop();
    const Step step = std::exchange(step_, nullptr);
    bool isDone = true;
    boundary_.run([&] { isDone = step(search::Budget(length)); });
    if (!isDone && !step_) {
        start(step);
    }
}

}  // namespace searchcontrol
