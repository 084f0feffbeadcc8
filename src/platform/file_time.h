#pragma once

#include <cstdint>

namespace platform {

/// A moment, as file systems report it: 100-nanosecond steps since 1601-01-01 00:00 (UTC unless an
/// operation says local).
struct FileTime {
    std::uint64_t ticks = 0;

    friend bool operator==(const FileTime&, const FileTime&) = default;
};

/// A moment broken down into calendar fields; month and day count from 1.
struct SystemTime {
    std::uint16_t wYear = 0;
    std::uint16_t wMonth = 0;
    std::uint16_t wDay = 0;
    std::uint16_t wHour = 0;
    std::uint16_t wMinute = 0;
    std::uint16_t wSecond = 0;

    friend bool operator==(const SystemTime&, const SystemTime&) = default;
};

/// Calendar fields of `time` (proleptic Gregorian calendar; no time zone is applied).
SystemTime fileTimeToSystemTime(FileTime time);
/// The way back.
FileTime systemTimeToFileTime(const SystemTime& time);

}  // namespace platform
