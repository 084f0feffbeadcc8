// The disk fails while the process lives on: the failure is thrown, the rows stay, and a later
// flush stores them when the disk works again.

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "tests/jet/item_table.h"

namespace jet_test {

namespace {

using Decision = ItemSession::Decision;

const std::string path = "/archive.mdb";

Item item(std::int32_t id) {
    const auto seed = static_cast<std::uint32_t>(id);
    return {id, id % 3, someText(seed, 10 + seed % 120),
            seed % 9 == 0 ? someText(seed, seed % 700) : ""};
}

}  // namespace

class DiskFailure : public testing::TestWithParam<jet::FileFormat> {
  protected:
    DiskFailure() : files_(GetParam() == jet::FileFormat::Jet3 ? 2048 : 4096) {
        ItemSession::create(files_, path, GetParam());
        ItemSession session(files_, path, before_);
        for (std::int32_t id = 0; id < 600; ++id) {
            session.insert(item(id));
        }
        session.close();
        start_ = files_.read(path);
        files_.heal();
    }

    void reset() {
        files_.heal();
        files_.write(path, start_);
    }

    /// Changes of every kind.
    static void work(ItemSession& session) {
        for (std::int32_t id = 1000; id < 1400; ++id) {
            session.insert(item(id));
        }
        session.change([](Item& row) {
            if (row.id % 4 == 0) {
                row.name = someText(static_cast<std::uint32_t>(row.id), 200);
                return Decision::Replace;
            }
            return row.id % 4 == 1 ? Decision::Delete : Decision::Keep;
        });
    }

    /// Works, flushes and, where that failed, flushes again with a healthy disk.
    template <typename Fault>
    bool survives(Fault fault, const std::string& when) {
        reset();
        ItemModel model = before_;
        bool failed = false;
        {
            ItemSession session(files_, path, model, {});
            work(session);
            fault();
            try {
                session.flush();
            } catch (const base::Failure& failure) {
                failed = true;
                EXPECT_NE(failure.text(), "") << when;
            }
            EXPECT_EQ(model.complaint(session.read(), ItemModel::Accept::Last), "") << when;
            files_.heal();
            session.insert(item(5000));
            session.close();
        }
        const jet::CheckReport report = jet::checkDatabase(files_, path);
        EXPECT_TRUE(report.isSound()) << when << "\n" << textOf(report);
        ItemSession session(files_, path, model);
        EXPECT_EQ(model.complaint(session.read(), ItemModel::Accept::Last), "") << when;
        return failed;
    }

    support::FaultyFiles files_;
    ItemModel before_;
    std::string start_;
};

TEST_P(DiskFailure, AFailedWriteIsThrownAndMadeGoodLater) {
    bool failed = true;
    for (std::uint64_t number = 1; failed && !HasFailure(); ++number) {
        failed = survives([&] { files_.failWrite = files_.writes() + number; },
                          "write " + std::to_string(number) + " of the flush failed");
        ASSERT_TRUE(failed || number > 10);
    }
}

TEST_P(DiskFailure, ALastingFailureIsThrownAndMadeGoodLater) {
    bool failed = true;
    for (std::uint64_t number = 1; failed && !HasFailure(); number += 3) {
        failed = survives([&] { files_.failWritesFrom = files_.writes() + number; },
                          "writes from " + std::to_string(number) + " on failed");
    }
}

TEST_P(DiskFailure, AFailedSyncIsThrownAndMadeGoodLater) {
    bool failed = true;
    std::uint64_t number = 1;
    for (; failed && !HasFailure(); ++number) {
        failed = survives([&] { files_.failSync = files_.syncs() + number; },
                          "sync " + std::to_string(number) + " failed");
    }
    EXPECT_GT(number, 4u) << "a flush has several syncs";
}

TEST_P(DiskFailure, ATornWriteIsWrittenAgain) {
    bool failed = true;
    for (std::uint64_t number = 1; failed && !HasFailure(); number += 2) {
        failed = survives([&] { files_.tearWrite = files_.writes() + number; },
                          "write " + std::to_string(number) + " was torn");
    }
}

TEST_P(DiskFailure, ShortWritesAreCompleted) {
    for (const std::uint64_t most : {1u, 100u, 2048u, 5000u}) {
        EXPECT_FALSE(survives([&] { files_.longestWrite = most; },
                              "writes of at most " + std::to_string(most) + " bytes"));
    }
}

TEST_P(DiskFailure, AFullDiskIsThrownAndMadeGoodLater) {
    for (const std::uint64_t more : {0u, 1000u, 4096u, 20000u}) {
        EXPECT_TRUE(survives([&] { files_.capacity = start_.size() + more; },
                             "room for " + std::to_string(more) + " bytes more"));
    }
}

/// The cache is too small for the changes, so that they are written while rows are stored.
TEST_P(DiskFailure, AFailureInTheMiddleOfASaveLosesNoEarlierRow) {
    for (std::uint64_t number = 1; number < 400 && !HasFailure(); number += 7) {
        reset();
        ItemModel model = before_;
        files_.failWrite = number;
        bool failed = false;
        {
            ItemSession session(files_, path, model);
            for (std::int32_t id = 1000; id < 4000; ++id) {
                try {
                    session.insert(item(id));
                } catch (const base::Failure&) {
                    failed = true;
                    ASSERT_EQ(model.complaint(session.read(), ItemModel::Accept::AnySinceFlush),
                              "");
                    model.adopt(session.read());
                }
            }
            files_.heal();
            session.close();
        }
        const jet::CheckReport report = jet::checkDatabase(files_, path);
        ASSERT_TRUE(report.isSound()) << number << "\n" << textOf(report);
        ItemSession session(files_, path, model);
        EXPECT_EQ(model.complaint(session.read(), ItemModel::Accept::Last), "") << number;
        EXPECT_GE(model.size(), 600u + 3000u - (failed ? 1 : 0)) << number;
    }
}

TEST_P(DiskFailure, AFileThatAnotherProgramHoldsIsInUseAfterAShortWait) {
    ItemModel model = before_;
    ItemSession session(files_, path, model, {.pageCacheBytes = 1, .lockWaitMilliseconds = 300});
    files_.refuseLocks = true;
    try {
        session.insert(item(7000));
        ADD_FAILURE() << "stored in spite of the lock";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::InUse);
    }
    EXPECT_GE(files_.pausedMilliseconds, 300);
    EXPECT_LE(files_.pausedMilliseconds, 600);
    EXPECT_EQ(before_.complaint(session.read(), ItemModel::Accept::Last), "");
    files_.heal();
    session.insert(item(7001));
    session.close();
}

TEST_P(DiskFailure, AFileThatMayNotBeWrittenIsReadAndItsChangeRefused) {
    files_.unwritable.insert(path);
    ItemModel model = before_;
    ItemSession session(files_, path, model);
    EXPECT_EQ(before_.complaint(session.read(), ItemModel::Accept::Last), "");
    try {
        session.insert(item(7000));
        ADD_FAILURE() << "stored in a read-only file";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::ReadOnly);
    }
    EXPECT_EQ(files_.read(path), start_);
}

INSTANTIATE_TEST_SUITE_P(Formats, DiskFailure,
                         testing::Values(jet::FileFormat::Jet3, jet::FileFormat::Jet4),
                         [](const auto& format) {
                             return format.param == jet::FileFormat::Jet3 ? "Jet3" : "Jet4";
                         });

}  // namespace jet_test
