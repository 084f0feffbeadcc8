#include <gtest/gtest.h>

#include <random>

#include "jet/row_builder.h"
#include "jet/row_view.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/hexadecimal.h"

// Building a row and taking one apart, for both formats.

namespace jet_test {
namespace {

using jet::ByteSpan;
using jet::StoredColumn;
using jet::StoredTable;

StoredColumn column(jet::DataType type, std::uint16_t number, bool fixed, std::uint16_t place,
                    std::uint16_t length) {
    StoredColumn column;
    column.field.name = "c" + std::to_string(number);
    column.field.type = type;
    column.number = number;
    column.fixed = fixed;
    (fixed ? column.fixedOffset : column.variableIndex) = place;
    column.length = length;
    return column;
}

/// A Long, then texts.
StoredTable tableOfTexts(std::uint16_t texts) {
    StoredTable table;
    table.name = "t";
    table.columns.push_back(column(jet::DataType::Long, 0, true, 0, 4));
    for (std::uint16_t i = 0; i < texts; ++i) {
        table.columns.push_back(
            column(jet::DataType::Text, static_cast<std::uint16_t>(i + 1), false, i, 510));
    }
    table.columnsEver = static_cast<std::uint16_t>(texts + 1);
    table.variableEver = texts;
    return table;
}

const jet::Format* const formats[] = {&jet::jet3Format, &jet::jet4Format};

class RowTest : public testing::TestWithParam<const jet::Format*> {
  protected:
    const jet::Format& format() const { return *GetParam(); }

    void parse(const StoredTable& table, const std::string& bytes) {
        kept = bytes;
        ASSERT_TRUE(view.parse(format(), table.variableEver != 0, jet::asBytes(kept)));
    }
    std::string text(const StoredTable& table, std::size_t position) const {
        return std::string(jet::asText(view.bytes(table.columns[position])));
    }

