#include "shell/failure_boundary.h"

#include <exception>

#include "shell/end_of_program.h"
#include "shell/failure_report.h"

namespace shell {

bool FailureBoundary::run(const std::function<void()>& handler) noexcept {
    try {
        handler();
        return true;
    } catch (const EndOfProgram&) {
        // The operation has ended with the program.
    } catch (const std::exception& failure) {
        show(failureReport(failure));
    } catch (...) {
        show(unknownFailureReport());
    }
    return false;
}

void FailureBoundary::show(const base::Message& message) noexcept {
    // A handler that fails again and again, such as one that paints, must not pile up messages
    // while the first one is still there.
    if (showing_) {
        return;
    }
    showing_ = true;
    try {
        messages_.show(message);
    } catch (...) {
        // Nothing is left that could show it.
    }
    showing_ = false;
}

}  // namespace shell
