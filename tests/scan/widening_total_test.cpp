#include "scan/widening_total.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

}  // namespace

TEST(WideningTotal, StaysAWholeNumberWhileItFits) {
    scan::WideningTotal total;
    total += largest;
    EXPECT_FALSE(total.isDouble());
    EXPECT_EQ(total.value(), largest);
}

TEST(WideningTotal, WidensWhereASumLeaves32Bits) {
    scan::WideningTotal up;
    up += largest;
    up += 1;
    EXPECT_TRUE(up.isDouble());
    EXPECT_EQ(up.value(), 2147483648.0);

    scan::WideningTotal down;
    down += smallest;
    down += -1;
    EXPECT_TRUE(down.isDouble());
    EXPECT_EQ(down.value(), -2147483649.0);
}

TEST(WideningTotal, StaysADoubleOnceItIsOne) {
    scan::WideningTotal total;
    total += largest;
    total += 1;
    total += smallest;
    EXPECT_TRUE(total.isDouble());
    EXPECT_EQ(total.value(), 0.0);
}

TEST(WideningTotal, AddsAnotherTotalAndTakesOverThatItIsADouble) {
    scan::WideningTotal wide;
    wide += 5000000000.0;
    scan::WideningTotal total;
    total += 7;
    total += wide;
    EXPECT_TRUE(total.isDouble());
    EXPECT_EQ(total.value(), 5000000007.0);

    scan::WideningTotal narrow;
    narrow += 3;
    scan::WideningTotal sum;
    sum += narrow;
    EXPECT_FALSE(sum.isDouble());
    EXPECT_EQ(sum.value(), 3.0);
}
