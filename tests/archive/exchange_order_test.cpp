#include "archive/exchange_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace {

using Levels = std::vector<std::int16_t>;
using Order = std::vector<std::uint32_t>;

/// The sort itself, in its simple form.
Order bySimpleForm(Levels levels) {
    Order order(levels.size());
    std::iota(order.begin(), order.end(), 0U);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        for (std::size_t j = i; j < levels.size(); ++j) {
            if (levels[i] > levels[j]) {
                std::swap(levels[i], levels[j]);
                std::swap(order[i], order[j]);
            }
        }
    }
    return order;
}

Order orderOf(const Levels& levels) {
    archive::ExchangeOrder order(levels);
    order.finish();
    return order.elements();
}

}  // namespace

TEST(ExchangeOrder, OfNothingIsFinishedAtOnce) {
    archive::ExchangeOrder order({});
    EXPECT_TRUE(order.finished());
    EXPECT_TRUE(order.elements().empty());
}

TEST(ExchangeOrder, LeavesASortedListAsItIs) {
    EXPECT_EQ(orderOf({1, 1, 2, 2, 2, 7}), (Order{0, 1, 2, 3, 4, 5}));
}

TEST(ExchangeOrder, LeavesEqualLevelsAsTheyAre) { EXPECT_EQ(orderOf({2, 2, 2}), (Order{0, 1, 2})); }

TEST(ExchangeOrder, PutsAShallowerOneBeforeADeeperOne) {
    EXPECT_EQ(orderOf({3, 2}), (Order{1, 0}));
}

TEST(ExchangeOrder, IsNotStable) {
    // Pass 1 exchanges the first 2 with the 1, which leaves it behind the second 2.
    EXPECT_EQ(orderOf({2, 2, 1}), (Order{2, 1, 0}));
}

TEST(ExchangeOrder, CarriesElementsAlongAChainOfEverSmallerLevels) {
    // The 3 goes to the place of the 2, the 2 to that of the 1, and the 1 to the front.
    EXPECT_EQ(orderOf({3, 3, 2, 2, 1}), bySimpleForm({3, 3, 2, 2, 1}));
    EXPECT_EQ(orderOf({3, 3, 2, 2, 1}), (Order{4, 3, 2, 1, 0}));
}

TEST(ExchangeOrder, TakesNegativeAndExtremeLevels) {
    const Levels levels{32767, -32768, 0, 32767, -1, -32768};
    EXPECT_EQ(orderOf(levels), bySimpleForm(levels));
}

TEST(ExchangeOrder, EqualsTheSimpleFormForEveryShortList) {
    for (std::size_t size = 1; size <= 7; ++size) {
        Levels levels(size, 1);
        for (;;) {
            ASSERT_EQ(orderOf(levels), bySimpleForm(levels)) << testing::PrintToString(levels);
            std::size_t digit = 0;
            while (digit < size && ++levels[digit] > 4) {
                levels[digit++] = 1;
            }
            if (digit == size) {
                break;
            }
        }
    }
}

TEST(ExchangeOrder, EqualsTheSimpleFormForRandomLists) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (const int different : {1, 2, 3, 6, 20, 200, 30000}) {
        for (int round = 0; round < 60; ++round) {
            Levels levels(std::uniform_int_distribution<std::size_t>(0, 400)(random));
            std::uniform_int_distribution<int> level(1, different);
            for (std::int16_t& element : levels) {
                element = static_cast<std::int16_t>(level(random));
            }
            ASSERT_EQ(orderOf(levels), bySimpleForm(levels))
                << levels.size() << " elements of " << different << " levels";
        }
    }
}

TEST(ExchangeOrder, EqualsTheSimpleFormForListsAsAWalkMakesThem) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 40; ++round) {
        Levels levels;
        std::int16_t level = 2;
        while (levels.size() < 1500) {
            // Runs of siblings, then a step down or some steps up.
            const auto siblings = std::uniform_int_distribution<std::size_t>(1, 30)(random);
            levels.insert(levels.end(), siblings, level);
            const int step = std::uniform_int_distribution<int>(-3, 2)(random);
            level = static_cast<std::int16_t>(std::max(2, level + step));
        }
        ASSERT_EQ(orderOf(levels), bySimpleForm(levels));
    }
}

TEST(ExchangeOrder, NeedsOnePassForEachElement) {
    archive::ExchangeOrder order({2, 1, 1});
    int passes = 0;
    while (!order.finished()) {
        order.nextPass();
        ++passes;
    }
    EXPECT_EQ(passes, 3);
    EXPECT_EQ(order.elements(), bySimpleForm({2, 1, 1}));
}
