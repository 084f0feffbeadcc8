#include "base/numbered_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace base {
namespace {

NumberedList<int> listOf(const std::vector<int>& values) {
    NumberedList<int> list;
    for (const int value : values) {
        list.append(value);
    }
    return list;
}

TEST(NumberedList, NeverGrownHasNoBounds) {
    const NumberedList<int> list;
    EXPECT_TRUE(list.neverGrown());
    EXPECT_THROW(list.upperBound(), SubscriptFailure);
    EXPECT_TRUE(list.elements().empty());
}

TEST(NumberedList, NeverGrownHasNoElements) {
    NumberedList<int> list;
    EXPECT_THROW(list[0], SubscriptFailure);
    EXPECT_THROW(list[1], SubscriptFailure);
}

TEST(NumberedList, GrownIsNumberedFromOne) {
    NumberedList<int> list = listOf({10, 20, 30});
    EXPECT_EQ(list.upperBound(), 3);
    EXPECT_EQ(list[1], 10);
    EXPECT_EQ(list[3], 30);
    EXPECT_THROW(list[0], SubscriptFailure);
    EXPECT_THROW(list[4], SubscriptFailure);
    EXPECT_THROW(list[-1], SubscriptFailure);
}

TEST(NumberedList, AppendAnswersTheNewElementsNumber) {
    NumberedList<std::string> list;
    EXPECT_EQ(list.append("first"), 1);
    EXPECT_EQ(list.append("second"), 2);
    EXPECT_FALSE(list.neverGrown());
}

TEST(NumberedList, GrowingKeepsTheEarlierElementsAndAddsEmptyOnes) {
    NumberedList<int> list = listOf({10, 20});
    list.growTo(4);
    EXPECT_EQ(list.elements(), (std::vector<int>{10, 20, 0, 0}));
}

TEST(NumberedList, CutLosesTheElementsAboveForGood) {
    NumberedList<int> list = listOf({10, 20, 30});
    list.growTo(1);
    EXPECT_EQ(list.upperBound(), 1);
    EXPECT_EQ(list[1], 10);
    EXPECT_THROW(list[2], SubscriptFailure);
    list.growTo(3);
    EXPECT_EQ(list.elements(), (std::vector<int>{10, 0, 0}));
}

TEST(NumberedList, GrownToNothingHasBoundsButNoElement) {
    NumberedList<int> list;
    list.growTo(0);
    EXPECT_FALSE(list.neverGrown());
    EXPECT_EQ(list.upperBound(), 0);
    EXPECT_THROW(list[1], SubscriptFailure);
}

TEST(NumberedList, CannotGrowToANegativeCount) {
    NumberedList<int> list = listOf({10});
    EXPECT_THROW(list.growTo(-1), SubscriptFailure);
    EXPECT_EQ(list.elements(), std::vector<int>{10});
}

TEST(NumberedList, AFailedNegativeGrowthLeavesItNeverGrown) {
    NumberedList<int> list;
    EXPECT_THROW(list.growTo(-1), SubscriptFailure);
    EXPECT_TRUE(list.neverGrown());
}

TEST(NumberedList, TheFailureNamesLengthAndNumber) {
    NumberedList<int> list = listOf({10, 20});
    try {
        const int element = list[3];
        FAIL() << element;
    } catch (const SubscriptFailure& failure) {
        EXPECT_EQ(failure.text(), "a list of 2 elements has no element 3");
    }
}

TEST(NumberedList, AgreesWithAVectorUnderRandomGrowingAndCutting) {
    std::mt19937 random(7);
    NumberedList<int> list;
    std::vector<int> model;
    for (int step = 0; step < 10000; ++step) {
        const int number = static_cast<int>(random() % 40);
        switch (random() % 3) {
            case 0:
                list.growTo(number);
                model.resize(static_cast<std::size_t>(number));
                break;
            case 1:
                ASSERT_EQ(list.append(step), static_cast<std::int64_t>(model.size()) + 1);
                model.push_back(step);
                break;
            default:
                if (number >= 1 && static_cast<std::size_t>(number) <= model.size()) {
                    list[number] = step;
                    model[static_cast<std::size_t>(number) - 1] = step;
                } else {
                    ASSERT_THROW(list[number], SubscriptFailure);
                }
        }
        ASSERT_EQ(list.elements(), model);
    }
}

}  // namespace
}  // namespace base
