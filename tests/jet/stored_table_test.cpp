#include "jet/stored_table.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "jet/property_block.h"
#include "jet/system_tables.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"
#include "tests/jet/hexadecimal.h"
#include "tests/jet/memory_pages.h"
#include "tests/jet/sample_files.h"

// Table definitions and the properties of their columns.

namespace jet_test {
namespace {

using base::EngineFault;
using jet::StoredTable;

const jet::Format* const formats[] = {&jet::jet3Format, &jet::jet4Format};

class StoredTableTest : public testing::TestWithParam<const jet::Format*> {
  protected:
    const jet::Format& format() const { return *GetParam(); }

    /// Puts a definition on pages from 2 on, and reads it again.
    StoredTable readBack(MemoryPages& memory, StoredTable table) {
        std::vector<std::size_t> order(table.columns.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        const std::string bytes = table.build(format(), order);
        table.pages.clear();
        for (std::size_t room = 0; room < bytes.size() + 8 * table.pages.size();
             room += format().pageSize) {
            table.pages.push_back(static_cast<std::uint32_t>(2 + table.pages.size()));
            memory.pages->create(table.pages.back());
        }
        table.place(*memory.pages, bytes);
        return StoredTable::read(*memory.pages, 2, table.name);
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, StoredTableTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

void expectEqual(const StoredTable& left, const StoredTable& right) {
    EXPECT_EQ(left.definition().fields.size(), right.definition().fields.size());
    for (std::size_t i = 0; i < std::min(left.columns.size(), right.columns.size()); ++i) {
        const jet::StoredColumn& a = left.columns[i];
        const jet::StoredColumn& b = right.columns[i];
        EXPECT_EQ(a.field.name, b.field.name);
        EXPECT_EQ(a.field.type, b.field.type);
        EXPECT_EQ(a.number, b.number);
        EXPECT_EQ(a.fixed, b.fixed);
        EXPECT_EQ(a.fixed ? a.fixedOffset : a.variableIndex,
                  b.fixed ? b.fixedOffset : b.variableIndex);
        EXPECT_EQ(a.length, b.length);
        EXPECT_EQ(a.flags, b.flags);
        EXPECT_EQ(a.compressed, b.compressed);
        EXPECT_EQ(a.ownedMap, b.ownedMap);
        EXPECT_EQ(a.freeMap, b.freeMap);
    }
    ASSERT_EQ(left.indexes.size(), right.indexes.size());
    for (std::size_t i = 0; i < left.indexes.size(); ++i) {
        EXPECT_EQ(left.indexes[i].columns, right.indexes[i].columns);
        EXPECT_EQ(left.indexes[i].map, right.indexes[i].map);
        EXPECT_EQ(left.indexes[i].rootPage, right.indexes[i].rootPage);
        EXPECT_EQ(left.indexes[i].flags, right.indexes[i].flags);
        EXPECT_EQ(left.indexes[i].entriesEver, right.indexes[i].entriesEver);
    }
    EXPECT_EQ(left.definition().indexes, right.definition().indexes);
    EXPECT_EQ(left.rowCount, right.rowCount);
    EXPECT_EQ(left.lastAutoNumber, right.lastAutoNumber);
    EXPECT_EQ(left.type, right.type);
    EXPECT_EQ(left.columnsEver, right.columnsEver);
    EXPECT_EQ(left.variableEver, right.variableEver);
    EXPECT_EQ(left.ownedMap, right.ownedMap);
    EXPECT_EQ(left.freeMap, right.freeMap);
}

TEST_P(StoredTableTest, SystemTablesAreReadAsTheyWereBuilt) {
    for (StoredTable table : jet::systemTables(format())) {
        MemoryPages memory(format());
        table.rowCount = 12345;
        table.lastAutoNumber = 77;
        table.ownedMap = {6, 3};
        table.freeMap = {6, 4};
        std::uint8_t slot = 10;
        for (jet::StoredColumn& column : table.columns) {
            if (jet::isLongValue(column.field.type)) {
                column.ownedMap = {7, slot++};
                column.freeMap = {7, slot++};
            }
        }
        for (jet::StoredIndex& index : table.indexes) {
            index.map = {8, slot++};
            index.rootPage = slot;
            index.entriesEver = slot;
        }
        expectEqual(readBack(memory, table), table);
    }
}

TEST_P(StoredTableTest, SystemTablesHaveTheLengthsOfTheOriginal) {
    const std::vector<std::size_t> jet3{708, 223, 319, 526};
    const std::vector<std::size_t> jet4{1050, 335, 525, 813};
    std::vector<std::size_t> lengths;
    for (const StoredTable& table : jet::systemTables(format())) {
        std::vector<std::size_t> order(table.columns.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        lengths.push_back(table.build(format(), order).size());
    }
    EXPECT_EQ(lengths, format().isJet4() ? jet4 : jet3);
}

TEST_P(StoredTableTest, LongDefinitionIsSpreadOverPages) {
    StoredTable table;
    table.name = "wide";
    for (std::uint16_t i = 0; i < 255; ++i) {
        jet::StoredColumn column;
        column.field.name = "a rather long name of a column, number " + std::to_string(i);
        column.field.type = jet::DataType::Text;
        column.number = column.variableIndex = i;
        column.length = 100;
        column.flags = 2;
        table.columns.push_back(column);
    }
    table.columnsEver = table.variableEver = 255;
    MemoryPages memory(format());
    const StoredTable read = readBack(memory, table);
    EXPECT_GT(read.pages.size(), 5u);
    expectEqual(read, table);
}

class DamagedDefinitionTest : public StoredTableTest {
  protected:
    DamagedDefinitionTest() : memory(format()) {
        StoredTable table = jet::systemTables(format())[0];
        table.pages = {2};
        readBack(memory, table);
        page = memory.pages->read(2);
    }
    std::string failure() {
        std::string text;
        EXPECT_EQ(faultOf([&] { StoredTable::read(*memory.pages, 2, "t"); }, &text),
                  EngineFault::Damaged);
        EXPECT_NE(text.find("page "), std::string::npos) << text;
        return text;
    }
    /// Where the descriptors begin.
    std::uint32_t firstColumn() const {
        return format().definitionHeader + 2 * format().indexCounter;
    }

    MemoryPages memory;
    jet::PageHandle page;
};

INSTANTIATE_TEST_SUITE_P(Formats, DamagedDefinitionTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

TEST_P(DamagedDefinitionTest, LengthBeyondThePages) {
    jet::put32(page.bytes() + 8, 0x7FFFFFFF);
    failure();
}

TEST_P(DamagedDefinitionTest, LengthThatCutsTheColumns) {
    jet::put32(page.bytes() + 8, format().definitionHeader + 40);
    failure();
}

TEST_P(DamagedDefinitionTest, MoreColumnsThanAnyTableHas) {
    jet::put16(page.bytes() + format().tableTypeOffset + 5, 20000);
    failure();
}

TEST_P(DamagedDefinitionTest, MoreIndexesThanAnyTableHas) {
    jet::put32(page.bytes() + format().tableTypeOffset + 11, 0xFFFFFFFF);
    failure();
}

TEST_P(DamagedDefinitionTest, ChainThatLeadsBack) {
    jet::put32(page.bytes() + 4, 2);
    EXPECT_NE(failure().find("loop"), std::string::npos);
}

TEST_P(DamagedDefinitionTest, ChainThatLeavesTheFile) {
    jet::put32(page.bytes() + 4, 99999);
    EXPECT_NE(failure().find("99999"), std::string::npos);
}

TEST_P(DamagedDefinitionTest, PageOfAnotherKind) {
    page.bytes()[0] = 1;
    failure();
}

TEST_P(DamagedDefinitionTest, TwoColumnsOfOneNumber) {
    const std::uint32_t number = format().isJet4() ? 5 : 1;
    jet::put16(page.bytes() + firstColumn() + format().columnDescriptor + number, 0);
    failure();
}

TEST_P(DamagedDefinitionTest, FixedColumnOutsideTheRow) {
    const std::uint32_t offset = format().isJet4() ? 21 : 14;
    jet::put16(page.bytes() + firstColumn() + offset, 0xFFFF);
    failure();
}

TEST_P(DamagedDefinitionTest, FlippedBytesNeverGoUnnoticedBeyondTheDefinition) {
    const std::vector<std::uint8_t> sound(page.bytes(), page.bytes() + format().pageSize);
    std::mt19937 random(9);
    int read = 0;
    for (int round = 0; round < 20000; ++round) {
        std::copy(sound.begin(), sound.end(), page.bytes());
        for (int flips = 0; flips < 3; ++flips) {
            page.bytes()[random() % 1100] = static_cast<std::uint8_t>(random());
        }
        try {
            const StoredTable table = StoredTable::read(*memory.pages, 2, "t");
            ASSERT_LE(table.fixedAreaSize(), format().pageSize);
            ASSERT_LE(table.columns.size(), 255u);
            ++read;
        } catch (const base::EngineFailure& failure) {
            ASSERT_EQ(failure.fault(), EngineFault::Damaged);
        }
    }
    EXPECT_GT(read, 0);
}

// ---------------------------------------------------------------------------------------------------

class PropertyBlockTest : public testing::TestWithParam<const jet::Format*> {
  protected:
    const jet::Format& format() const { return *GetParam(); }
    std::string block = jet::PropertyBlock::build(*GetParam(), mediaTable());
};

INSTANTIATE_TEST_SUITE_P(Formats, PropertyBlockTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

TEST_P(PropertyBlockTest, RequiredAndAllowZeroLengthAreReadBack) {
    jet::TableDefinition table = mediaTable();
    table.fields[0].required = true;
    table.fields[1].allowZeroLength = false;
    jet::TableDefinition read = mediaTable();
    EXPECT_TRUE(
        jet::PropertyBlock::apply(format(), jet::PropertyBlock::build(format(), table), read));
    EXPECT_EQ(read.fields, table.fields);
}

TEST_P(PropertyBlockTest, AnyNonZeroByteMeansTrue) {
    for (char& byte : block) {
        byte = byte == '\xFF' ? '\x01' : byte;
    }
    jet::TableDefinition table = mediaTable();
    table.fields[1].allowZeroLength = false;
    EXPECT_TRUE(jet::PropertyBlock::apply(format(), block, table));
    EXPECT_TRUE(table.fields[1].allowZeroLength);
}

TEST_P(PropertyBlockTest, BlockOfTheTableIsSkipped) {
    const std::size_t names = 4 + jet::get32(jet::asBytes(block).data() + 4);
    block.insert(names, fromHex("0c000000 0000 06000000 0000"));
    jet::TableDefinition table = mediaTable();
    table.fields[1].allowZeroLength = false;
    EXPECT_TRUE(jet::PropertyBlock::apply(format(), block, table));
    EXPECT_TRUE(table.fields[1].allowZeroLength);
}

TEST_P(PropertyBlockTest, UnknownColumnsAreNoDamage) {
    jet::TableDefinition table{"other", {longField("x")}, {}};
    EXPECT_TRUE(jet::PropertyBlock::apply(format(), block, table));
}

TEST_P(PropertyBlockTest, WrongMarkIsDamage) {
    block[0] = 'X';
    jet::TableDefinition table = mediaTable();
    EXPECT_FALSE(jet::PropertyBlock::apply(format(), block, table));
    EXPECT_FALSE(jet::PropertyBlock::apply(format(), "", table));
}

TEST_P(PropertyBlockTest, CutBlockIsDamage) {
    const std::size_t names = 4 + jet::get32(jet::asBytes(block).data() + 4);
    std::set<std::size_t> ends{4};  // between two blocks nothing seems to be missing
    for (std::size_t at = 4; at < block.size();) {
        at += jet::get32(jet::asBytes(block).data() + at);
        ends.insert(at);
    }
    EXPECT_TRUE(ends.contains(names));
    for (std::size_t length = 0; length < block.size(); ++length) {
        jet::TableDefinition table = mediaTable();
        EXPECT_EQ(jet::PropertyBlock::apply(format(), block.substr(0, length), table),
                  ends.contains(length))
            << length;
    }
}

TEST_P(PropertyBlockTest, LengthsThatAreTooSmallAreDamage) {
    jet::TableDefinition table = mediaTable();
    std::string damaged = block;
    damaged.replace(4, 4, fromHex("05000000"));
    EXPECT_FALSE(jet::PropertyBlock::apply(format(), damaged, table));
    damaged.replace(4, 4, fromHex("00000000"));
    EXPECT_FALSE(jet::PropertyBlock::apply(format(), damaged, table));
    damaged.replace(4, 4, fromHex("ffffffff"));
    EXPECT_FALSE(jet::PropertyBlock::apply(format(), damaged, table));
}

TEST_P(PropertyBlockTest, RandomBytesEndInTrueOrFalse) {
    std::mt19937 random(21);
    int damaged = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = block;
        for (int flips = 0; flips < 4; ++flips) {
            bytes[4 + random() % (bytes.size() - 4)] = static_cast<char>(random());
        }
        jet::TableDefinition table = mediaTable();
        damaged += jet::PropertyBlock::apply(format(), bytes, table) ? 0 : 1;
    }
    EXPECT_GT(damaged, 100);
}

}  // namespace
}  // namespace jet_test
