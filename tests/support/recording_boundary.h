#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/event_boundary.h"
#include "base/failure.h"

namespace support {

/// Keeps the texts of the failures that reached it, oldest first.
class RecordingBoundary : public base::EventBoundary {
  public:
    bool run(const std::function<void()>& handler) noexcept override {
        try {
            handler();
            return true;
        } catch (const base::Failure& failure) {
            failures.push_back(failure.text());
            return false;
        }
    }

    std::vector<std::string> failures;
};

}  // namespace support
