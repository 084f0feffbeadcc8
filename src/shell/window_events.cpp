#include "shell/window_events.h"

#include <QCoreApplication>

#include "shell/end_of_program.h"

namespace shell {

void WindowEvents::runPendingEvents() {
    if (Clock::now() >= restUntil_) {
        QCoreApplication::processEvents();
        // From the end of the events, so that slow ones do not come to fill all the time.
        restUntil_ = Clock::now() + shortestRest;
    }
    if (end_.isRequested()) {
        throw EndOfProgram();
    }
}

}  // namespace shell
