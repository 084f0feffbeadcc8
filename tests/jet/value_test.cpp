#include "jet/value.h"

#include <gtest/gtest.h>

#include <limits>

#include "jet/data_type.h"
#include "jet/numeric.h"

namespace jet_test {
namespace {

using jet::displayText;
using jet::Value;

std::string date(double days) { return displayText(Value(jet::Date{days})); }
std::string money(std::int64_t tenThousandths) {
    return displayText(Value(jet::Currency{tenThousandths}));
}

jet::Numeric numeric(const std::string& text) {
    jet::Numeric number;
    EXPECT_TRUE(jet::parseNumeric(text, number)) << text;
    return number;
}

TEST(ValueText, NullIsEmpty) {
    const Value null;
    EXPECT_EQ(displayText(null), "");
    EXPECT_TRUE(jet::isNull(null));
    EXPECT_FALSE(jet::isNull(Value(std::string())));
}

TEST(ValueText, Truth) {
    EXPECT_EQ(displayText(Value(true)), "true");
    EXPECT_EQ(displayText(Value(false)), "false");
}

TEST(ValueText, Numbers) {
    EXPECT_EQ(displayText(Value(std::int32_t{-12})), "-12");
    EXPECT_EQ(displayText(Value(0.1)), "0.1");
    EXPECT_EQ(displayText(Value(0.1f)), "0.1");
    EXPECT_EQ(displayText(Value(1e300)), "1e+300");
}

TEST(ValueText, DateIsCountedFromTheEndOf1899) {
    EXPECT_EQ(date(0), "1899-12-30 00:00:00");
    EXPECT_EQ(date(37753.4375), "2003-05-12 10:30:00");
    EXPECT_EQ(date(2958465.99999), "9999-12-31 23:59:59");
}

TEST(ValueText, TimeOfANegativeDayCountsForward) {
    EXPECT_EQ(date(-1), "1899-12-29 00:00:00");
    EXPECT_EQ(date(-1.25), "1899-12-29 06:00:00");
    EXPECT_EQ(date(-1.75), "1899-12-29 18:00:00");
    EXPECT_EQ(date(-0.5), "1899-12-30 12:00:00");
    EXPECT_EQ(date(-657434), "0100-01-01 00:00:00");
}

TEST(ValueText, LastMomentOfADayIsRoundedToTheNext) {
    EXPECT_EQ(date(1.999999999), "1900-01-01 00:00:00");
    EXPECT_EQ(date(-1.999999999), "1899-12-30 00:00:00");
}

TEST(ValueText, DateOutsideTheCalendarIsANumber) {
    EXPECT_EQ(date(1e10), "1e+10");
    EXPECT_EQ(date(std::numeric_limits<double>::infinity()), "inf");
}

TEST(ValueText, CurrencyHasUpToFourPlaces) {
    EXPECT_EQ(money(0), "0");
    EXPECT_EQ(money(12345), "1.2345");
    EXPECT_EQ(money(-5), "-0.0005");
    EXPECT_EQ(money(120000), "12");
    EXPECT_EQ(money(-125000), "-12.5");
    EXPECT_EQ(money(std::numeric_limits<std::int64_t>::max()), "922337203685477.5807");
    EXPECT_EQ(money(std::numeric_limits<std::int64_t>::min()), "-922337203685477.5808");
}

TEST(ValueText, NumericHasItsPlaces) {
    EXPECT_EQ(displayText(Value(numeric("12.50"))), "12.5");
    EXPECT_EQ(displayText(Value(numeric("-0.001"))), "-0.001");
    EXPECT_EQ(displayText(Value(numeric("-0.000"))), "0");
    EXPECT_EQ(displayText(Value(numeric("79228162514264337593543950335"))),
              "79228162514264337593543950335");
}

TEST(ValueText, LargestNumeric) {
    jet::Numeric number;
    number.magnitude.fill(0xFF);
    EXPECT_EQ(displayText(Value(number)), "340282366920938463463374607431768211455");
    number.scale = 38;
    EXPECT_EQ(displayText(Value(number)), "3.40282366920938463463374607431768211455");
}

TEST(ValueText, BinaryIsHexadecimal) {
    EXPECT_EQ(displayText(Value(jet::Binary{std::string("\x00\xAB\x0F", 3)})), "0x00ab0f");
    EXPECT_EQ(displayText(Value(jet::Binary{})), "0x");
}

TEST(ValueText, FirstGroupsOfAGuidAreReversed) {
    const jet::Guid guid{{0xD4, 0x78, 0x81, 0xBF, 0x98, 0xEB, 0xA3, 0x47, 0x9E, 0xDA, 0x6D, 0x21,
                          0xC3, 0x26, 0xC5, 0xC8}};
    EXPECT_EQ(displayText(Value(guid)), "{BF8178D4-EB98-47A3-9EDA-6D21C326C5C8}");
}

TEST(NumericText, ReadsSignPointAndBlanks) {
    EXPECT_EQ(numeric(" +1.50 ").scale, 2);
    EXPECT_EQ(numeric("-7").negative, true);
    EXPECT_EQ(jet::magnitudeDigits(numeric("007.10")), "710");
    EXPECT_EQ(jet::magnitudeDigits(numeric("0")), "0");
    EXPECT_EQ(jet::magnitudeDigits(numeric(".5")), "5");
}

TEST(NumericText, OtherTextsAreRefused) {
    jet::Numeric number;
    for (const char* text : {"", " ", "-", ".", "1.2.3", "12a", "1e5", "--1", "1 2", "0x10"}) {
        EXPECT_FALSE(jet::parseNumeric(text, number)) << text;
    }
    EXPECT_FALSE(jet::parseNumeric("340282366920938463463374607431768211456", number));
}

TEST(NumericText, RescalingKeepsTheNumberOrRefuses) {
    jet::Numeric number = numeric("12.5");
    EXPECT_TRUE(jet::rescale(number, 4));
    EXPECT_EQ(jet::magnitudeDigits(number), "125000");
    EXPECT_EQ(displayText(Value(number)), "12.5");
    EXPECT_TRUE(jet::rescale(number, 1));
    EXPECT_FALSE(jet::rescale(number, 0));
    EXPECT_EQ(displayText(Value(number)), "12.5");
    EXPECT_FALSE(jet::rescale(number, 60));
}

TEST(DataTypeName, EveryTypeHasOne) {
    EXPECT_EQ(jet::dataTypeName(jet::DataType::Text), "Text");
    EXPECT_EQ(jet::dataTypeName(jet::DataType::Numeric), "Numeric");
    EXPECT_EQ(jet::dataTypeName(static_cast<jet::DataType>(99)), "unknown type");
}

}  // namespace
}  // namespace jet_test
