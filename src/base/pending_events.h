#pragma once

namespace base {

/// Lets the events that wait for the program's one thread be handled: repaints, clicks, timers. The
/// desktop brings its event loop, the companion the signals it waits for, a test whatever it wants
/// to happen in between.
///
/// Anything may have changed afterwards: shared lists may have been refilled or cut, another
/// archive may be current, the same operation may have run from start to end. A caller holds no
/// reference into shared state across the call.
class PendingEvents {
  public:
    virtual ~PendingEvents() = default;
    virtual void runPendingEvents() = 0;
};

}  // namespace base
