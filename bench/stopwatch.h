#pragma once

#include <chrono>

namespace bench {

/// Seconds since its construction or its last lap.
class Stopwatch {
  public:
    double lap() {
        const auto now = Clock::now();
        const double seconds = std::chrono::duration<double>(now - start_).count();
        start_ = now;
        return seconds;
    }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point start_ = Clock::now();
};

}  // namespace bench
