#include <bit>

#include "jet/bytes.h"
#include "jet/property_block.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"
#include "tests/jet/hexadecimal.h"

// What the engine writes, byte by byte, held against worked examples of the format.

namespace jet_test {
namespace {

using jet::FileFormat;

const Row mediaRow{1, std::string("BACKUP_01"),  std::string(), 665600, std::string("CD-ROM"),
                   0, std::string("2003-05-12"), std::string(), 3};

std::vector<Row> mainRows() {
    const auto text = [](const char* value) { return jet::Value(std::string(value)); };
    const jet::Value null;
    return {
        {text("README.TXT"), text("\\"), text(""), text("TXT"), 1024, text("2003-01-31 08:00:00"),
         text("2003-02-01 09:15:30"), text(""), text(""), text(""), 1},
        {text("Caf\u00E9.jpg"), text("\\photos\\"), text("photos"), text("jpg"), 204800, null,
         text("2002-12-24 18:00:00"), text("x"), null, text("ab"), 1},
        {text("\u0416\u0430.txt"), text("\\"), text(""), text("txt"), null, text(""), text(""),
         null, text(""), null, 1},
    };
}

class WorkedExampleTest : public EngineTest {
  protected:
    void build(FileFormat format) {
        jet::CreateOptions options;
        options.format = format;
        options.creationDate = std::bit_cast<double>(std::uint64_t{0x40E4AB3E3BD3853E});
        options.objectDate = 37753.4375;
        const std::string path = folder.pathOf("example.mdb");
        {
            jet::Database database = jet::Database::create(engine, path, generalLocale, options);
            database.append(mainTable());
            database.append(mediaTable());
        }
        addRow(path, "media", mediaRow);
        for (const Row& row : mainRows()) {
            addRow(path, "main", row);
        }
        file = folder.read("example.mdb");
        pageSize = format == FileFormat::Jet4 ? 4096 : 2048;
    }

    std::string bytes(std::size_t page, std::size_t offset, std::size_t count) const {
        return file.substr(page * pageSize + offset, count);
    }
    /// The bytes of one row, found as the format says.
    std::string row(std::size_t page, std::size_t slot) const {
        const std::size_t header = pageSize == 4096 ? 14 : 10;
        const auto slotAt = [&](std::size_t number) -> std::size_t {
            const std::string stored = bytes(page, header + 2 * number, 2);
            return jet::get16(jet::asBytes(stored).data()) & 0x1FFF;
        };
        const std::size_t start = slotAt(slot);
        return bytes(page, start, (slot == 0 ? pageSize : slotAt(slot - 1)) - start);
    }
    void expectBytes(std::size_t page, std::size_t offset, std::string_view hex) const {
        const std::string expected = fromHex(hex);
        EXPECT_EQ(toHex(bytes(page, offset, expected.size())), toHex(expected))
            << "page " << page << " offset " << offset;
    }

