// Files that grow until their maps change form, that reuse what was freed, and that become full.

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "jet/bytes.h"
#include "jet/format.h"
#include "tests/jet/item_table.h"

namespace jet_test {

namespace {

using Decision = ItemSession::Decision;

const std::string path = "/archive.mdb";

}  // namespace

class Growth : public testing::TestWithParam<jet::FileFormat> {
  protected:
    const jet::Format& format() const {
        return GetParam() == jet::FileFormat::Jet3 ? jet::jet3Format : jet::jet4Format;
    }
    std::size_t pages() const { return files_.read(path).size() / format().pageSize; }
    /// First byte of the first row of page 1: 0 an inline map of free pages, 1 an indirect one.
    int formOfFreePageMap() const {
        const std::string content = files_.read(path);
        const auto* const page =
            reinterpret_cast<const std::uint8_t*>(content.data()) + format().pageSize;
        return page[jet::get16(page + format().dataHeader) & 0x1FFFu];
    }
    void expectSound() {
        const jet::CheckReport report = jet::checkDatabase(files_, path);
        ASSERT_TRUE(report.isSound()) << textOf(report);
        EXPECT_EQ(report.count(jet::CheckFinding::Kind::LostSpace), 0u) << textOf(report);
    }

    /// Notes fill pages quickly.
    static std::string note(std::uint32_t seed, std::size_t bytes) {
        return someText(seed, 64) + std::string(bytes, 'n');
    }

