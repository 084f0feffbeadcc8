#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "search/narrowing.h"
#include "tests/search/naive_search.h"
#include "tests/search/random_queries.h"
#include "tests/search/search_fixture.h"

namespace {

using search::Node;
using search::Row;

/// Another one for each run; SEARCH_TEST_SEED repeats one.
std::uint64_t newSeed() {
    const char* const given = std::getenv("SEARCH_TEST_SEED");
    return given != nullptr ? std::strtoull(given, nullptr, 10) : std::random_device()();
}

class RandomSearches : public testing::Test {
  protected:
    /// Runs `body` again and again, for some seconds at most.
    template <typename Body>
    void repeat(int times, Body body) {
        const std::uint64_t seed = newSeed();
        SCOPED_TRACE("SEARCH_TEST_SEED=" + std::to_string(seed));
        support::RandomQueries random(seed);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(4);
        for (int i = 0; i < times && !HasFailure() && std::chrono::steady_clock::now() < end; ++i) {
            body(random);
        }
    }

    static std::vector<Row> sorted(std::vector<Row> rows) {
        std::ranges::sort(rows);
        return rows;
    }
    static std::vector<Row> find(const std::shared_ptr<const search::Index>& index,
                                 const std::string& line) {
        return sorted(search::findRows(index, search::parseQuery(line, golden::now())));
    }
};

TEST_F(RandomSearches, FindWhatThePlainestSearchFinds) {
    repeat(40, [](support::RandomQueries& random) {
        const auto index = support::indexOf(random.entries(1 + random.below(200)), golden::media());
        const naive::Search plain(*index);
        for (int i = 0; i < 30; ++i) {
            const std::string line = random.line();
            const search::Query query = search::parseQuery(line, golden::now());
            ASSERT_EQ(sorted(search::findRows(index, query)), plain.rows(query.condition)) << line;
        }
    });
}

TEST_F(RandomSearches, BlankIsIntersectionBarIsUnionAndExclamationMarkIsComplement) {
    repeat(40, [](support::RandomQueries& random) {
        const auto index = support::indexOf(random.entries(1 + random.below(300)), golden::media());
        std::vector<Row> all(index->size());
        for (Row row = 0; row < all.size(); ++row) {
            all[row] = row;
        }
        for (int i = 0; i < 20; ++i) {
            const std::string left = "(" + random.line() + ")";
            const std::string right = "(" + random.line() + ")";
            // What is not finished is left out, which is no set that could be combined.
            if (!search::parseQuery(left + right, golden::now()).notices.empty()) {
                continue;
            }
            const std::vector<Row> leftRows = find(index, left);
            const std::vector<Row> rightRows = find(index, right);
            std::vector<Row> both;
            std::vector<Row> either;
            std::vector<Row> rest;
            std::ranges::set_intersection(leftRows, rightRows, std::back_inserter(both));
            std::ranges::set_union(leftRows, rightRows, std::back_inserter(either));
            std::ranges::set_difference(all, leftRows, std::back_inserter(rest));
            ASSERT_EQ(find(index, left + " " + right), both) << left << right;
            ASSERT_EQ(find(index, left + " | " + right), either) << left << right;
            ASSERT_EQ(find(index, "!" + left), rest) << left;
        }
    });
}

TEST_F(RandomSearches, WhatNarrowsFindsNothingNew) {
    int narrowing = 0;
    repeat(40, [&](support::RandomQueries& random) {
        const auto index = support::indexOf(random.entries(1 + random.below(100)), golden::media());
        for (int i = 0; i < 200; ++i) {
            std::string earlier = random.line();
            const std::string later =
                random.below(2) == 0 ? random.line() : earlier + random.line();
            earlier = earlier.substr(0, 1 + random.below(earlier.size()));
            const Node earlierNode = search::parseQuery(earlier, golden::now()).condition;
            const Node laterNode = search::parseQuery(later, golden::now()).condition;
            if (search::narrows(laterNode, earlierNode)) {
                ++narrowing;
                ASSERT_TRUE(std::ranges::includes(find(index, earlier), find(index, later)))
                    << earlier << " -> " << later;
            }
        }
    });
    EXPECT_GT(narrowing, 100);
}

TEST_F(RandomSearches, AnyBytesAreAQuery) {
    const auto index = support::goldenIndex();
    repeat(20000, [&](support::RandomQueries& random) {
        const std::string line = random.garbage();
        const search::Query query = search::parseQuery(line, golden::now());
        for (const search::Notice& notice : query.notices) {
            ASSERT_LE(notice.position + notice.length, line.size()) << line;
        }
        ASSERT_LE(search::findRows(index, query).size(), index->size());
    });
}

TEST_F(RandomSearches, DeepNestingIsNoTrouble) {
    const auto index = support::goldenIndex();
    for (const std::string& part : {std::string("("), std::string("!("), std::string("(a|"),
                                    std::string("!"), std::string("(a b)|(")}) {
        std::string line;
        for (int i = 0; i < 20000; ++i) {
            line += part;
        }
        search::SearchRun first(index, search::parseQuery(line + "x", golden::now()));
        EXPECT_TRUE(first.run(search::Budget::unlimited()));
        search::SearchRun second(index, search::parseQuery(line + "xy", golden::now()), first);
        EXPECT_TRUE(second.run(search::Budget::unlimited()));
    }
}

}  // namespace