    std::string file;
    std::size_t pageSize = 0;
};

class Jet4ExampleTest : public WorkedExampleTest {
  protected:
    void SetUp() override { build(FileFormat::Jet4); }
};

TEST_F(Jet4ExampleTest, HeaderPage) {
    expectBytes(0, 0x00,
                "00 01 00 00 53 74 61 6e 64 61 72 64 20 4a 65 74"
                "20 44 42 00 01 00 00 00 b5 6e 03 62 60 09 c2 55"
                "e9 a9 67 72 40 3f 00 9c 7e 9f 90 ff 85 9a 31 c5"
                "79 ba ed 30 bc df cc 9d 63 d9 e4 c3 9f 46 fb 8a"
                "bc 4e df 5e ec 37 04 e1 9c fa 9f fb 28 e6 4a 13"
                "8a 60 0d 31 7b 36 ac d7 df b1 2e 51 13 43 96 0a"
                "b1 33 6d c4 79 5b cb 10 7c 2a 19 d7 7c 99 08 1f"
                "98 fd 2c ca 99 af 52 95 84 66 5f 95 f8 d0 89 24"
                "85 67 c6 1f 27 44 d2 ee cf 65 ed ff 07 c7 46 a1"
                "78 16 0c ed e9 2d 62 d4 54 06 00 00 34 2e 30 00");
    EXPECT_EQ(bytes(0, 0xA0, 0xE00 - 0xA0), std::string(0xE00 - 0xA0, '\0'));
    std::string commits = "0101";
    for (int user = 1; user < 256; ++user) {
        commits += "0001";
    }
    EXPECT_EQ(toHex(bytes(0, 0xE00, 0x200)), commits);
}

TEST_F(Jet4ExampleTest, MapOfFreePages) {
    expectBytes(1, 0, "01 01 64 0f 01 00 00 00 00 00 00 00 02 00 bb 0f 76 0f");
    expectBytes(1, 0xFBB, "00 00 00 00 00 00 00 80 ff ff ff");
    EXPECT_EQ(bytes(1, 0x1000 - 1, 1), "\xFF");
    EXPECT_EQ(row(1, 1), std::string(69, '\0'));
}

TEST_F(Jet4ExampleTest, DefinitionOfMedia) {
    expectBytes(19, 0x00, "02 01 0a 0e 00 00 00 00");
    expectBytes(19, 0x08, "ee 01 00 00 59 06 00 00 01 00 00 00 00 00 00 00");
    expectBytes(19, 0x18, "01 00 00 00 00 0000000000 0000000000 00");
    expectBytes(19, 0x28, "4e 09 00 05 00 09 00 00 00 00 00 00 00 00 00");
    expectBytes(19, 0x37, "00 14 00 00 01 14 00 00");
    expectBytes(19, 0x3f, "04 59060000 0000 0000 0000 0904 0000 03 00 00000000 0000 0400");
    expectBytes(19, 0x58, "0a 59060000 0100 0000 0100 0904 0000 02 01 00000000 0000 fe01");
    expectBytes(19, 0x71, "0a 59060000 0200 0100 0200 0904 0000 02 01 00000000 0000 fe01");
    expectBytes(19, 0x8a, "04 59060000 0300 0200 0300 0904 0000 03 00 00000000 0400 0400");
    expectBytes(19, 0xa3, "0a 59060000 0400 0200 0400 0904 0000 02 01 00000000 0000 fe01");
    expectBytes(19, 0xbc, "04 59060000 0500 0300 0500 0904 0000 03 00 00000000 0800 0400");
    expectBytes(19, 0xd5, "0a 59060000 0600 0300 0600 0904 0000 02 01 00000000 0000 fe01");
    expectBytes(19, 0xee, "0a 59060000 0700 0400 0700 0904 0000 02 01 00000000 0000 fe01");
    expectBytes(19, 0x107, "04 59060000 0800 0500 0800 0904 0000 03 00 00000000 0c00 0400");
    expectBytes(19, 0x120, "0e 00 6d 00 65 00 64 00 69 00 61 00 69 00 64 00");
    expectBytes(19, 0x130, "14 00 6d 00 65 00");
    expectBytes(19, 0x1ec, "ff ff");
    EXPECT_EQ(bytes(19, 0x1ee, 4096 - 0x1ee), std::string(4096 - 0x1ee, '\0'));
}

TEST_F(Jet4ExampleTest, DefinitionOfMainHasTheStatedLength) { expectBytes(16, 8, "02 02 00 00"); }

TEST_F(Jet4ExampleTest, MapsOfMedia) {
    expectBytes(20, 0, "01 01 64 0f 00 00 00 00 00 00 00 00 02 00 bb 0f 76 0f");
    EXPECT_EQ(toHex(row(20, 0)),
              "00"
              "00000000"
              "000020" +
                  std::string(2 * 61, '0'));
    EXPECT_EQ(row(20, 1), row(20, 0));
}

TEST_F(Jet4ExampleTest, DataPageOfMedia) {
    expectBytes(21, 0, "01 01 af 0f 13 00 00 00 00 00 00 00 01 00 bf 0f");
    EXPECT_EQ(toHex(row(21, 0)),
              toHex(fromHex("09 00"
                            "01 00 00 00 | 00 28 0a 00 | 00 00 00 00 | 03 00 00 00"
                            "ff fe 42 41 43 4b 55 50 5f 30 31"
                            "ff fe 43 44 2d 52 4f 4d"
                            "ff fe 32 30 30 33 2d 30 35 2d 31 32"
                            "31 00 | 31 00 | 25 00 | 1d 00 | 1d 00 | 12 00"
                            "05 00"
                            "ff 01")));
}

TEST_F(Jet4ExampleTest, DataPageOfMain) {
    expectBytes(22, 0, "0101fa0e10000000000000000300a10f430f0e0f");
    EXPECT_EQ(
        toHex(row(22, 1)),
        toHex(fromHex("0b00 | 00200300 | 01000000"
                      "fffe436166e92e6a7067 | fffe5c70686f746f735c | fffe70686f746f73"
                      "fffe6a7067 | fffe323030322d31322d32342031383a30303a3030 | 7800 | 61006200"
                      "4600 4200 4200 4000 2b00 2b00 2600 1e00 1400 0a00 | 0900 | df06")));
    EXPECT_EQ(toHex(row(22, 2)),
              toHex(fromHex("0b00 | 00000000 | 01000000"
                            "160430042e00740078007400 | 5c00 | fffe747874"
                            "1d00 1d00 1d00 1d00 1d00 1d00 1800 1800 1600 0a00 | 0900 | 6f05")));
}

TEST_F(Jet4ExampleTest, CatalogRowOfMedia) {
    EXPECT_EQ(toHex(row(14, 9)), toHex(fromHex("11 00"
                                               "13 00 00 00 | 01 00 00 0f | 01 00"
                                               "00 00 00 00 2e 6f e2 40 | 00 00 00 00 2e 6f e2 40"
                                               "00 00 00 00"
                                               "6d 00 65 00 64 00 69 00 61 00"
                                               "64 8b"
                                               "e0 01 00 40 | 01 12 00 00 | 00 00 00 00"
                                               "38 00 38 00 38 00"
                                               "2c 00 2c 00 2c 00 2c 00 2c 00 2c 00 2c 00"
                                               "2a 00 20 00"
                                               "0b 00"
                                               "ff 40 00")));
}

TEST_F(Jet4ExampleTest, AccessRightsOfMedia) {
    EXPECT_EQ(
        toHex(row(15, 18)),
        toHex(fromHex("04 00 | 13 00 00 00 | fe 00 0f 00 | 64 8b | 0c 00 0a 00 | 01 00 | 07")));
    EXPECT_EQ(
        toHex(row(15, 19)),
        toHex(fromHex("04 00 | 13 00 00 00 | ff fe 0f 00 | 65 8b | 0c 00 0a 00 | 01 00 | 07")));
}

TEST_F(Jet4ExampleTest, IndexEntriesOfMedia) {
    const std::string byName = fromHex("7f 8f 00 00 01 | 7f 60 51 4f 59 4a 01 00 | 00 00 0e 09");
    const std::string byId = fromHex("7f 80 00 00 13 | 00 00 0e 09");
    EXPECT_NE(bytes(7, 0x1E0, 300).find(byName), std::string::npos);
    EXPECT_NE(bytes(8, 0x1E0, 300).find(byId), std::string::npos);
    const std::string right = fromHex("7f 80 00 00 13 | 00 00 0f");
    EXPECT_NE(bytes(9, 0x1E0, 300).find(right + "\x12"), std::string::npos);
    EXPECT_NE(bytes(9, 0x1E0, 300).find(right + "\x13"), std::string::npos);
}

TEST_F(Jet4ExampleTest, IndexPagesCountTheirFreeBytes) {
    // 210 and 90 bytes of entries of 3616.
    expectBytes(7, 2, "4e 0d");
    expectBytes(8, 2, "c6 0d");
}

TEST_F(Jet4ExampleTest, CountersOfTheCatalog) {
    expectBytes(2, 16, "0a 00 00 00");
    expectBytes(2, 63, "00 00 00 00 | 0a 00 00 00 | 00 00 00 00 | 00 00 00 00 | 0a 00 00 00");
    expectBytes(3, 16, "14 00 00 00");
    expectBytes(3, 63, "00 00 00 00 | 0a 00 00 00 | 00 00 00 00");
}

class Jet3ExampleTest : public WorkedExampleTest {
  protected:
    void SetUp() override { build(FileFormat::Jet3); }

