#pragma once

#include <functional>

#include "base/event_boundary.h"
#include "base/message_box.h"

namespace shell {

/// The boundary of the event loop. A failure that nobody handled has ended its event handler where
/// it stood; here it is shown in one message, and the program goes on.
class FailureBoundary : public base::EventBoundary {
  public:
    /// `messages` must outlive this.
    explicit FailureBoundary(base::MessageBox& messages) : messages_(messages) {}

    bool run(const std::function<void()>& handler) noexcept override;

  private:
    void show(const base::Message& message) noexcept;

    base::MessageBox& messages_;
    bool showing_ = false;
};

}  // namespace shell
