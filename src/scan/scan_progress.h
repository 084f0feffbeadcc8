#pragma once

#include <cstdint>

namespace scan {

/// Told of the progress of a walk after each entry.
class ScanProgress {
  public:
    virtual ~ScanProgress() = default;
    /// `count` is what the destination said it holds. A failure ends the walk, which is also how a
    /// walk is broken off.
    virtual void showScanProgress(std::int64_t count) = 0;
};

}  // namespace scan
