#pragma once

#include <array>
#include <cstdint>

#include "platform/file_time.h"

namespace platform::posix {

/// The moment of a Unix time stamp. What a FileTime cannot hold, or what falls outside the years
/// 1601 to 9999 in which dates are written, becomes the nearest moment that does.
FileTime fileTimeFromUnix(std::int64_t seconds, std::uint32_t nanoseconds);

/// Turns moments into local time by the rules that held at each moment, summer time included.
/// Asking the system for every moment would cost more than reading the folder, so the distance from
/// UTC is remembered for quarter hours, in which it does not change; the few in history in which it
/// did are asked anew each time.
class LocalTime {
  public:
    FileTime toLocal(FileTime time);

  private:
    struct Slot {
        std::int64_t quarter = INT64_MIN;
        std::int32_t offset = 0;  ///< seconds east of UTC
        bool changes = false;     ///< the offset is not the same in the whole quarter hour
    };

    std::int32_t offsetAt(std::int64_t unixSeconds);

    std::array<Slot, 1024> slots_;
};

/// Calendar fields of this moment in local time.
SystemTime localCalendarNow();

}  // namespace platform::posix
