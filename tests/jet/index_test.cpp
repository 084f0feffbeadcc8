#include <algorithm>
#include <functional>

#include "jet/index_key.h"
#include "jet/index_page.h"
#include "jet/stored_table.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/hexadecimal.h"
#include "tests/jet/memory_pages.h"
#include "tests/jet/sample_files.h"

// Keys of indexes, pages of index trees, and whole trees of files made by others.

namespace jet_test {
namespace {

std::string key4(const std::string& text) {
    std::string key;
    EXPECT_TRUE(jet::appendTextKey(jet::jet4Format, text, key)) << text;
    return toHex(key);
}

std::string key3(const std::string& text) {
    std::string key;
    EXPECT_TRUE(jet::appendTextKey(jet::jet3Format, text, key)) << text;
    return toHex(key);
}

std::string longKey(std::int32_t number) {
    std::string key;
    jet::appendLongKey(number, key);
    return toHex(key);
}

TEST(IndexKey, NumbersHaveTheirTopBitFlipped) {
    EXPECT_EQ(longKey(0), "7f80000000");
    EXPECT_EQ(longKey(0x0F000001), "7f8f000001");
    EXPECT_EQ(longKey(-1), "7f7fffffff");
    EXPECT_EQ(longKey(INT32_MIN), "7f00000000");
    EXPECT_EQ(longKey(INT32_MAX), "7fffffffff");
}

TEST(IndexKey, NumbersSortAsBytes) {
    const std::vector<std::int32_t> numbers{INT32_MIN, -70000, -2, -1, 0, 1, 255, 256, INT32_MAX};
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        EXPECT_LT(longKey(numbers[i - 1]), longKey(numbers[i]));
    }
}

TEST(IndexKey, Jet4Example) {
    EXPECT_EQ(key4("Tables"),
              "7f"
              "6d4a4c5e516b"
              "0100");
}
TEST(IndexKey, Jet3Example) {
    EXPECT_EQ(key3("Tables"),
              "7f"
              "776061"
              "6d6676"
              "00");
}

TEST(IndexKey, CaseIsIgnored) {
    EXPECT_EQ(key4("MSysDb"), key4("msysDB"));
    EXPECT_EQ(key3("MSysDb"), key3("msysDB"));
    EXPECT_EQ(key4("\u00C9t\u00E9"), key4("\u00E9T\u00C9"));
    EXPECT_EQ(key3("\u00C9t\u00E9"), key3("\u00E9T\u00C9"));
}

TEST(IndexKey, TrailingSpacesAreDropped) {
    EXPECT_EQ(key4("ab  "), key4("ab"));
    EXPECT_EQ(key3("ab  "), key3("ab"));
    EXPECT_NE(key4(" ab"), key4("ab"));
}

TEST(IndexKey, EmptyText) {
    EXPECT_EQ(key4(""), "7f0100");
    EXPECT_EQ(key3(""), "7f00");
    EXPECT_EQ(key4("   "), "7f0100");
}

TEST(IndexKey, DigitsAndSigns) {
    EXPECT_EQ(key4("a_1 2"),
              "7f"
              "4a2b033807"
              "3a"
              "0100");
    EXPECT_EQ(key3("a_1 2"),
              "7f"
              "602c5711"
              "58"
              "00");
}

TEST(IndexKey, Jet4AccentIsAnExtraByte) {
    // e acute in the second place: 02 stands for "none" before it, nothing behind it.
    EXPECT_EQ(key4("b\u00E9b"),
              "7f"
              "4c514c"
              "01"
              "020e"
              "00");
    EXPECT_EQ(key4("\u00E4\u00F6"),
              "7f"
              "4a64"
              "01"
              "1313"
              "00");
}

TEST(IndexKey, Jet4ExpansionCountsAsOnePosition) {
    EXPECT_EQ(key4("\u00DF\u00E9"),
              "7f"
              "6b6b51"
              "01"
              "020e"
              "00");
}

TEST(IndexKey, Jet4SymbolsOfTwoBytesCountAsOnePosition) {
    EXPECT_EQ(key4("{\u00E9"),
              "7f"
              "2b0951"
              "01"
              "020e"
              "00");
}

TEST(IndexKey, Jet4IgnorableCharacterIsListedWithItsPosition) {
    // The hyphen after two characters: 0x8000 | 7 + 4 * 2.
    EXPECT_EQ(key4("ab-c"),
              "7f"
              "4a4c4d"
              "01"
              "010101"
              "800f"
              "06"
              "82"
              "00");
    EXPECT_EQ(key4("'a"),
              "7f"
              "4a"
              "01"
              "010101"
              "8007"
              "06"
              "80"
              "00");
    EXPECT_EQ(key4("\u00AD"),
              "7f"
              "01"
              "010101"
              "8007"
              "06"
              "83"
              "00");
}

TEST(IndexKey, Jet4AccentAndIgnorableCharacterTogether) {
    EXPECT_EQ(key4("\u00E9-\x01"),
              "7f"
              "51"
              "01"
              "0e"
              "010101"
              "800b0682"
              "800b0603"
              "00");
}

TEST(IndexKey, Jet4CharacterWithoutAnOrderIsNotKnown) {
    std::string key = "before";
    EXPECT_FALSE(jet::appendTextKey(jet::jet4Format, "a\u0416", key));
    EXPECT_EQ(key, "before");
}

TEST(IndexKey, Jet3AccentsArePackedInNibbles) {
    // e acute: code 66, accent 4; the b is no position of its own.
    EXPECT_EQ(key3("\u00E9"),
              "7f"
              "66"
              "0400");
    EXPECT_EQ(key3("b\u00E9"),
              "7f"
              "6166"
              "0400");
    // A letter before the accent that counts as a position has 2; those behind it have nothing.
    EXPECT_EQ(key3("a\u00E9a"),
              "7f"
              "606660"
              "0240");
    EXPECT_EQ(key3("aa\u00E9"),
              "7f"
              "606066"
              "02240"
              "0");
}

TEST(IndexKey, Jet3ExpansionCountsAsTwoPositions) {
    EXPECT_EQ(key3("\u00C6\u00E9"),
              "7f"
              "606666"
              "02240"
              "0");
}

TEST(IndexKey, KeysSortAsTheirTexts) {
    const std::vector<std::string> texts{"", "_x", "1", "a", "a b", "ab", "b", "z"};
    for (std::size_t i = 1; i < texts.size(); ++i) {
        EXPECT_LT(key4(texts[i - 1]), key4(texts[i])) << texts[i];
        EXPECT_LT(key3(texts[i - 1]), key3(texts[i])) << texts[i];
    }
}

TEST(IndexKey, AtMostTwoHundredAndFiftyFiveCharactersCount) {
    EXPECT_EQ(key4(std::string(300, 'a')), key4(std::string(255, 'a')));
    EXPECT_EQ(key3(std::string(300, 'a')), key3(std::string(255, 'a')));
}

// ---------------------------------------------------------------------------------------------------

const jet::Format* const formats[] = {&jet::jet3Format, &jet::jet4Format};

class IndexPageTest : public testing::TestWithParam<const jet::Format*> {
  protected:
    const jet::Format& format() const { return *GetParam(); }
    std::vector<std::uint8_t> page = std::vector<std::uint8_t>(format().pageSize, 0xEE);
};

INSTANTIATE_TEST_SUITE_P(Formats, IndexPageTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

TEST_P(IndexPageTest, IsReadAsItWasWritten) {
    jet::IndexPage index;
    index.leaf = false;
    index.table = 2;
    index.previous = 8;
    index.next = 9;
    index.tail = 10;
    index.level = 1;
    index.entries = {"first entry", "second", "the third one"};
    index.write(format(), page.data());
    jet::IndexPage read;
    ASSERT_TRUE(jet::IndexPage::read(format(), page.data(), read));
    EXPECT_EQ(read.entries, index.entries);
    EXPECT_FALSE(read.leaf);
    EXPECT_EQ(read.table, 2u);
    EXPECT_EQ(read.previous, 8u);
    EXPECT_EQ(read.next, 9u);
    EXPECT_EQ(read.tail, 10u);
    EXPECT_EQ(read.level, 1);
}

TEST_P(IndexPageTest, EmptyLeafHasAllItsBytesFree) {
    jet::IndexPage().write(format(), page.data());
    EXPECT_EQ(jet::get16(page.data() + 2), format().isJet4() ? 0x0E20 : 0x0708);
    jet::IndexPage read;
    ASSERT_TRUE(jet::IndexPage::read(format(), page.data(), read));
    EXPECT_TRUE(read.entries.empty());
    EXPECT_TRUE(read.leaf);
}

TEST_P(IndexPageTest, CommonPrefixStandsInTheFirstEntryOnly) {
    jet::IndexPage index;
    index.entries = {"prefix-one", "two!", "three"};
    index.write(format(), page.data());
    page[format().isJet4() ? 24 : 20] = 7;
    jet::IndexPage read;
    ASSERT_TRUE(jet::IndexPage::read(format(), page.data(), read));
    EXPECT_EQ(read.entries,
              (std::vector<std::string>{"prefix-one", "prefix-two!", "prefix-three"}));
}

TEST_P(IndexPageTest, FitsToTheLastByte) {
    jet::IndexPage index;
    index.entries = {std::string(format().pageSize - format().indexEntries, 'k')};
    EXPECT_TRUE(index.fits(format()));
    index.write(format(), page.data());
    EXPECT_EQ(jet::get16(page.data() + 2), 0);
    jet::IndexPage read;
    ASSERT_TRUE(jet::IndexPage::read(format(), page.data(), read));
    EXPECT_EQ(read.entries, index.entries);
    index.entries.emplace_back("x");
    EXPECT_FALSE(index.fits(format()));
}

TEST_P(IndexPageTest, OtherPagesAreRefused) {
    jet::IndexPage read;
    EXPECT_FALSE(jet::IndexPage::read(format(), page.data(), read));
    page.assign(page.size(), 0);
    page[0] = 1;
    page[1] = 1;
    EXPECT_FALSE(jet::IndexPage::read(format(), page.data(), read));
}

TEST_P(IndexPageTest, MaskBeyondThePageIsRefused) {
    jet::IndexPage().write(format(), page.data());
    std::fill(page.begin() + format().indexMask, page.begin() + format().indexEntries, 0xFF);
    jet::IndexPage read;
    EXPECT_FALSE(jet::IndexPage::read(format(), page.data(), read));
}

// ---------------------------------------------------------------------------------------------------
// Trees made by the original engine.

class IndexTreeTest : public EngineTest {
  protected:
    void SetUp() override {
        if (sampleFolder().empty()) {
            GTEST_SKIP() << "the sample files are not there; VERDOLIN_JET_SAMPLES may name them";
        }
    }

    /// The entries of all leaves, and how many pages are nodes.
    struct Tree {
        std::vector<std::string> entries;
        int nodes = 0;
        int compressed = 0;  ///< leaves with a common prefix
    };

    static Tree walk(MemoryPages& memory, std::uint32_t root) {
        Tree tree;
        const std::function<void(std::uint32_t)> visit = [&](std::uint32_t number) {
            jet::IndexPage index;
            {
                const jet::PageHandle page = memory.pages->read(number);
                ASSERT_TRUE(jet::IndexPage::read(memory.pages->format(), page.bytes(), index));
                tree.compressed += page.bytes()[memory.pages->format().isJet4() ? 24 : 20] != 0;
            }
            if (index.leaf) {
                tree.entries.insert(tree.entries.end(), index.entries.begin(), index.entries.end());
                return;
            }
            ++tree.nodes;
            for (const std::string& entry : index.entries) {
                visit(jet::get32BigEndian(jet::asBytes(entry).data() + entry.size() - 4));
                EXPECT_EQ(tree.entries.back(), entry.substr(0, entry.size() - 4));
            }
            visit(index.tail);
        };
        visit(root);
        return tree;
    }

    std::uint32_t definitionPage(const std::string& path, const std::string& table) {
        OpenTable objects(engine, path, "MSysObjects", jet::LockType::ReadOnly);
        objects.rows.setFilter("Type='1' AND Name='" + table + "'");
        return static_cast<std::uint32_t>(objects.rows.integer(objects.rows.field("Id")));
    }
};

TEST_F(IndexTreeTest, AllRowsAreFoundThroughACompressedTree) {
    const std::string content = readFile(sampleFolder() + "/compindex-jet3.mdb");
    const std::string path = folder.makeFile("index.mdb", content);
    const std::uint32_t page = definitionPage(path, "Table1");
    MemoryPages memory(jet::jet3Format, content);
    const jet::StoredTable table = jet::StoredTable::read(*memory.pages, page, "Table1");
    ASSERT_EQ(table.indexes.size(), 1u);
    EXPECT_FALSE(table.indexes[0].columns[0].second);
    const Tree tree = walk(memory, table.indexes[0].rootPage);
    EXPECT_EQ(tree.nodes, 1);
    EXPECT_GT(tree.compressed, 0);
    ASSERT_EQ(tree.entries.size(), 512u);
    EXPECT_TRUE(std::is_sorted(tree.entries.begin(), tree.entries.end()));

    // Each entry is the key of the row that it names; the keys are made from the rows anew.
    std::vector<std::string> expected;
    OpenTable open(engine, path, "Table1", jet::LockType::ReadOnly);
    const int column = open.rows.field(
        table.columns[static_cast<std::size_t>(table.indexes[0].columns[0].first)].field.name);
    for (; !open.rows.endOfFile(); open.rows.moveNext()) {
        std::string key;
        if (open.rows.isNull(column)) {
            key = std::string(1, '\0');
        } else {
            jet::appendLongKey(open.rows.integer(column), key);
        }
        for (char& byte : key) {
            byte = static_cast<char>(~byte);  // the index is a descending one
        }
        expected.push_back(std::move(key));
    }
    std::sort(expected.begin(), expected.end());
    std::vector<std::string> keys;
    for (const std::string& entry : tree.entries) {
        keys.push_back(entry.substr(0, entry.size() - 4));
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
        ASSERT_EQ(toHex(keys[i]), toHex(expected[i])) << i;
    }
}

/// The catalog's index on (ParentId, Name) of a genuine file, made anew from the catalog's rows.
class CatalogIndexTest : public IndexTreeTest, public testing::WithParamInterface<const char*> {};

TEST_P(CatalogIndexTest, KeysOfTheCatalogAreThoseThatTheEngineMakes) {
    const std::string content = readFile(sampleFolder() + "/" + GetParam());
    const std::string path = folder.makeFile("catalog.mdb", content);
    const jet::Format& format = content[0x14] == 0 ? jet::jet3Format : jet::jet4Format;
    MemoryPages memory(format, content);
    const jet::StoredTable table = jet::StoredTable::read(*memory.pages, 2, "MSysObjects");
    const Tree tree = walk(memory, table.indexes[0].rootPage);
    std::vector<std::string> keys;
    for (const std::string& entry : tree.entries) {
        keys.push_back(toHex(entry.substr(0, entry.size() - 4)));
    }
    std::vector<std::string> expected;
    OpenTable objects(engine, path, "MSysObjects", jet::LockType::ReadOnly);
    for (; !objects.rows.endOfFile(); objects.rows.moveNext()) {
        std::string key;
        jet::appendLongKey(objects.rows.integer(objects.rows.field("ParentId")), key);
        ASSERT_TRUE(jet::appendTextKey(format, objects.rows.text(objects.rows.field("Name")), key));
        expected.push_back(toHex(key));
    }
    std::sort(keys.begin(), keys.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(keys, expected);
    EXPECT_GE(keys.size(), 8u);
}

INSTANTIATE_TEST_SUITE_P(Samples, CatalogIndexTest,
                         testing::Values("emptytables-jet3.mdb", "overflow-jet3.mdb",
                                         "compindex-jet3.mdb", "bigtdef-memo-jet3.mdb",
                                         "overflow-jet4.mdb", "deleted-jet4.mdb",
                                         "unicode-jet4.mdb", "bigtdef-memo-jet4.mdb",
                                         "empty-engine-jet4.mdb", "jackcess-jet4.mdb"),
                         [](const auto& test) {
                             std::string name = test.param;
                             std::replace_if(
                                 name.begin(), name.end(),
                                 [](char c) { return c == '-' || c == '.'; }, '_');
                             return name;
                         });

}  // namespace
}  // namespace jet_test
