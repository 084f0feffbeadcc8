#include "searchcontrol/index_releaser.h"

#include <gtest/gtest.h>

#include <QTest>
#include <memory>
#include <optional>

#include "search/copies.h"
#include "search/index_builder.h"
#include "tests/search/golden_archive.h"
#include "tests/support/recording_boundary.h"

namespace {

std::shared_ptr<search::Index> goldenIndex() {
    search::IndexBuilder builder;
    for (const golden::Entry& entry : golden::entries()) {
        builder.addEntry(golden::scanEntry(entry), {});
    }
    std::shared_ptr<search::Index> index = builder.build();
    index->copies().finish();
    return index;
}

class IndexReleaserTest : public testing::Test {
  protected:
    support::RecordingBoundary boundary;
    std::optional<searchcontrol::IndexReleaser> releaser{std::in_place, boundary, nullptr};
};

TEST_F(IndexReleaserTest, WhatTheLastOneDropsGoesBetweenTheEvents) {
    std::shared_ptr<search::Index> made = goldenIndex();
    const std::weak_ptr<search::Index> memory = made;
    auto shown = releaser->shared(std::move(made));
    auto other = shown;
    shown.reset();
    EXPECT_FALSE(releaser->isRunning());
    EXPECT_EQ(other->size(), golden::entries().size());
    other.reset();
    EXPECT_TRUE(releaser->isRunning());
    EXPECT_FALSE(memory.expired());
    EXPECT_TRUE(QTest::qWaitFor([&] { return memory.expired(); }));
}

TEST_F(IndexReleaserTest, AnIndexMayOutliveIt) {
    std::shared_ptr<search::Index> made = goldenIndex();
    const std::weak_ptr<search::Index> memory = made;
    auto shown = releaser->shared(std::move(made));
    releaser.reset();
    EXPECT_EQ(shown->size(), golden::entries().size());
    shown.reset();
    EXPECT_TRUE(memory.expired());
}

TEST_F(IndexReleaserTest, ItMayGoWithWhatItHasNotGivenBackYet) {
    std::shared_ptr<search::Index> made = goldenIndex();
    const std::weak_ptr<search::Index> memory = made;
    releaser->shared(std::move(made)).reset();
    releaser.reset();
    EXPECT_TRUE(memory.expired());
}

}  // namespace
