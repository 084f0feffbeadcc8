#include "platform/posix/local_time.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <random>
#include <string>

namespace platform::posix {
namespace {

/// Sets the time zone for as long as it lives.
class TimeZone {
  public:
    explicit TimeZone(const char* name) {
        if (const char* const before = std::getenv("TZ")) {
            before_ = before;
        }
        ::setenv("TZ", name, 1);
        ::tzset();
    }
    ~TimeZone() {
        if (before_) {
            ::setenv("TZ", before_->c_str(), 1);
        } else {
            ::unsetenv("TZ");
        }
        ::tzset();
    }

  private:
    std::optional<std::string> before_;
};

SystemTime localOf(std::int64_t unixSeconds) {
    LocalTime local;
    return fileTimeToSystemTime(local.toLocal(fileTimeFromUnix(unixSeconds, 0)));
}

SystemTime askedOfTheSystem(std::int64_t unixSeconds) {
    const auto moment = static_cast<std::time_t>(unixSeconds);
    std::tm fields{};
    ::localtime_r(&moment, &fields);
    const auto number = [](int value) { return static_cast<std::uint16_t>(value); };
    return {number(fields.tm_year + 1900), number(fields.tm_mon + 1), number(fields.tm_mday),
            number(fields.tm_hour),        number(fields.tm_min),     number(fields.tm_sec)};
}

// Written out, so that the tests do not need the system's files of time zones.
constexpr const char* berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* newYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* adelaide = "ACST-9:30ACDT,M10.1.0,M4.1.0/3";

TEST(LocalTimeTest, SummerTimeBeginsAndEndsAtItsMoment) {
    const TimeZone zone(berlin);
    constexpr std::int64_t begin = 1'711'846'800;  // 2024-03-31 01:00:00 UTC
    EXPECT_EQ(localOf(begin - 1), (SystemTime{2024, 3, 31, 1, 59, 59}));
    EXPECT_EQ(localOf(begin), (SystemTime{2024, 3, 31, 3, 0, 0}));
    constexpr std::int64_t end = 1'729'990'800;  // 2024-10-27 01:00:00 UTC
    EXPECT_EQ(localOf(end - 1), (SystemTime{2024, 10, 27, 2, 59, 59}));
    EXPECT_EQ(localOf(end), (SystemTime{2024, 10, 27, 2, 0, 0}));
}

TEST(LocalTimeTest, MomentsBefore1970AreLocalToo) {
    const TimeZone zone(newYork);
    EXPECT_EQ(localOf(-1), (SystemTime{1969, 12, 31, 18, 59, 59}));
    EXPECT_EQ(localOf(-86'400LL * 365 * 30), askedOfTheSystem(-86'400LL * 365 * 30));
}

TEST(LocalTimeTest, AgreesWithTheSystemAtRandomMoments) {
    for (const char* const name :
         {berlin, newYork, adelaide, "UTC0", "<+0545>-5:45", "Europe/Amsterdam", "Asia/Kolkata",
          "Africa/Monrovia", "Pacific/Apia"}) {
        const TimeZone zone(name);
        LocalTime local;
        std::mt19937_64 random(7);
        std::uniform_int_distribution<std::int64_t> moments(-5'000'000'000, 5'000'000'000);
        for (int i = 0; i < 20'000; ++i) {
            const std::int64_t moment = moments(random);
            ASSERT_EQ(fileTimeToSystemTime(local.toLocal(fileTimeFromUnix(moment, 0))),
                      askedOfTheSystem(moment))
                << name << " " << moment;
        }
    }
}

TEST(LocalTimeTest, AgreesWithTheSystemAroundEveryChange) {
    for (const char* const name : {"Europe/Amsterdam", "Africa/Monrovia", adelaide}) {
        const TimeZone zone(name);
        LocalTime local;
        // Every quarter hour of some years, and the seconds beside it.
        for (std::int64_t moment = -1'030'000'000; moment < -1'000'000'000; moment += 900) {
            for (const std::int64_t near : {moment - 1, moment, moment + 1}) {
                ASSERT_EQ(fileTimeToSystemTime(local.toLocal(fileTimeFromUnix(near, 0))),
                          askedOfTheSystem(near))
                    << name << " " << near;
            }
        }
    }
}

TEST(LocalTimeTest, FractionsStay) {
    const TimeZone zone(newYork);
    LocalTime local;
    const FileTime time = fileTimeFromUnix(1'000'000'000, 123'456'789);
    EXPECT_EQ(time.ticks % 10'000'000, 1'234'567U);
    EXPECT_EQ(local.toLocal(time).ticks % 10'000'000, 1'234'567U);
}

TEST(LocalTimeTest, MomentsOutsideTheCalendarBecomeTheNearestInside) {
    EXPECT_EQ(fileTimeFromUnix(INT64_MIN, 0).ticks, 0U);
    EXPECT_EQ(fileTimeToSystemTime(fileTimeFromUnix(INT64_MAX, 0)),
              (SystemTime{9999, 12, 31, 23, 59, 59}));
    LocalTime local;
    const TimeZone west(newYork);
    EXPECT_EQ(local.toLocal({0}).ticks, 0U);
    const TimeZone east(adelaide);
    LocalTime other;
    EXPECT_EQ(fileTimeToSystemTime(other.toLocal({UINT64_MAX})),
              (SystemTime{9999, 12, 31, 23, 59, 59}));
}

TEST(LocalTimeTest, NowIsNow) {
    const std::int64_t before = std::time(nullptr);
    const SystemTime now = localCalendarNow();
    const std::int64_t after = std::time(nullptr);
    bool matches = false;
    for (std::int64_t moment = before; moment <= after; ++moment) {
        matches = matches || askedOfTheSystem(moment) == now;
    }
    EXPECT_TRUE(matches);
}

}  // namespace
}  // namespace platform::posix
