#pragma once

#include "base/pending_events.h"

namespace shell {

class ProgramEnd;

/// Lets the window system's waiting events be handled, at every call. Throws EndOfProgram when one
/// of them ended the program.
class WindowEvents : public base::PendingEvents {
  public:
    /// `end` must outlive this.
    explicit WindowEvents(const ProgramEnd& end) : end_(end) {}
    void runPendingEvents() override;

  private:
    const ProgramEnd& end_;
};

}  // namespace shell