    std::string kept;
    jet::RowView view;
};

INSTANTIATE_TEST_SUITE_P(Formats, RowTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

std::string built(jet::RowBuilder& builder) { return std::string(jet::asText(builder.build())); }

TEST_P(RowTest, EveryLengthOfOneTextIsReadBack) {
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(format(), table);
    for (std::size_t length = 0;; ++length) {
        const std::string content(length, 'q');
        builder.clear();
        builder.setBytes(1, content);
        std::string row;
        try {
            row = built(builder);
        } catch (const base::EngineFailure&) {
            EXPECT_GT(length, format().maximumRow - 30);
            break;
        }
        parse(table, row);
        ASSERT_EQ(text(table, 1), content) << length;
        ASSERT_TRUE(view.offsetsInOrder());
        ASSERT_LE(row.size(), format().maximumRow);
    }
}

TEST_P(RowTest, EveryRowLengthOccurs) {
    const StoredTable table = tableOfTexts(3);
    jet::RowBuilder builder(format(), table);
    std::size_t previous = 0;
    for (std::size_t length = 0; previous < format().maximumRow; ++length) {
        builder.clear();
        builder.setBytes(1, std::string(length / 2, 'a'));
        builder.setBytes(2, "");
        builder.setBytes(3, std::string(length - length / 2, 'b'));
        const std::string row = built(builder);
        // A byte more of data is a byte more of row, and at some lengths one more of jump table.
        ASSERT_TRUE(previous == 0 || row.size() - previous <= 2) << length;
        parse(table, row);
        ASSERT_EQ(text(table, 1).size(), length / 2);
        ASSERT_EQ(text(table, 2), "");
        ASSERT_EQ(text(table, 3).size(), length - length / 2);
        previous = row.size();
    }
}

TEST_P(RowTest, RandomRowsAreReadBackAndRebuiltIdentically) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const auto texts = static_cast<std::uint16_t>(1 + random() % 20);
        const StoredTable table = tableOfTexts(texts);
        jet::RowBuilder builder(format(), table);
        std::vector<std::optional<std::string>> values;
        const std::size_t most = format().maximumRow / texts - 8;
        builder.setBytes(0, "abcd");
        for (std::size_t i = 1; i <= texts; ++i) {
            const bool null = random() % 4 == 0;
            values.push_back(
                null ? std::nullopt
                     : std::optional(std::string(random() % 3 == 0 ? 0 : random() % most,
                                                 static_cast<char>('a' + random() % 26))));
            null ? builder.setNull(i) : builder.setBytes(i, *values.back());
        }
        const std::string row = built(builder);
        parse(table, row);
        ASSERT_EQ(text(table, 0), "abcd");
        for (std::size_t i = 1; i <= texts; ++i) {
            ASSERT_EQ(view.isPresent(table.columns[i].number), values[i - 1].has_value());
            ASSERT_EQ(text(table, i), values[i - 1].value_or(""));
        }
        jet::RowBuilder again(format(), table);
        again.load(view);
        ASSERT_EQ(toHex(built(again)), toHex(row));
    }
}

TEST_P(RowTest, NullAndEmptyTextAreTwoThings) {
    const StoredTable table = tableOfTexts(2);
    jet::RowBuilder builder(format(), table);
    builder.setBytes(1, "");
    builder.setNull(2);
    parse(table, built(builder));
    EXPECT_TRUE(view.isPresent(1));
    EXPECT_FALSE(view.isPresent(2));
    EXPECT_EQ(text(table, 1), "");
    EXPECT_EQ(text(table, 2), "");
}

TEST_P(RowTest, NullNumberKeepsItsPlace) {
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(format(), table);
    builder.setBytes(1, "x");
    const std::size_t without = built(builder).size();
    builder.setBytes(0, "abcd");
    EXPECT_EQ(built(builder).size(), without);
}

TEST_P(RowTest, SettingAgainReplaces) {
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(format(), table);
    builder.setBytes(1, "first and long");
    builder.setBytes(1, "second");
    parse(table, built(builder));
    EXPECT_EQ(text(table, 1), "second");
    builder.setNull(1);
    parse(table, built(builder));
    EXPECT_FALSE(view.isPresent(1));
}

TEST_P(RowTest, ColumnAddedAfterTheRowIsNull) {
    const StoredTable before = tableOfTexts(2);
    jet::RowBuilder builder(format(), before);
    builder.setBytes(1, "one");
    builder.setBytes(2, "two");
    const std::string row = built(builder);
    const StoredTable after = tableOfTexts(12);
    parse(after, row);
    EXPECT_EQ(text(after, 2), "two");
    for (std::size_t i = 3; i <= 12; ++i) {
        EXPECT_FALSE(view.isPresent(after.columns[i].number));
        EXPECT_EQ(text(after, i), "");
    }
}

TEST_P(RowTest, DeletedColumnLeavesAnEmptySlice) {
    StoredTable table = tableOfTexts(3);
    table.columns.erase(table.columns.begin() + 2);
    jet::RowBuilder builder(format(), table);
    builder.setBytes(1, "one");
    builder.setBytes(2, "three");
    parse(table, built(builder));
    EXPECT_EQ(text(table, 1), "one");
    EXPECT_EQ(text(table, 2), "three");
    EXPECT_FALSE(view.isPresent(2));
}

TEST_P(RowTest, BooleanIsItsBitOfTheMask) {
    StoredTable table = tableOfTexts(1);
    table.columns.push_back(column(jet::DataType::Boolean, 2, true, 0, 1));
    table.columnsEver = 3;
    jet::RowBuilder builder(format(), table);
    const std::string no = built(builder);
    builder.setBoolean(2, true);
    const std::string yes = built(builder);
    EXPECT_EQ(no.size(), yes.size());
    EXPECT_EQ(static_cast<unsigned char>(no.back()) ^ static_cast<unsigned char>(yes.back()), 4);
}

TEST_P(RowTest, TableWithoutVariableColumnsHasNoTrailerButTheMask) {
    StoredTable table = tableOfTexts(0);
    jet::RowBuilder builder(format(), table);
    builder.setBytes(0, "abcd");
    const std::string row = built(builder);
    EXPECT_EQ(row.size(), format().rowCountField + 4u + 1u);
    parse(table, row);
    EXPECT_EQ(text(table, 0), "abcd");
}

TEST_P(RowTest, RowThatIsTooLongNamesTheTable) {
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(format(), table);
    builder.setBytes(1, std::string(format().maximumRow, 'x'));
    std::string text;
    EXPECT_EQ(faultOf([&] { builder.build(); }, &text), base::EngineFault::Value);
    EXPECT_NE(text.find("table t "), std::string::npos) << text;
}

TEST_P(RowTest, FixedValueOfAnOddWidthIsRefused) {
    StoredTable table = tableOfTexts(1);
    table.columns[0].length = 2;
    jet::RowBuilder builder(format(), table);
    EXPECT_EQ(faultOf([&] { builder.setBytes(0, "abcd"); }), base::EngineFault::Damaged);
}

TEST_P(RowTest, CutRowsAreRefusedOrReadWithinTheirBounds) {
    const StoredTable table = tableOfTexts(4);
    jet::RowBuilder builder(format(), table);
    for (std::size_t i = 1; i <= 4; ++i) {
        builder.setBytes(i, std::string(90, 'x'));
    }
    const std::string row = built(builder);
    for (std::size_t length = 0; length < row.size(); ++length) {
        const std::vector<std::uint8_t> cut(row.begin(),
                                            row.begin() + static_cast<std::ptrdiff_t>(length));
        jet::RowView part;
        if (part.parse(format(), true, cut)) {
            for (const StoredColumn& stored : table.columns) {
                EXPECT_LE(part.bytes(stored).size(), length);
            }
        }
    }
}

TEST_P(RowTest, RandomBytesAreReadWithinTheirBounds) {
    std::mt19937 random(3);
    const StoredTable table = tableOfTexts(9);
    for (int round = 0; round < 20000; ++round) {
        std::vector<std::uint8_t> bytes(random() % 600);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random() % 3 == 0 ? random() : random() % 16);
        }
        jet::RowView part;
        if (part.parse(format(), true, bytes)) {
            part.offsetsInOrder();
            for (const StoredColumn& stored : table.columns) {
                ASSERT_LE(part.bytes(stored).size(), bytes.size());
                part.isPresent(stored.number);
            }
        }
    }
}

