#include "platform/file_time.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace platform {
namespace {

constexpr std::uint64_t second = 10'000'000;

TEST(FileTimeTest, TheFirstMomentIsNewYear1601) {
    EXPECT_EQ(fileTimeToSystemTime({0}), (SystemTime{1601, 1, 1, 0, 0, 0}));
}

TEST(FileTimeTest, KnownMomentsBreakDownAndComeBack) {
    const struct {
        std::uint64_t ticks;
        SystemTime fields;
    } cases[] = {
        {116'444'736'000'000'000, {1970, 1, 1, 0, 0, 0}},
        {116'444'735'990'000'000, {1969, 12, 31, 23, 59, 59}},
        {126'284'295'000'000'000, {2001, 3, 7, 9, 5, 0}},
        {125'962'992'010'000'000, {2000, 2, 29, 12, 0, 1}},
        {125'911'583'990'000'000, {1999, 12, 31, 23, 59, 59}},
        {137'919'572'480'000'000, {2038, 1, 19, 3, 14, 8}},
        {10'000'000, {1601, 1, 1, 0, 0, 1}},
        {2'650'467'743'990'000'000, {9999, 12, 31, 23, 59, 59}},
    };
    for (const auto& moment : cases) {
        EXPECT_EQ(fileTimeToSystemTime({moment.ticks}), moment.fields) << moment.ticks;
        EXPECT_EQ(systemTimeToFileTime(moment.fields).ticks, moment.ticks);
    }
}

TEST(FileTimeTest, FractionsOfASecondAreDropped) {
    const FileTime start = systemTimeToFileTime({2001, 3, 7, 9, 5, 0});
    EXPECT_EQ(fileTimeToSystemTime({start.ticks + second - 1}), (SystemTime{2001, 3, 7, 9, 5, 0}));
    EXPECT_EQ(fileTimeToSystemTime({start.ticks + second}), (SystemTime{2001, 3, 7, 9, 5, 1}));
}

TEST(FileTimeTest, LeapDaysFollowTheGregorianRule) {
    const auto dayAfter = [](std::uint16_t year) {
        const FileTime last = systemTimeToFileTime({year, 2, 28, 0, 0, 0});
        return fileTimeToSystemTime({last.ticks + 86'400 * second});
    };
    EXPECT_EQ(dayAfter(2000), (SystemTime{2000, 2, 29, 0, 0, 0}));
    EXPECT_EQ(dayAfter(1900), (SystemTime{1900, 3, 1, 0, 0, 0}));
    EXPECT_EQ(dayAfter(2024), (SystemTime{2024, 2, 29, 0, 0, 0}));
    EXPECT_EQ(dayAfter(2023), (SystemTime{2023, 3, 1, 0, 0, 0}));
}

TEST(FileTimeTest, EveryDayOfSixHundredYearsComesBack) {
    std::uint64_t ticks = 0;
    SystemTime before{};
    for (int day = 0; day < 600 * 366; ++day, ticks += 86'400 * second) {
        const SystemTime fields = fileTimeToSystemTime({ticks});
        ASSERT_EQ(systemTimeToFileTime(fields).ticks, ticks) << day;
        ASSERT_FALSE(fields == before);
        before = fields;
    }
    EXPECT_EQ(before.wYear, 2202);
}

TEST(FileTimeTest, TheLastMomentHasAYear) {
    EXPECT_EQ(fileTimeToSystemTime({UINT64_MAX}).wYear, 60056);
}

}  // namespace
}  // namespace platform
