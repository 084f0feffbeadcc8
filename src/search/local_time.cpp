#include "search/local_time.h"

#include <array>
#include <chrono>

namespace search {
namespace {

namespace chrono = std::chrono;
constexpr std::int64_t secondsOfDay = 86400;
constexpr chrono::sys_days firstDay = chrono::year(1) / 1 / 1;

/// The number that `count` digits of `text` stand for; -1 where one of them is none.
int digits(std::string_view text, std::size_t start, std::size_t count) {
    int number = 0;
    for (std::size_t i = start; i < start + count; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return -1;
        }
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

bool isTime(const CalendarTime& time) {
    return time.year >= 1 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
           time.day <= daysOfMonth(time.year, time.month) && time.hour >= 0 && time.hour < 24 &&
           time.minute >= 0 && time.minute < 60 && time.second >= 0 && time.second < 60;
}

void put(char* digits, int count, int number) {
    for (char* place = digits + count; place > digits; number /= 10) {
        *--place = static_cast<char>('0' + number % 10);
    }
}

void putTime(char* date, const CalendarTime& time) {
    put(date + 11, 2, time.hour);
    put(date + 14, 2, time.minute);
    put(date + 17, 2, time.second);
}

}  // namespace

int daysOfMonth(int year, int month) {
    const auto last =
        chrono::year(year) / chrono::month(static_cast<unsigned>(month)) / chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

LocalTime localTime(const CalendarTime& time) {
    const chrono::sys_days day = chrono::year(time.year) /
                                 chrono::month(static_cast<unsigned>(time.month)) /
                                 chrono::day(static_cast<unsigned>(time.day));
    return (day - firstDay).count() * secondsOfDay + time.hour * 3600 + time.minute * 60 +
           time.second;
}

CalendarTime calendarTime(LocalTime time) {
    const std::int64_t days = time / secondsOfDay;
    const int seconds = static_cast<int>(time % secondsOfDay);
    const chrono::year_month_day day(firstDay + chrono::days(days));
    return {static_cast<int>(day.year()),
            static_cast<int>(static_cast<unsigned>(day.month())),
            static_cast<int>(static_cast<unsigned>(day.day())),
            seconds / 3600,
            seconds / 60 % 60,
            seconds % 60};
}

std::size_t yearOf(LocalTime time) {
    const chrono::year_month_day day(firstDay + chrono::days(time / secondsOfDay));
    return static_cast<std::size_t>(static_cast<int>(day.year()));
}

LocalTime parseArchiveDate(std::string_view text) {
    if (text.size() != 19 || text[2] != '/' || text[5] != '/' || text[10] != ' ' ||
        text[13] != ':' || text[16] != ':') {
        return unknownTime;
    }
    const CalendarTime time{digits(text, 6, 4),  digits(text, 0, 2),  digits(text, 3, 2),
                            digits(text, 11, 2), digits(text, 14, 2), digits(text, 17, 2)};
    return isTime(time) ? localTime(time) : unknownTime;
}

void appendArchiveDate(LocalTime time, std::string& text) {
    if (time == unknownTime) {
        return;
    }
    const CalendarTime fields = calendarTime(time);
    std::array<char, 20> date{"00/00/0000 00:00:00"};
    put(date.data(), 2, fields.month);
    put(date.data() + 3, 2, fields.day);
    put(date.data() + 6, 4, fields.year);
    putTime(date.data(), fields);
    text.append(date.data(), date.size() - 1);
}

std::string archiveDateText(LocalTime time) {
    std::string text;
    appendArchiveDate(time, text);
    return text;
}

std::string sortableDateText(LocalTime time) {
    if (time == unknownTime) {
        return {};
    }
    const CalendarTime fields = calendarTime(time);
    std::string text = "0000-00-00 00:00:00";
    put(text.data(), 4, fields.year);
    put(text.data() + 5, 2, fields.month);
    put(text.data() + 8, 2, fields.day);
    putTime(text.data(), fields);
    return text;
}

}  // namespace search
