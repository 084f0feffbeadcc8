#include "scan/date_text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

namespace {

platform::SystemTime timeOf(int year, int month, int day, int hour, int minute, int second) {
    const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
    return {field(year), field(month), field(day), field(hour), field(minute), field(second)};
}

/// The long way: the bare numbers "3/7/2001 9:5:0", read back and formatted.
std::string throughBareNumbers(const platform::SystemTime& time) {
    char bare[40];
    std::snprintf(bare, sizeof bare, "%d/%d/%d %d:%d:%d", time.wMonth, time.wDay, time.wYear,
                  time.wHour, time.wMinute, time.wSecond);
    int month = 0, day = 0, year = 0, hour = 0, minute = 0, second = 0;
    std::sscanf(bare, "%d/%d/%d %d:%d:%d", &month, &day, &year, &hour, &minute, &second);
    char formatted[40];
    std::snprintf(formatted, sizeof formatted, "%02d/%02d/%04d %02d:%02d:%02d", month, day, year,
                  hour, minute, second);
    return formatted;
}

}  // namespace

TEST(DateText, PadsMonthDayAndTimeToTwoDigits) {
    EXPECT_EQ(scan::dateText(timeOf(2001, 3, 7, 9, 5, 0)), "03/07/2001 09:05:00");
}

TEST(DateText, CountsHoursTo23) {
    EXPECT_EQ(scan::dateText(timeOf(1999, 12, 31, 23, 59, 59)), "12/31/1999 23:59:59");
    EXPECT_EQ(scan::dateText(timeOf(2000, 1, 1, 0, 0, 0)), "01/01/2000 00:00:00");
}

TEST(DateText, ReachesFromTheFirstYearOfFileTimesToYearsOfFiveDigits) {
    EXPECT_EQ(scan::dateText(timeOf(1601, 1, 1, 0, 0, 0)), "01/01/1601 00:00:00");
    EXPECT_EQ(scan::dateText(timeOf(30827, 12, 31, 23, 59, 59)), "12/31/30827 23:59:59");
}

TEST(DateText, SetReplacesWhatTheTextHeld) {
    std::string text = "something else";
    scan::setDateText(text, timeOf(2001, 3, 7, 9, 5, 0));
    EXPECT_EQ(text, "03/07/2001 09:05:00");
}

TEST(DateText, EqualsTheBareNumbersReadBackAndFormatted) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const auto number = [&](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    for (int i = 0; i < 2000; ++i) {
        const auto time = timeOf(number(1601, 9999), number(1, 12), number(1, 28), number(0, 23),
                                 number(0, 59), number(0, 59));
        ASSERT_EQ(scan::dateText(time), throughBareNumbers(time));
    }
}
