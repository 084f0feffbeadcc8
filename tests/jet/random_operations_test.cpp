// Random changes through two connections of one process against a simple model.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <string>

#include "tests/jet/item_table.h"

namespace jet_test {

namespace {

using Decision = ItemSession::Decision;

const std::string path = "/archive.mdb";

/// More seeds for a long run: VERDOLIN_RANDOM_SEEDS.
int seedCount() {
    const char* const wanted = std::getenv("VERDOLIN_RANDOM_SEEDS");
    return wanted != nullptr ? std::atoi(wanted) : 10;
}

}  // namespace

class RandomOperations : public testing::TestWithParam<std::tuple<jet::FileFormat, int>> {
  protected:
    RandomOperations()
        : files_(2048), random_(static_cast<std::uint32_t>(std::get<1>(GetParam()))) {}

    std::uint32_t pick(std::uint32_t below) {
        return static_cast<std::uint32_t>(random_()) % below;
    }

    Item someItem(std::int32_t id) {
        Item item{id, static_cast<std::int32_t>(pick(5)), someText(pick(1u << 30), pick(256)), ""};
        switch (pick(8)) {
            case 0:
                item.note = someText(pick(1u << 30), pick(40));
                break;
            case 1:
                item.note = someText(pick(1u << 30), pick(3000));
                break;
            case 2:
                item.note = someText(pick(1u << 30), pick(12000));
                break;
            default:
                break;
        }
        return item;
    }

    void open() {
        first_ = std::make_unique<ItemSession>(files_, path, model_);
        second_ = std::make_unique<ItemSession>(*first_, model_);
    }
    void close() {
        first_->close();
        second_->close();
        first_.reset();
        second_.reset();
    }
    ItemSession& any() { return pick(2) == 0 ? *first_ : *second_; }

    void step() {
        switch (pick(12)) {
            case 0:
            case 1:
            case 2:
            case 3:
                for (std::uint32_t count = pick(120); count > 0; --count) {
                    any().insert(someItem(nextId_++));
                }
                break;
            case 4:
            case 5:
            case 6:
                changeSome(any(), Decision::Replace);
                break;
            case 7:
                changeSome(any(), Decision::Delete);
                break;
            case 8:
                any().deleteMedium(static_cast<std::int32_t>(pick(5)));
                break;
            case 9:
                insertDuringDeletion();
                break;
            case 10:
                any().flush();
                break;
            default:
                close();
                expectSound();
                open();
        }
    }

    void changeSome(ItemSession& session, Decision decision) {
        const std::uint32_t oneOf = 1 + pick(20);
        session.change([&](Item& item) {
            if (pick(oneOf) != 0) {
                return Decision::Keep;
            }
            if (decision == Decision::Replace) {
                item = someItem(item.id);
            }
            return decision;
        });
    }

    /// Events run in the middle of a deletion, and store rows through the other connection.
    void insertDuringDeletion() {
        const auto medium = static_cast<std::int32_t>(pick(5));
        first_->change([&](Item& item) {
            if (item.medium != medium) {
                return Decision::Keep;
            }
            if (pick(4) == 0) {
                Item more = someItem(nextId_++);
                more.medium = medium == 0 ? 1 : 0;
                second_->insert(more);
            }
            return Decision::Delete;
        });
    }

    void expectSound() {
        const jet::CheckReport report = jet::checkDatabase(files_, path);
        ASSERT_TRUE(report.isSound()) << textOf(report);
        ASSERT_EQ(report.count(jet::CheckFinding::Kind::LostSpace), 0u) << textOf(report);
    }

    support::FaultyFiles files_;
    std::mt19937 random_;
    ItemModel model_;
    std::int32_t nextId_ = 0;
    std::unique_ptr<ItemSession> first_;
    std::unique_ptr<ItemSession> second_;
};

TEST_P(RandomOperations, AgreeWithTheModel) {
    SCOPED_TRACE("seed " + std::to_string(std::get<1>(GetParam())));
    ItemSession::create(files_, path, std::get<0>(GetParam()));
    open();
    for (int i = 0; i < 60 && !HasFatalFailure(); ++i) {
        step();
        ASSERT_EQ(model_.complaint(any().read(), ItemModel::Accept::Last), "") << "step " << i;
        ASSERT_EQ(any().recordCount(), static_cast<std::int64_t>(model_.size())) << "step " << i;
    }
    close();
    expectSound();
    ItemSession session(files_, path, model_);
    EXPECT_EQ(model_.complaint(session.read(), ItemModel::Accept::Last), "");
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperations,
                         testing::Combine(testing::Values(jet::FileFormat::Jet3,
                                                          jet::FileFormat::Jet4),
                                          testing::Range(1, seedCount() + 1)));

}  // namespace jet_test