    /// The one row on the first data page of the table whose definition stands on `page`.
    std::string onlyRowOf(std::uint32_t definition) const {
        for (std::size_t page = 0; page * pageSize < file.size(); ++page) {
            const std::uint8_t* const at = jet::asBytes(file).data() + page * pageSize;
            if (jet::get16(at) == 0x0101 && jet::get32(at + 4) == definition) {
                return row(page, 0);
            }
        }
        return {};
    }
};

TEST_F(Jet3ExampleTest, RowOfMedia) {
    const jet::Database database = jet::Database::open(engine, folder.pathOf("example.mdb"));
    OpenTable objects(engine, folder.pathOf("example.mdb"), "MSysObjects", jet::LockType::ReadOnly);
    objects.rows.setFilter("Name='media'");
    const auto page = static_cast<std::uint32_t>(objects.rows.integer(objects.rows.field("Id")));
    EXPECT_EQ(toHex(onlyRowOf(page)),
              toHex("\x09" + fromHex("01000000 00280a00 00000000 03000000") +
                    "BACKUP_01"
                    "CD-ROM"
                    "2003-05-12" +
                    fromHex("2a 2a 20 1a 1a 11 | 05 | ff 01")));
}

TEST_F(Jet3ExampleTest, HeaderHasTheSortOrderAndCodePage) {
    expectBytes(0, 0, "00 01 00 00 53 74 61 6e 64 61 72 64 20 4a 65 74 20 44 42 00 00 00 00 00");
    // Masked: 00 00 09 04 E4 04 at 0x38.
    expectBytes(0, 0x38, "63 d9 ed c7 9f 46");
    expectBytes(0, 0x600, "01 01 00 01 00 01");
}

// ---------------------------------------------------------------------------------------------------

struct PropertyExample {
    const char* name;
    const jet::Format& format;
    jet::TableDefinition table;
    std::string bytes;
};

PropertyExample mediaJet3() {
    const auto column = [](int length, int nameLength, const std::string& name, bool text) {
        const auto byte = [](int value) { return std::string(1, static_cast<char>(value)); };
        const std::string zeros(3, '\0');
        return byte(length) + zeros + fromHex("01 00") + byte(nameLength + 6) + zeros +
               byte(nameLength) + std::string(1, '\0') + name +
               (text ? fromHex("09 00 01 01 01 00 01 00 FF") : std::string()) +
               fromHex("09 00 01 01 00 00 01 00 00");
    };
    return {"MediaJet3", jet::jet3Format, mediaTable(),
            fromHex("4B 4B 44 00 | 21 00 00 00 80 00 | 08 00") + "Required" + fromHex("0F 00") +
                "AllowZeroLength" + column(0x1C, 7, "mediaid", false) +
                column(0x28, 10, "medialabel", true) + column(0x27, 9, "medianame", true) +
                column(0x1E, 9, "mediasize", false) + column(0x27, 9, "mediatype", true) +
                column(0x23, 14, "mediafreespace", false) + column(0x29, 11, "archivedate", true) +
                column(0x2B, 13, "archiveupdate", true) + column(0x20, 11, "numberfiles", false)};
}

PropertyExample mainJet3() {
    return {"MainJet3", jet::jet3Format, mainTable(), fromHex(R"(
4b4b4400
21000000 8000 0f00 416c6c6f775a65726f4c656e677468 0800 5265717569726564
26000000 0100 0e000000 0800 66696c656e616d65  0900010100000100ff | 090001010100010000
22000000 0100 0a000000 0400 70617468  0900010100000100ff | 090001010100010000
24000000 0100 0c000000 0600 666f6c646572  0900010100000100ff | 090001010100010000
22000000 0100 0a000000 0400 74797065  0900010100000100ff | 090001010100010000
19000000 0100 0a000000 0400 73697a65  090001010100010000
29000000 0100 11000000 0b00 6461746563726561746564  0900010100000100ff | 090001010100010000
2a000000 0100 12000000 0c00 646174656d6f646966696564  0900010100000100ff | 090001010100010000
26000000 0100 0e000000 0800 6b6579776f726473  0900010100000100ff | 090001010100010000
24000000 0100 0c000000 0600 6e6f74657331  0900010100000100ff | 090001010100010000
24000000 0100 0c000000 0600 6e6f74657332  0900010100000100ff | 090001010100010000
1c000000 0100 0d000000 0700 6d656469616964  090001010100010000)")};
}

PropertyExample mediaJet4() {
    return {"MediaJet4", jet::jet4Format, mediaTable(), fromHex(R"(
4d523200
38000000 8000 1000 52006500710075006900720065006400
1e00 41006c006c006f0077005a00650072006f004c0065006e00670074006800
23000000 0100 14000000 0e00 6d00650064006900610069006400
    0900 01 01 0000 0100 00
32000000 0100 1a000000 1400 6d0065006400690061006c006100620065006c00
    0900 01 01 0100 0100 ff | 0900 01 01 0000 0100 00
30000000 0100 18000000 1200 6d0065006400690061006e0061006d006500
    0900 01 01 0100 0100 ff | 0900 01 01 0000 0100 00
27000000 0100 18000000 1200 6d006500640069006100730069007a006500
    0900 01 01 0000 0100 00
30000000 0100 18000000 1200 6d006500640069006100740079007000 6500
    0900 01 01 0100 0100 ff | 0900 01 01 0000 0100 00
31000000 0100 22000000 1c00 6d006500640069006100660072006500650073007000610063006500
    0900 01 01 0000 0100 00
34000000 0100 1c000000 1600 61007200630068006900760065006400610074006500
    0900 01 01 0100 0100 ff | 0900 01 01 0000 0100 00
38000000 0100 20000000 1a00 6100720063006800690076006500750070006400610074006500
    0900 01 01 0100 0100 ff | 0900 01 01 0000 0100 00
2b000000 0100 1c000000 1600 6e0075006d00620065007200660069006c0065007300
    0900 01 01 0000 0100 00)")};
}

PropertyExample mainJet4() {
    return {"MainJet4", jet::jet4Format, mainTable(), fromHex(R"(
4d523200
38000000 8000 1e00 41006c006c006f0077005a00650072006f004c0065006e00670074006800
1000 52006500710075006900720065006400
2e000000 0100 16000000 1000 660069006c0065006e0061006d006500  0900010100000100ff 090001010100010000
26000000 0100 0e000000 0800 7000610074006800  0900010100000100ff | 090001010100010000
2a000000 0100 12000000 0c00 66006f006c00640065007200  0900010100000100ff | 090001010100010000
26000000 0100 0e000000 0800 7400790070006500  0900010100000100ff | 090001010100010000
1d000000 0100 0e000000 0800 730069007a006500  090001010100010000
34000000 0100 1c000000 1600 64006100740065006300720065006100740065006400
    0900010100000100ff | 090001010100010000
36000000 0100 1e000000 1800 64006100740065006d006f00640069006600690065006400
    0900010100000100ff | 090001010100010000
2e000000 0100 16000000 1000 6b006500790077006f00720064007300  0900010100000100ff 090001010100010000
2a000000 0100 12000000 0c00 6e006f007400650073003100  0900010100000100ff | 090001010100010000
2a000000 0100 12000000 0c00 6e006f007400650073003200  0900010100000100ff | 090001010100010000
23000000 0100 14000000 0e00 6d00650064006900610069006400  090001010100010000)")};
}

class PropertyExampleTest : public testing::TestWithParam<PropertyExample> {};

TEST_P(PropertyExampleTest, IsBuiltByteByByte) {
    EXPECT_EQ(toHex(jet::PropertyBlock::build(GetParam().format, GetParam().table)),
              toHex(GetParam().bytes));
}

TEST_P(PropertyExampleTest, IsReadBack) {
    jet::TableDefinition table = GetParam().table;
    for (jet::Field& field : table.fields) {
        field.allowZeroLength = false;
        field.required = true;
    }
    EXPECT_TRUE(jet::PropertyBlock::apply(GetParam().format, GetParam().bytes, table));
    EXPECT_EQ(table.fields, GetParam().table.fields);
}

INSTANTIATE_TEST_SUITE_P(Tables, PropertyExampleTest,
                         testing::Values(mediaJet3(), mainJet3(), mediaJet4(), mainJet4()),
                         [](const auto& example) { return std::string(example.param.name); });

}  // namespace
}  // namespace jet_test
