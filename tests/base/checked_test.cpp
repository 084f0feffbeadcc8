#include "base/checked.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>

namespace base {
namespace {

constexpr std::int16_t largest16 = std::numeric_limits<std::int16_t>::max();
constexpr std::int16_t smallest16 = std::numeric_limits<std::int16_t>::min();
constexpr std::int32_t largest32 = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest32 = std::numeric_limits<std::int32_t>::min();

TEST(Checked, StartsAtZero) {
    EXPECT_EQ(Int16().value(), 0);
    EXPECT_EQ(Int32().value(), 0);
}

TEST(Checked, HoldsBothEndsOfItsRange) {
    EXPECT_EQ(Int16(32767).value(), largest16);
    EXPECT_EQ(Int16(-32768).value(), smallest16);
    EXPECT_EQ(Int32(2147483647LL).value(), largest32);
    EXPECT_EQ(Int32(-2147483648LL).value(), smallest32);
}

TEST(Checked, ConversionOfANumberOutsideTheRangeFails) {
    EXPECT_THROW(Int16(32768), OverflowFailure);
    EXPECT_THROW(Int16(-32769), OverflowFailure);
    EXPECT_THROW(Int16(Int32(40000)), OverflowFailure);
    EXPECT_THROW(Int32(2147483648LL), OverflowFailure);
    EXPECT_THROW(Int32(-2147483649LL), OverflowFailure);
}

TEST(Checked, AnUnsignedNumberIsNotTakenForANegativeOne) {
    EXPECT_THROW(Int16(std::uint16_t{0xFFFF}), OverflowFailure);
    EXPECT_THROW(Int32(std::uint32_t{0xFFFFFFFF}), OverflowFailure);
    EXPECT_THROW(Int32{std::numeric_limits<std::uint64_t>::max()}, OverflowFailure);
}

TEST(Checked, The32768thStepOf16BitsFailsAndLeavesTheCountAsItWas) {
    Int16 count;
    for (int i = 0; i < 32767; ++i) {
        ++count;
    }
    EXPECT_THROW(++count, OverflowFailure);
    EXPECT_EQ(count.value(), largest16);
}

TEST(Checked, SumsAndDifferencesFailBeyondEitherEnd) {
    EXPECT_EQ((Int16(32000) + Int16(767)).value(), largest16);
    EXPECT_THROW(Int16(32000) + Int16(768), OverflowFailure);
    EXPECT_EQ((Int16(-32000) - Int16(768)).value(), smallest16);
    EXPECT_THROW(Int16(-32000) - Int16(769), OverflowFailure);
    EXPECT_THROW(Int32(largest32) + Int32(1), OverflowFailure);
    EXPECT_THROW(Int32(smallest32) - Int32(1), OverflowFailure);
    EXPECT_THROW(Int32(0) - Int32(smallest32), OverflowFailure);
}

TEST(Checked, PlainNumbersOnEitherSideAreCheckedToo) {
    const Int16 number(32000);
    EXPECT_EQ((number + 767).value(), largest16);
    EXPECT_EQ((767 + number).value(), largest16);
    EXPECT_EQ((number - 32000).value(), 0);
    EXPECT_EQ((1 - number).value(), -31999);
    EXPECT_THROW(number + 768, OverflowFailure);
    EXPECT_THROW(number + 40000, OverflowFailure);
    EXPECT_THROW(-1000 - number, OverflowFailure);
    EXPECT_TRUE(number == 32000);
    EXPECT_TRUE(number < 32001);
}

TEST(Checked, AFailedChangeLeavesTheValueAsItWas) {
    Int16 number(32000);
    EXPECT_THROW(number += Int16(1000), OverflowFailure);
    EXPECT_EQ(number.value(), 32000);
    number = Int16(-32000);
    EXPECT_THROW(number -= Int16(1000), OverflowFailure);
    EXPECT_EQ(number.value(), -32000);
}

TEST(Checked, TheFailureNamesTheWidth) {
    try {
        Int16 number(40000);
        FAIL() << "holds " << number.value();
    } catch (const OverflowFailure& failure) {
        EXPECT_EQ(failure.text(), "a number does not fit 16 bits");
        EXPECT_STREQ(failure.what(), failure.text().c_str());
    }
}

TEST(Checked, AgreesWithWiderArithmeticOnRandomNumbers) {
    std::mt19937 random(20030512);
    std::uniform_int_distribution<int> numbers(smallest16, largest16);
    const auto fits = [](int number) { return number >= smallest16 && number <= largest16; };
    for (int i = 0; i < 100000; ++i) {
        const int left = numbers(random);
        const int right = numbers(random);
        if (fits(left + right)) {
            ASSERT_EQ((Int16(left) + Int16(right)).value(), left + right);
        } else {
            ASSERT_THROW(Int16(left) + Int16(right), OverflowFailure) << left << " + " << right;
        }
        if (fits(left - right)) {
            ASSERT_EQ((Int16(left) - Int16(right)).value(), left - right);
        } else {
            ASSERT_THROW(Int16(left) - Int16(right), OverflowFailure) << left << " - " << right;
        }
    }
}

}  // namespace
}  // namespace base
