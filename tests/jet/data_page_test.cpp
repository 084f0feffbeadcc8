#include "jet/data_page.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/jet/hexadecimal.h"

namespace jet_test {
namespace {

using jet::ByteSpan;
using jet::DataPage;
using Kind = DataPage::RowKind;

const jet::Format* const formats[] = {&jet::jet3Format, &jet::jet4Format};

class DataPageTest : public testing::TestWithParam<const jet::Format*> {
  protected:
    DataPageTest() {
        memory.bytes = std::make_unique<std::uint8_t[]>(format().pageSize);
        page.emplace(format(), memory);
        page->initialise(77);
    }

    const jet::Format& format() const { return *GetParam(); }
    std::uint32_t insert(std::string_view row) { return page->insert(jet::asBytes(row)); }
    void replace(std::uint32_t slot, std::string_view row, Kind kind = Kind::Live) {
        page->replace(slot, jet::asBytes(row), kind);
    }
    std::string text(std::uint32_t slot) const { return std::string(jet::asText(page->row(slot))); }
    /// The lowest start of a row, less the header and the slots.
    std::uint32_t gap() const {
        std::uint32_t lowest = format().pageSize;
        for (std::uint32_t slot = 0; slot < page->slotCount(); ++slot) {
            lowest = static_cast<std::uint32_t>(page->row(slot).data() - memory.bytes.get());
        }
        return lowest - format().dataHeader - 2 * page->slotCount();
    }

    jet::Page memory;
    std::optional<DataPage> page;
};

INSTANTIATE_TEST_SUITE_P(Formats, DataPageTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

TEST_P(DataPageTest, FreshPageIsEmpty) {
    EXPECT_TRUE(page->wellFormed());
    EXPECT_EQ(page->owner(), 77u);
    EXPECT_EQ(page->slotCount(), 0u);
    EXPECT_EQ(page->freeBytes(), format().pageSize - format().dataHeader);
}

TEST_P(DataPageTest, RowsLieDownwardFromTheEnd) {
    EXPECT_EQ(insert("first"), 0u);
    EXPECT_EQ(insert("second one"), 1u);
    EXPECT_EQ(page->row(0).data(), memory.bytes.get() + format().pageSize - 5);
    EXPECT_EQ(page->row(1).data(), memory.bytes.get() + format().pageSize - 15);
    EXPECT_EQ(page->freeBytes(), format().pageSize - format().dataHeader - 15 - 4);
}

TEST_P(DataPageTest, ReplacingSlidesTheRowsBelow) {
    insert("aaaa");
    insert("bbbb");
    insert("cccc");
    replace(0, "a longer row");
    EXPECT_EQ(text(0), "a longer row");
    EXPECT_EQ(text(1), "bbbb");
    EXPECT_EQ(text(2), "cccc");
    replace(1, "");
    EXPECT_EQ(text(0), "a longer row");
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(text(2), "cccc");
    EXPECT_EQ(page->freeBytes(), gap());
}

TEST_P(DataPageTest, ReplacingKeepsTheKindsOfTheOthers) {
    insert("aaaa");
    page->insert(jet::asBytes("bbbb"), Kind::Moved);
    insert("cccc");
    page->erase(2);
    replace(0, "a", Kind::Pointer);
    EXPECT_EQ(page->kind(0), Kind::Pointer);
    EXPECT_EQ(page->kind(1), Kind::Moved);
    EXPECT_EQ(page->kind(2), Kind::Deleted);
}

TEST_P(DataPageTest, ErasedRowGivesItsSpaceBackWhenSqueezed) {
    insert("aaaa");
    insert("bbbb");
    insert("cccc");
    const std::uint32_t before = page->freeBytes();
    page->erase(1);
    EXPECT_TRUE(memory.squeezePending);
    EXPECT_EQ(page->freeBytes(), before);
    page->squeeze();
    EXPECT_EQ(page->freeBytes(), before + 4);
    EXPECT_EQ(page->slotCount(), 3u);
    EXPECT_EQ(page->kind(1), Kind::Deleted);
    EXPECT_EQ(text(0), "aaaa");
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(text(2), "cccc");
}

TEST_P(DataPageTest, SlotOfAnErasedRowIsNotUsedAgain) {
    insert("aaaa");
    page->erase(0);
    page->squeeze();
    EXPECT_EQ(insert("bbbb"), 1u);
}

TEST_P(DataPageTest, RowFitsToTheLastByte) {
    const std::uint32_t room = page->freeBytes() - 2;
    EXPECT_TRUE(page->fits(room));
    EXPECT_FALSE(page->fits(room + 1));
    insert(std::string(room, 'x'));
    EXPECT_EQ(page->freeBytes(), 0u);
    EXPECT_TRUE(page->wellFormed());
    EXPECT_FALSE(page->fits(0));
}

TEST_P(DataPageTest, HoldsTwoHundredAndFiftyFiveRows) {
    for (int i = 0; i < 255; ++i) {
        ASSERT_TRUE(page->fits(1));
        insert("x");
    }
    EXPECT_FALSE(page->fits(1));
    EXPECT_EQ(page->slotCount(), 255u);
}

TEST_P(DataPageTest, SlotBoundsThatMakeNoSenseGiveNoRow) {
    insert("aaaa");
    insert("bbbb");
    jet::put16(memory.bytes.get() + format().dataHeader + 2, 3);
    EXPECT_FALSE(page->wellFormed());
    EXPECT_EQ(page->row(1).data(), nullptr);
    EXPECT_EQ(page->row(2).data(), nullptr);
    jet::put16(memory.bytes.get() + format().slotCountOffset, 0xFFFF);
    EXPECT_EQ(page->row(0).data(), nullptr);
}

TEST_P(DataPageTest, RandomChangesAgreeWithAModel) {
    struct ModelRow {
        std::string text;
        Kind kind;
    };
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        page->initialise(5);
        std::vector<ModelRow> model;
        for (int step = 0; step < 400; ++step) {
            const std::string row(random() % 60, static_cast<char>('a' + random() % 26));
            const auto kind = static_cast<Kind>(random() % 3);
            const auto slot =
                static_cast<std::uint32_t>(model.empty() ? 0 : random() % model.size());
            switch (random() % 5) {
                case 0:
                case 1:
                    if (page->fits(row.size())) {
                        ASSERT_EQ(page->insert(jet::asBytes(row), kind), model.size());
                        model.push_back({row, kind});
                    }
                    break;
                case 2:
                    if (!model.empty() && model[slot].kind != Kind::Deleted &&
                        page->canReplace(slot, row.size())) {
                        replace(slot, row, kind);
                        model[slot] = {row, kind};
                    }
                    break;
                case 3:
                    if (!model.empty()) {
                        page->erase(slot);
                        model[slot].kind = Kind::Deleted;
                    }
                    break;
                default:
                    page->squeeze();
                    for (ModelRow& erased : model) {
                        if (erased.kind == Kind::Deleted) {
                            erased.text.clear();
                        }
                    }
            }
            ASSERT_TRUE(page->wellFormed());
            ASSERT_EQ(page->slotCount(), model.size());
            ASSERT_EQ(page->freeBytes(), gap());
        }
        for (std::uint32_t i = 0; i < model.size(); ++i) {
            ASSERT_EQ(text(i), model[i].text);
            ASSERT_EQ(page->kind(i), model[i].kind);
        }
    }
}

}  // namespace
}  // namespace jet_test
