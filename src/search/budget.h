#pragma once

#include <chrono>
#include <stop_token>

namespace search {

/// How long one step of a long work may take. The work looks here every few thousand rows, and
/// comes back, to be taken up again, when the time is over or the caller wants it to stop.
class Budget {
  public:
    /// As long as it takes, or until `stop` asks for the end.
    static Budget unlimited(std::stop_token stop = {}) { return Budget(std::move(stop)); }
    explicit Budget(std::chrono::milliseconds time, std::stop_token stop = {})
        : hasEnd_(true), end_(std::chrono::steady_clock::now() + time), stop_(std::move(stop)) {}

    bool isSpent() const {
        return stop_.stop_requested() || (hasEnd_ && std::chrono::steady_clock::now() >= end_);
    }

  private:
    explicit Budget(std::stop_token stop) : stop_(std::move(stop)) {}

    bool hasEnd_ = false;
    std::chrono::steady_clock::time_point end_{};
    std::stop_token stop_;
};

}  // namespace search
