#pragma once

#include <functional>

namespace base {

/// Where failures that nobody handled end. Every window runs its event handlers inside, as no
/// failure may pass through the window system's own code, which would not tidy up on its way.
class EventBoundary {
  public:
    virtual ~EventBoundary() = default;
    /// Runs an event handler. A failure ends it where it stands and is shown; nothing leaves this
    /// function. True when the handler ran to its end.
    virtual bool run(const std::function<void()>& handler) noexcept = 0;
};

}  // namespace base
