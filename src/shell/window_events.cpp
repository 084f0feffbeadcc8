#include "shell/window_events.h"

#include <QCoreApplication>

#include "shell/end_of_program.h"

namespace shell {

void WindowEvents::runPendingEvents() {
    QCoreApplication::processEvents();
    if (end_.isRequested()) {
        throw EndOfProgram();
    }
}

}  // namespace shell
