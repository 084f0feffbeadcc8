#include "search/query_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "search/text_fold.h"

namespace search {
namespace {

using State = SpanValue::State;

SpanValue complete(Span span) { return {State::Complete, span}; }
SpanValue complete(std::int64_t number) { return complete(Span{number, number}); }
SpanValue unfinished() { return {State::Unfinished, std::nullopt}; }
SpanValue senseless() { return {State::Senseless, std::nullopt}; }

std::int64_t before(std::int64_t number) { return number == Span::lowest ? number : number - 1; }
std::int64_t after(std::int64_t number) { return number == Span::highest ? number : number + 1; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool areDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isDigit);
}

/// The number of at most 18 digits.
std::optional<std::int64_t> wholeNumber(std::string_view text) {
    if (!areDigits(text) || text.size() > 18) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (const char c : text) {
        number = number * 10 + (c - '0');
    }
    return number;
}

// A comparison or a range of values that `read` understands.

struct Comparison {
    std::string_view sign;
    Span (*span)(const Span&);
};
constexpr std::array<Comparison, 5> comparisons{{
    {">=",
     [](const Span& value) {
         return Span{value.first, Span::highest};
     }},
    {"<=",
     [](const Span& value) {
         return Span{Span::lowest, value.last};
     }},
    {">",
     [](const Span& value) {
         return Span{after(value.last), Span::highest};
     }},
    {"<",
     [](const Span& value) {
         return Span{Span::lowest, before(value.first)};
     }},
    {"=", [](const Span& value) { return value; }},
}};

template <typename Read>
SpanValue readRange(std::string_view left, std::string_view right, Read read) {
    if (left.empty() && right.empty()) {
        return unfinished();
    }
    SpanValue first = left.empty() ? complete(Span{}) : read(left);
    if (!first.span || first.state == State::Senseless) {
        return first;
    }
    SpanValue last = right.empty() ? complete(Span{}) : read(right);
    if (!last.span) {
        return last.state == State::Senseless
                   ? last
                   : SpanValue{State::Unfinished, Span{first.span->first, Span::highest}};
    }
    Span span{first.span->first, last.span->last};
    if (!left.empty() && !right.empty() && span.first > span.last) {
        span = {last.span->first, first.span->last};
    }
    return {std::max(first.state, last.state), span};
}

template <typename Read>
SpanValue readSpan(std::string_view text, Read read) {
    for (const Comparison& comparison : comparisons) {
        if (text.starts_with(comparison.sign)) {
            text.remove_prefix(comparison.sign.size());
            SpanValue value = text.empty() ? unfinished() : read(text);
            if (value.span) {
                value.span = comparison.span(*value.span);
            }
            return value;
        }
    }
    const std::size_t dots = text.find("..");
    if (dots != std::string_view::npos) {
        return readRange(text.substr(0, dots), text.substr(dots + 2), read);
    }
    return text.empty() ? unfinished() : read(text);
}

// Sizes

struct Unit {
    std::string_view name;
    int bits;
};
constexpr std::array<Unit, 10> units{{{"", 0},
                                      {"b", 0},
                                      {"k", 10},
                                      {"kb", 10},
                                      {"m", 20},
                                      {"mb", 20},
                                      {"g", 30},
                                      {"gb", 30},
                                      {"t", 40},
                                      {"tb", 40}}};

SpanValue readSize(std::string_view text) {
    std::size_t end = 0;
    while (end < text.size() && (isDigit(text[end]) || text[end] == '.' || text[end] == ',')) {
        ++end;
    }
    const std::size_t point = std::min(text.find_first_of(".,"), end);
    const std::string_view whole = text.substr(0, point);
    const std::string_view part = point < end ? text.substr(point + 1, end - point - 1) : "";
    const auto* const unit = std::ranges::find(units, text.substr(end), &Unit::name);
    if (unit == units.end() || !areDigits(whole) || (!part.empty() && !areDigits(part))) {
        return senseless();
    }
    double number = 0;
    for (const char c : whole) {
        number = number * 10 + (c - '0');
    }
    double digit = 0.1;
    for (const char c : part) {
        number += digit * (c - '0');
        digit /= 10;
    }
    const double bytes = std::round(std::ldexp(number, unit->bits));
    // Nothing is larger than that.
    constexpr double most = 9e18;
    const SpanValue value = complete(static_cast<std::int64_t>(std::min(bytes, most)));
    const bool isOpen = point < end && part.empty();
    return isOpen ? SpanValue{State::Unfinished, value.span} : value;
}

SpanValue readNumber(std::string_view text) {
    const auto number = wholeNumber(text);
    return number ? complete(*number) : senseless();
}

// Dates

constexpr std::int64_t secondsOfDay = 86400;

LocalTime startOfDay(LocalTime time) { return time - time % secondsOfDay; }

Span days(LocalTime first, std::int64_t count) { return {first, first + count * secondsOfDay - 1}; }

Span month(int year, int number) {
    return days(localTime({year, number, 1}), daysOfMonth(year, number));
}

Span year(int number) {
    return {localTime({number, 1, 1}), localTime({number, 12, 31, 23, 59, 59})};
}

/// The month so many months before that of `now`.
std::pair<int, int> monthBefore(LocalTime now, std::int64_t months) {
    const CalendarTime time = calendarTime(now);
    const std::int64_t count =
        std::max<std::int64_t>(12, time.year * std::int64_t{12} + time.month - 1 - months);
    return {static_cast<int>(count / 12), static_cast<int>(count % 12) + 1};
}

/// The same day so many months before, or the last one of a shorter month.
LocalTime dayMonthsBefore(LocalTime now, std::int64_t months) {
    const auto [inYear, inMonth] = monthBefore(now, months);
    const int day = std::min(calendarTime(now).day, daysOfMonth(inYear, inMonth));
    return localTime({inYear, inMonth, day});
}

/// Weeks begin on Monday, as the first day of all did.
LocalTime startOfWeek(LocalTime now) { return now - now % (7 * secondsOfDay); }

SpanValue readNamedSpan(std::string_view text, LocalTime now) {
    const CalendarTime time = calendarTime(now);
    const LocalTime today = startOfDay(now);
    const auto [lastYear, lastMonth] = monthBefore(now, 1);
    const std::array<std::pair<std::string_view, Span>, 8> names{
        {{"today", days(today, 1)},
         {"yesterday", days(today - secondsOfDay, 1)},
         {"thisweek", days(startOfWeek(now), 7)},
         {"thismonth", month(time.year, time.month)},
         {"thisyear", year(time.year)},
         {"lastweek", days(startOfWeek(now) - 7 * secondsOfDay, 7)},
         {"lastmonth", month(lastYear, lastMonth)},
         {"lastyear", year(std::max(1, time.year - 1))}}};
    bool mayBecomeOne = false;
    for (const auto& [name, span] : names) {
        if (name == text) {
            return complete(span);
        }
        mayBecomeOne = mayBecomeOne || name.starts_with(text);
    }
    return mayBecomeOne ? unfinished() : senseless();
}

/// "last90days" and its like: so many days, weeks, months or years up to the end of today.
SpanValue readLastSpan(std::string_view text, LocalTime now) {
    text.remove_prefix(4);
    const auto isLetter = std::ranges::find_if_not(text, isDigit);
    const auto end = static_cast<std::size_t>(isLetter - text.begin());
    const auto count = wholeNumber(text.substr(0, std::min<std::size_t>(end, 9)));
    const std::string_view unit = text.substr(end);
    const LocalTime today = startOfDay(now);
    const LocalTime last = today + secondsOfDay - 1;
    if (!count || end > 9) {
        return senseless();
    }
    const auto isUnit = [&](std::string_view name) {
        return unit == name || unit == name.substr(0, name.size() - 1);
    };
    if (isUnit("days") || isUnit("weeks")) {
        const std::int64_t number = *count * (isUnit("weeks") ? 7 : 1);
        return complete(Span{std::max<LocalTime>(0, today - number * secondsOfDay), last});
    }
    if (isUnit("months") || isUnit("years")) {
        return complete(Span{dayMonthsBefore(now, *count * (isUnit("years") ? 12 : 1)), last});
    }
    for (const std::string_view name : {"days", "weeks", "months", "years"}) {
        if (name.starts_with(unit)) {
            return unfinished();
        }
    }
    return senseless();
}

/// The parts of a date between "-" or "/".
std::vector<std::string_view> dateParts(std::string_view text) {
    std::vector<std::string_view> parts(1);
    for (std::size_t start = 0, i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == '-' || text[i] == '/') {
            parts.back() = text.substr(start, i - start);
            start = i + 1;
            if (i < text.size()) {
                parts.emplace_back();
            }
        }
    }
    return parts;
}