// ---------------------------------------------------------------------------------------------------
// Single rows of Jet 3, whose offsets have one byte and a table of the 256-byte blocks.

TEST(Jet3Row, OffsetsBeyondABlockAreFoundByTheJumpTable) {
    const StoredTable table = tableOfTexts(3);
    jet::RowBuilder builder(jet::jet3Format, table);
    builder.setBytes(1, std::string(200, 'a'));
    builder.setBytes(2, std::string(200, 'b'));
    builder.setBytes(3, std::string(200, 'c'));
    const std::string row = built(builder);
    // Offsets 5, 205, 405 and 605; the row is 614 bytes long, so there are two jumps.
    ASSERT_EQ(row.size(), 605u + 4 + 2 + 1 + 1);
    EXPECT_EQ(toHex(row.substr(605)), toHex(fromHex("5d 95 cd 05 | 03 02 | 03 | 0e")));
}

TEST(Jet3Row, JumpWithoutAnOffsetInItsBlockIsFf) {
    // 250 bytes of data: the last offset is 255, and the trailer makes the row longer than 256.
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(jet::jet3Format, table);
    builder.setBytes(1, std::string(250, 'a'));
    const std::string row = built(builder);
    ASSERT_EQ(row.size(), 255u + 2 + 1 + 1 + 1);
    EXPECT_EQ(toHex(row.substr(255)), toHex(fromHex("ff 05 | ff | 01 | 02")));
    jet::RowView view;
    ASSERT_TRUE(view.parse(jet::jet3Format, true, jet::asBytes(row)));
    EXPECT_EQ(view.variable(0).size(), 250u);
}

TEST(Jet3Row, ShortRowHasNoJumpTable) {
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(jet::jet3Format, table);
    builder.setBytes(1, "abc");
    EXPECT_EQ(toHex(built(builder)), toHex(fromHex("02 00000000 616263 08 05 01 02")));
}

TEST(Jet4Row, PaddingBeforeTheOffsetsIsSkipped) {
    const StoredTable table = tableOfTexts(1);
    jet::RowBuilder builder(jet::jet4Format, table);
    builder.setBytes(1, "abcd");
    std::string row = built(builder);
    row.insert(2 + 4 + 4, "junk");
    jet::RowView view;
    ASSERT_TRUE(view.parse(jet::jet4Format, true, jet::asBytes(row)));
    EXPECT_EQ(jet::asText(view.variable(0)), "abcd");
}

}  // namespace
}  // namespace jet_test
