#pragma once

#include "platform/file_time.h"

namespace platform {

/// Tells the local time.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual SystemTime localNow() = 0;
};

}  // namespace platform
