#include <gtest/gtest.h>

#include <algorithm>

#include "tests/search/golden_queries.h"
#include "tests/search/search_fixture.h"

namespace {

std::vector<std::string> keysOf(const std::vector<search::Row>& rows) {
    std::vector<std::string> keys;
    for (const search::Row row : rows) {
        keys.push_back(support::keyOf(row));
    }
    return keys;
}

TEST(GoldenQueries, FindExactlyWhatTheTableSays) {
    const auto index = support::goldenIndex();
    for (const golden::Query& query : golden::queries()) {
        std::vector<std::string> found =
            keysOf(search::findRows(index, search::parseQuery(query.line, golden::now())));
        std::vector<std::string> expected = support::wordsOf(query.found);
        if (query.order == golden::Order::Any) {
            std::ranges::sort(found);
            std::ranges::sort(expected);
        }
        EXPECT_EQ(found, expected) << query.line;
    }
}

TEST(GoldenQueries, FindTheSameWithinTheHitsOfEveryShorterLine) {
    const auto index = support::goldenIndex();
    int within = 0;
    for (const golden::Query& query : golden::queries()) {
        auto earlier =
            std::make_unique<search::SearchRun>(index, search::parseQuery("", golden::now()));
        earlier->run(search::Budget::unlimited());
        for (std::size_t length = 1; length <= query.line.size(); ++length) {
            const search::Query typed =
                search::parseQuery(query.line.substr(0, length), golden::now());
            auto run = std::make_unique<search::SearchRun>(index, typed, *earlier);
            run->run(search::Budget::unlimited());
            within += run->isWithinEarlier() ? 1 : 0;
            const std::vector<search::Row> hits(run->hits().begin(), run->hits().end());
            EXPECT_EQ(keysOf(hits), keysOf(search::findRows(index, typed)))
                << query.line.substr(0, length);
            earlier = std::move(run);
        }
    }
    EXPECT_GT(within, 500);
}

}  // namespace
