#include "platform/posix/local_time.h"

#include <algorithm>
#include <ctime>

namespace platform::posix {

namespace {

constexpr std::int64_t ticksPerSecond = 10'000'000;
constexpr std::int64_t unixEpochSeconds = 11'644'473'600;  // since 1601
constexpr std::int64_t lastSecond = 265'046'774'399;       // 9999-12-31 23:59:59 since 1601
constexpr std::int64_t secondsPerQuarter = 900;

std::int64_t floorDivided(std::int64_t number, std::int64_t divisor) {
    const std::int64_t quotient = number / divisor;
    return number % divisor < 0 ? quotient - 1 : quotient;
}

std::int32_t askedOffset(std::int64_t unixSeconds) {
    const auto moment = static_cast<std::time_t>(unixSeconds);
    std::tm fields{};
    if (::localtime_r(&moment, &fields) == nullptr) {
        return 0;
    }
    return static_cast<std::int32_t>(fields.tm_gmtoff);
}

}  // namespace

FileTime fileTimeFromUnix(std::int64_t seconds, std::uint32_t nanoseconds) {
    const std::int64_t since1601 =
        std::clamp(seconds, -unixEpochSeconds, lastSecond - unixEpochSeconds) + unixEpochSeconds;
    const std::int64_t ticks = since1601 * ticksPerSecond + nanoseconds / 100;
    return {static_cast<std::uint64_t>(ticks)};
}

std::int32_t LocalTime::offsetAt(std::int64_t unixSeconds) {
    const std::int64_t quarter = floorDivided(unixSeconds, secondsPerQuarter);
    Slot& slot = slots_[static_cast<std::uint64_t>(quarter) % slots_.size()];
    if (slot.quarter != quarter) {
        const std::int64_t start = quarter * secondsPerQuarter;
        slot.quarter = quarter;
        slot.offset = askedOffset(start);
        slot.changes = askedOffset(start + secondsPerQuarter - 1) != slot.offset;
    }
    return slot.changes ? askedOffset(unixSeconds) : slot.offset;
}

FileTime LocalTime::toLocal(FileTime time) {
    const auto ticks = static_cast<std::int64_t>(
        std::min(time.ticks, static_cast<std::uint64_t>(lastSecond * ticksPerSecond)));
    const std::int64_t offset = offsetAt(ticks / ticksPerSecond - unixEpochSeconds);
    const std::int64_t local =
        std::clamp<std::int64_t>(ticks + offset * ticksPerSecond, 0, lastSecond * ticksPerSecond);
    return {static_cast<std::uint64_t>(local)};
}

SystemTime localCalendarNow() {
    const std::time_t now = std::time(nullptr);
    LocalTime local;
    return fileTimeToSystemTime(local.toLocal(fileTimeFromUnix(now, 0)));
}

}  // namespace platform::posix
