#pragma once

#include <chrono>

#include "base/pending_events.h"

namespace shell {

class ProgramEnd;

/// Lets the window system's waiting events be handled. Throws EndOfProgram when one of them ended
/// the program.
///
/// Long operations ask for every row, of which there may be a hundred thousand in a second, and
/// asking the window system costs more than reading a row. So it is asked again only when a few
/// milliseconds have passed, which nobody who clicks or looks can tell from at once. The first call
/// after a rest always asks.
class WindowEvents : public base::PendingEvents {
  public:
    /// No call asks the window system that comes sooner after the last one that did.
    static constexpr std::chrono::milliseconds shortestRest{4};

    /// `end` must outlive this.
    explicit WindowEvents(const ProgramEnd& end) : end_(end) {}
    void runPendingEvents() override;

  private:
    using Clock = std::chrono::steady_clock;

    const ProgramEnd& end_;
    Clock::time_point restUntil_ = Clock::time_point::min();
};

}  // namespace shell
