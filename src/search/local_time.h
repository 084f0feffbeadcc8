#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace search {

/// A local date and time as seconds since 0001-01-01 00:00 of the Gregorian calendar; no time zone
/// is known.
using LocalTime = std::int64_t;

/// The time of an entry whose date the archive does not hold, or not in the usual form. Earlier
/// than every real time.
constexpr LocalTime unknownTime = std::numeric_limits<LocalTime>::min();

struct CalendarTime {
    int year = 1;  ///< 1 to 9999
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend bool operator==(const CalendarTime&, const CalendarTime&) = default;
};

/// The fields must be in their ranges.
LocalTime localTime(const CalendarTime& time);
/// `time` must not be unknownTime.
CalendarTime calendarTime(LocalTime time);
/// calendarTime().year.
std::size_t yearOf(LocalTime time);
int daysOfMonth(int year, int month);

/// The time that a date text of an archive ("mm/dd/yyyy hh:nn:ss") stands for; unknownTime for a
/// text of another form.
LocalTime parseArchiveDate(std::string_view text);
/// The way back; "" for unknownTime.
std::string archiveDateText(LocalTime time);
void appendArchiveDate(LocalTime time, std::string& text);
/// "2019-05-31 18:04:59", which sorts as the time does; "" for unknownTime.
std::string sortableDateText(LocalTime time);

}  // namespace search