SpanValue readCalendarDate(std::string_view text) {
    const std::vector<std::string_view> parts = dateParts(text);
    std::array<int, 3> numbers{0, 0, 0};
    std::size_t count = 0;
    for (; count < parts.size() && !parts[count].empty(); ++count) {
        const std::size_t digits = count == 0 ? 4 : 2;
        if (count == 3 || !areDigits(parts[count]) || parts[count].size() > digits) {
            return senseless();
        }
        numbers[count] = static_cast<int>(*wholeNumber(parts[count]));
    }
    if (count == 0 || parts.size() > count + 1) {
        return senseless();
    }
    if (parts[0].size() < 4) {
        return parts.size() == 1 ? unfinished() : senseless();
    }
    // A lone "0" is the first digit of a month or day.
    if (count > 1 && numbers[count - 1] == 0 && parts[count - 1].size() == 1) {
        --count;
    }
    const bool isOpen = parts.size() > count;
    const auto [inYear, inMonth, day] = numbers;
    if (inYear < 1 || (count > 1 && (inMonth < 1 || inMonth > 12)) ||
        (count > 2 && (day < 1 || day > daysOfMonth(inYear, inMonth)))) {
        return senseless();
    }
    const Span span = count == 1   ? year(inYear)
                      : count == 2 ? month(inYear, inMonth)
                                   : days(localTime({inYear, inMonth, day}), 1);
    return {isOpen ? State::Unfinished : State::Complete, span};
}

SpanValue readDate(std::string_view text, LocalTime now) {
    if (isDigit(text.front())) {
        return readCalendarDate(text);
    }
    if (text.starts_with("last") && text.size() > 4 && isDigit(text[4])) {
        return readLastSpan(text, now);
    }
    return readNamedSpan(text, now);
}

}  // namespace

SpanValue readSizeSpan(std::string_view text) { return readSpan(foldedText(text), readSize); }

SpanValue readNumberSpan(std::string_view text) { return readSpan(text, readNumber); }

SpanValue readDateSpan(std::string_view text, LocalTime now) {
    return readSpan(foldedText(text),
                    [now](std::string_view value) { return readDate(value, now); });
}

}  // namespace search
