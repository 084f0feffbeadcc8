#include "search/step_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

namespace search {
namespace {

using Numbers = std::vector<std::uint64_t>;
using Sort = StepSort<std::uint64_t, std::less<>>;

Numbers randomNumbers(std::size_t count, unsigned seed) {
    std::mt19937_64 random(seed);
    Numbers numbers(count);
    std::generate(numbers.begin(), numbers.end(), std::ref(random));
    return numbers;
}

Numbers sorted(Numbers numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

Numbers sortedInSteps(Sort& sort) {
    while (!sort.advance()) {
    }
    return sort.take();
}

TEST(StepSort, SortsAsAnyOtherSortWould) {
    for (const std::size_t count : {0U, 1U, 2U, 8191U, 8192U, 8193U, 16384U, 40000U, 100003U}) {
        SCOPED_TRACE(count);
        const Numbers numbers = randomNumbers(count, 7);
        Sort sort{std::less<>()};
        sort.start(numbers);
        EXPECT_EQ(sortedInSteps(sort), sorted(numbers));
    }
}

TEST(StepSort, BeginsAnewInTheMiddleOfAMerge) {
    const Numbers numbers = randomNumbers(50000, 8);
    for (int steps = 1; steps < 28; ++steps) {
        SCOPED_TRACE(steps);
        Sort sort{std::less<>()};
        sort.start(randomNumbers(100000, 9));
        for (int step = 0; step < steps; ++step) {
            ASSERT_FALSE(sort.advance());
        }
        sort.start(numbers);
        EXPECT_EQ(sortedInSteps(sort), sorted(numbers));
    }
}

}  // namespace
}  // namespace search