    support::FaultyFiles files_;
    ItemModel model_;
};

TEST_P(Growth, ATableOfMorePagesThanItsInlineMapReachesHasAnIndirectOne) {
    ItemSession::create(files_, path, GetParam());
    {
        ItemSession session(files_, path, model_, {});
        for (std::int32_t id = 0; id < (format().isJet4() ? 11000 : 10500); ++id) {
            session.insert({id, id % 3, someText(static_cast<std::uint32_t>(id), 240), ""});
        }
        session.close();
    }
    EXPECT_GT(pages(), (format().mapRow - 5) * 8);
    expectSound();
    ItemSession session(files_, path, model_, {});
    EXPECT_EQ(model_.complaint(session.read(), ItemModel::Accept::Last), "");
    session.deleteMedium(1);
    session.close();
    expectSound();
    ItemSession again(files_, path, model_, {});
    EXPECT_EQ(model_.complaint(again.read(), ItemModel::Accept::Last), "");
}

/// The cache is full of changed pages when a new page needs room in it; they can be written only
/// when the map of the notes has been, which needs a new page of its own just then.
TEST_P(Growth, MakingRoomForANewPageAllocatesOthers) {
    ItemSession::create(files_, path, GetParam());
    ItemSession session(files_, path, model_);
    const std::size_t reach = (format().mapRow - 5) * 8;
    session.insert({0, 0, "first", someText(0, 500)});
    for (std::int32_t id = 1; pages() < reach + 30; ++id) {
        session.insert({id, 0, someText(static_cast<std::uint32_t>(id), 200), ""});
        if (id % 50 == 0) {
            session.flush();
        }
    }
    session.flush();
    const std::int32_t last = 45 * (format().isJet4() ? 17 : 8);
    session.change([&](Item& item) {
        item.medium = 1;
        if (item.id == last) {
            item.note = someText(1, 40 * format().pageSize);
        }
        return item.id > 0 && item.id <= last ? Decision::Replace : Decision::Keep;
    });
    EXPECT_EQ(model_.complaint(session.read(), ItemModel::Accept::Last), "");
    session.close();
    expectSound();
    ItemSession again(files_, path, model_);
    EXPECT_EQ(model_.complaint(again.read(), ItemModel::Accept::Last), "");
}

TEST_P(Growth, FreedPagesAreUsedAgain) {
    ItemSession::create(files_, path, GetParam());
    std::size_t afterFirst = 0;
    for (int round = 0; round < 4; ++round) {
        ItemSession session(files_, path, model_, {});
        for (std::int32_t id = 0; id < 3000; ++id) {
            session.insert({round * 10000 + id, round,
                            someText(static_cast<std::uint32_t>(id), 100),
                            id % 50 == 0 ? someText(static_cast<std::uint32_t>(id), 3000) : ""});
        }
        session.close();
        if (round == 0) {
            afterFirst = pages();
        }
        ItemSession second(files_, path, model_, {});
        second.deleteMedium(round);
        second.close();
        expectSound();
    }
    EXPECT_LE(pages(), afterFirst + 8) << "the space of deleted rows was not used again";
}

/// 2 KB pages: 15,100 of them fill the room that page 1 has for the bitmap; 4 KB pages: 32,000.
TEST_P(Growth, TheMapOfFreePagesIsLengthenedAndThenIndirect) {
    ItemSession::create(files_, path, GetParam());
    const std::size_t lengthened = format().isJet4() ? 600 : 1200;
    const std::size_t indirect = format().isJet4() ? 33500 : 16500;
    std::int32_t id = 0;
    const auto growTo = [&](std::size_t wanted) {
        while (pages() < wanted) {
            ItemSession session(files_, path, model_, {});
            const std::size_t missing = (wanted - pages()) * format().pageSize;
            const std::size_t bytes = std::min<std::size_t>(missing + format().pageSize, 8u << 20);
            session.insert({id, id % 3, "big", note(static_cast<std::uint32_t>(id), bytes)});
            ++id;
            session.close();
        }
    };
    growTo(lengthened);
    EXPECT_EQ(formOfFreePageMap(), 0);
    expectSound();
    growTo(indirect);
    EXPECT_EQ(formOfFreePageMap(), 1);
    expectSound();
    ItemSession session(files_, path, model_, {});
    EXPECT_EQ(model_.complaint(session.read(), ItemModel::Accept::Last), "");
    session.deleteMedium(0);
    session.insert({100000, 1, "small", ""});
    session.close();
    expectSound();
    ItemSession again(files_, path, model_, {});
    EXPECT_EQ(model_.complaint(again.read(), ItemModel::Accept::Last), "");
}

TEST_P(Growth, AFullFileIsAFailureThatSaysSoAndStaysSound) {
    ItemSession::create(files_, path, GetParam());
    const jet::EngineOptions options{.pageCacheBytes = 1, .maximumPages = 300};
    {
        ItemSession session(files_, path, model_, options);
        try {
            for (std::int32_t id = 0; id < 100000; ++id) {
                session.insert(
                    {id, id % 3, someText(static_cast<std::uint32_t>(id), 200),
                     id % 20 == 0 ? someText(static_cast<std::uint32_t>(id), 2500) : ""});
            }
            ADD_FAILURE() << "the file never became full";
        } catch (const base::EngineFailure& failure) {
            EXPECT_EQ(failure.fault(), base::EngineFault::Full);
            EXPECT_NE(failure.text().find("size limit"), std::string::npos);
        }
        const auto rows = session.read();
        EXPECT_EQ(model_.complaint(rows, ItemModel::Accept::AnySinceFlush), "");
        model_.adopt(rows);
        session.close();
    }
    EXPECT_LE(pages(), 300u);
    // The value of the record that was refused may have been stored before the record was.
    ASSERT_TRUE(jet::checkDatabase(files_, path).isSound());
    ItemSession session(files_, path, model_, options);
    EXPECT_EQ(model_.complaint(session.read(), ItemModel::Accept::Last), "");
    // What is deleted makes room.
    session.deleteMedium(1);
    session.flush();
    for (std::int32_t id = 200000; id < 200200; ++id) {
        session.insert({id, 0, someText(static_cast<std::uint32_t>(id), 200), ""});
    }
    session.close();
    ASSERT_TRUE(jet::checkDatabase(files_, path).isSound());
}

INSTANTIATE_TEST_SUITE_P(Formats, Growth,
                         testing::Values(jet::FileFormat::Jet3, jet::FileFormat::Jet4),
                         [](const auto& format) {
                             return format.param == jet::FileFormat::Jet3 ? "Jet3" : "Jet4";
                         });

}  // namespace jet_test
