#include "platform/file_time.h"

#include <chrono>

namespace platform {

namespace {

constexpr std::uint64_t ticksPerSecond = 10'000'000;
constexpr std::uint64_t secondsPerDay = 86'400;

constexpr std::chrono::sys_days epoch = std::chrono::year{1601} / 1 / 1;

}  // namespace

SystemTime fileTimeToSystemTime(FileTime time) {
    const std::uint64_t seconds = time.ticks / ticksPerSecond;
    const std::uint64_t secondOfDay = seconds % secondsPerDay;
    const auto day = epoch + std::chrono::days(static_cast<int>(seconds / secondsPerDay));
    // chrono's years end at 32767, some twenty thousand before those of a FileTime; the calendar
    // repeats every 400 years of 146,097 days.
    constexpr int daysPerCycle = 146'097;
    const int cycles = static_cast<int>((day - epoch).count() / daysPerCycle);
    const std::chrono::year_month_day date(day - std::chrono::days(cycles * daysPerCycle));
    return {static_cast<std::uint16_t>(static_cast<int>(date.year()) + 400 * cycles),
            static_cast<std::uint16_t>(static_cast<unsigned>(date.month())),
            static_cast<std::uint16_t>(static_cast<unsigned>(date.day())),
            static_cast<std::uint16_t>(secondOfDay / 3600),
            static_cast<std::uint16_t>(secondOfDay / 60 % 60),
            static_cast<std::uint16_t>(secondOfDay % 60)};
}

FileTime systemTimeToFileTime(const SystemTime& time) {
    const std::chrono::sys_days day =
        std::chrono::year{time.wYear} / std::chrono::month{time.wMonth} / time.wDay;
    const auto days = static_cast<std::uint64_t>((day - epoch).count());
    const std::uint64_t seconds =
        days * secondsPerDay + time.wHour * 3600ULL + time.wMinute * 60ULL + time.wSecond;
    return {seconds * ticksPerSecond};
}

}  // namespace platform
