#include <algorithm>
#include <map>

#include "base/text.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/mdb_tools.h"
#include "tests/jet/sample_files.h"

// Files made by the original engine and by other programs.

namespace jet_test {
namespace {

using base::EngineFault;
using jet::Value;

class SampleTest : public EngineTest {
  protected:
    void SetUp() override {
        if (sampleFolder().empty()) {
            GTEST_SKIP() << "the sample files are not there; VERDOLIN_JET_SAMPLES may name them";
        }
    }

    /// A copy of a sample that the test may open and change.
    std::string sample(const std::string& name) {
        return folder.makeFile(name, readFile(sampleFolder() + "/" + name));
    }

    static TextRow textRow(const jet::TableDefinition& table, const Row& row) {
        TextRow texts;
        for (std::size_t i = 0; i < table.fields.size(); ++i) {
            texts.push_back(jet::isNull(row[i]) ? std::nullopt
                                                : std::optional(jet::displayText(row[i])));
        }
        return texts;
    }

    std::vector<TextRow> textRows(const std::string& path, const std::string& table) {
        const jet::TableDefinition definition = jet::Database::open(engine, path).table(table);
        std::vector<TextRow> rows;
        for (const Row& row : allRows(path, table)) {
            rows.push_back(textRow(definition, row));
        }
        return rows;
    }

    /// The first field of every row.
    std::vector<std::string> firstTexts(const std::string& path, const std::string& table) {
        std::vector<std::string> texts;
        for (const TextRow& row : textRows(path, table)) {
            texts.push_back(row.front().value_or("NULL"));
        }
        return texts;
    }
};

// ---------------------------------------------------------------------------------------------------
// Files whose rows are written down beside them: equal in every value and in their order.

class TextTableTest : public SampleTest, public testing::WithParamInterface<const char*> {};

TEST_P(TextTableTest, HasTheRowsThatAreWrittenDown) {
    const std::string path = sample(std::string(GetParam()) + ".mdb");
    for (const std::string table : {"main", "media"}) {
        const TextTable expected =
            readTextTable(sampleFolder() + "/" + GetParam() + "." + table + ".tsv");
        const jet::TableDefinition definition = jet::Database::open(engine, path).table(table);
        std::vector<std::string> names;
        for (const jet::Field& field : definition.fields) {
            names.push_back(field.name);
        }
        EXPECT_EQ(names, expected.fields);

        const std::vector<TextRow> rows = textRows(path, table);
        ASSERT_EQ(rows.size(), expected.rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i], expected.rows[i]) << table << " row " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, TextTableTest,
                         testing::Values("ref-tiny-jet3", "ref-tiny-jet4", "ref-ops-jet3",
                                         "ref-ops-jet4", "jackcess-jet4"),
                         [](const auto& sample) {
                             std::string name = sample.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

// ---------------------------------------------------------------------------------------------------
// All tables of all files, their system tables included, against the independent reader.

struct Counts {
    const char* file;
    std::map<std::string, std::size_t> rows;  ///< of the tables that are not the engine's own
    /// The judge also lists rows in places that a row has moved to and left again.
    std::size_t abandonedPlaces = 0;
};

class CountedSampleTest : public SampleTest, public testing::WithParamInterface<Counts> {};

TEST_P(CountedSampleTest, HasTheStatedNumberOfRows) {
    const std::string path = sample(GetParam().file);
    for (const auto& [table, count] : GetParam().rows) {
        EXPECT_EQ(allRows(path, table).size(), count) << table;
        OpenTable open(engine, path, table, jet::LockType::ReadOnly);
        EXPECT_EQ(open.rows.recordCount(), static_cast<std::int64_t>(count)) << table;
    }
}

TEST_P(CountedSampleTest, StatesTheRowCountOfEveryTable) {
    const std::string path = sample(GetParam().file);
    for (const jet::TableSummary& table : jet::Database::open(engine, path).tables()) {
        EXPECT_EQ(static_cast<std::int64_t>(allRows(path, table.name).size()), table.rowCount)
            << table.name;
    }
}

TEST_P(CountedSampleTest, IndependentReaderSeesTheSameValues) {
    if (!MdbTools::installed()) {
        GTEST_SKIP() << "mdbtools is not installed";
    }
    const std::string path = sample(GetParam().file);
    const jet::Database database = jet::Database::open(engine, path);
    std::size_t compared = 0;
    std::size_t onlyTheJudge = 0;
    for (const jet::TableSummary& table : database.tables()) {
        const jet::TableDefinition definition = database.table(table.name);
        std::vector<MdbTools::Line> ours;
        for (const Row& row : allRows(path, table.name)) {
            MdbTools::Line& line = ours.emplace_back();
            for (std::size_t i = 0; i < row.size(); ++i) {
                line.push_back(normalText(definition.fields[i], row[i]));
            }
        }
        std::sort(ours.begin(), ours.end());
        const std::vector<MdbTools::Line> theirs = MdbTools::rows(path, definition);
        if (theirs.size() == ours.size()) {
            EXPECT_EQ(differenceOf(ours, theirs), "") << table.name;
        } else {
            EXPECT_TRUE(std::includes(theirs.begin(), theirs.end(), ours.begin(), ours.end()))
                << table.name << ": " << differenceOf(ours, theirs);
            onlyTheJudge += theirs.size() - ours.size();
        }
        compared += ours.size();
    }
    EXPECT_GE(compared, 20u);
    EXPECT_EQ(onlyTheJudge, GetParam().abandonedPlaces);
}

TEST_P(CountedSampleTest, IndependentReaderSeesTheSameTables) {
    if (!MdbTools::installed()) {
        GTEST_SKIP() << "mdbtools is not installed";
    }
    const std::string path = sample(GetParam().file);
    std::vector<std::string> tables;
    for (const jet::TableSummary& table : jet::Database::open(engine, path).tables()) {
        if (!table.system) {
            tables.push_back(table.name);
        }
    }
    EXPECT_EQ(tables, MdbTools::tables(path));
}

TEST_P(CountedSampleTest, ReadingLeavesTheFileAsItIs) {
    const std::string path = sample(GetParam().file);
    for (const auto& [table, count] : GetParam().rows) {
        allRows(path, table);
    }
    EXPECT_EQ(readFile(path), readFile(sampleFolder() + "/" + GetParam().file));
}

INSTANTIATE_TEST_SUITE_P(
    Samples, CountedSampleTest,
    testing::Values(Counts{"empty-engine-jet4.mdb", {}},
                    Counts{"emptytables-jet3.mdb", {{"Table1", 0}, {"Table2", 0}, {"Table3", 0}}},
                    Counts{"overflow-jet3.mdb", {{"Table1", 7}}},
                    Counts{"compindex-jet3.mdb", {{"Table1", 512}}},
                    Counts{"bigtdef-memo-jet3.mdb", {{"MSP_PROJECTS", 1}}},
                    Counts{"overflow-jet4.mdb", {{"Table1", 7}}},
                    Counts{"deleted-jet4.mdb", {{"Table", 2}}},
                    Counts{"unicode-jet4.mdb", {{"Table", 8}}},
                    Counts{"bigtdef-memo-jet4.mdb", {{"MSP_PROJECTS", 1}}},
                    Counts{"ref-tiny-jet3.mdb", {{"main", 3}, {"media", 1}}},
                    Counts{"ref-tiny-jet4.mdb", {{"main", 3}, {"media", 1}}},
                    Counts{"ref-ops-jet3.mdb", {{"main", 116}, {"media", 2}}},
                    Counts{"ref-ops-jet4.mdb", {{"main", 116}, {"media", 2}}},
                    Counts{"jackcess-jet4.mdb", {{"main", 114}, {"media", 2}}, 1}),
    [](const auto& sample) {
        std::string name = sample.param.file;
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
        return name;
    });

// ---------------------------------------------------------------------------------------------------
// What is particular about single files.

TEST_F(SampleTest, MovedRowsAreReportedAtTheirHomePlace) {
    const std::vector<TextRow> rows = textRows(sample("overflow-jet4.mdb"), "Table1");
    std::vector<std::string> order;
    for (const TextRow& row : rows) {
        for (const auto& text : row) {
            if (text && text->starts_with("row")) {
                order.push_back(text->substr(0, 4));
                break;
            }
        }
    }
    EXPECT_EQ(order,
              (std::vector<std::string>{"row1", "row2", "row3", "row4", "row5", "row6", "row7"}));
}

TEST_F(SampleTest, DeletedColumnIsNotThere) {
    const jet::Database database = jet::Database::open(engine, sample("overflow-jet4.mdb"));
    std::vector<std::string> names;
    for (const jet::Field& field : database.table("Table1").fields) {
        names.push_back(field.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"data1", "data3", "data4", "data5", "data6", "data7",
                                               "data8", "data9", "data10"}));
}

TEST_F(SampleTest, RowsOlderThanAColumnAreNullInIt) {
    const std::string path = sample("overflow-jet4.mdb");
    OpenTable open(engine, path, "Table1", jet::LockType::ReadOnly);
    const int added = open.rows.field("data10");
    for (; !open.rows.endOfFile(); open.rows.moveNext()) {
        EXPECT_TRUE(open.rows.isNull(added));
    }
}

TEST_F(SampleTest, DeletedRowIsNotThere) {
    EXPECT_EQ(firstTexts(sample("deleted-jet4.mdb"), "Table"),
              (std::vector<std::string>{"z", "v"}));
}

TEST_F(SampleTest, TextOfAllCharactersUpToFfIsRead) {
    std::string all;
    for (char32_t c = 1; c <= 0xFF; ++c) {
        base::appendUtf8(c, all);
    }
    std::vector<std::string> texts;
    for (const TextRow& row : textRows(sample("unicode-jet4.mdb"), "Table")) {
        texts.push_back(row[1].value_or("NULL"));
    }
    EXPECT_NE(std::find(texts.begin(), texts.end(), all), texts.end());
}

class BigDefinitionTest : public SampleTest, public testing::WithParamInterface<const char*> {};

TEST_P(BigDefinitionTest, DefinitionOverTwoPagesHasAllItsColumns) {
    const jet::TableDefinition table =
        jet::Database::open(engine, sample(GetParam())).table("MSP_PROJECTS");
    EXPECT_EQ(table.fields.size(), 74u);
    EXPECT_EQ(table.fields.front().name, "PROJ_ID");
    EXPECT_EQ(table.fields.back().name, "RESERVED_BINARY_DATA");
    EXPECT_EQ(table.indexes.size(), 2u);
}

TEST_P(BigDefinitionTest, LongValuesOfAllThreeFormsAreRead) {
    OpenTable open(engine, sample(GetParam()), "MSP_PROJECTS", jet::LockType::ReadOnly);
    const auto length = [&](const char* field) {
        return open.rows.text(open.rows.field(field)).size();
    };
    EXPECT_EQ(open.rows.text(open.rows.field("PROJ_PROP_TITLE")), "Project1");
    EXPECT_TRUE(
        open.rows.text(open.rows.field("PROJ_PROP_AUTHOR")).starts_with("Jon Iles this is"));
    EXPECT_EQ(length("PROJ_PROP_AUTHOR"), 348u);
    const Value bytes = open.rows.value(open.rows.field("RESERVED_BINARY_DATA"));
    ASSERT_TRUE(std::holds_alternative<jet::Binary>(bytes));
    EXPECT_GT(std::get<jet::Binary>(bytes).bytes.size(), 4096u);
}

INSTANTIATE_TEST_SUITE_P(Samples, BigDefinitionTest,
                         testing::Values("bigtdef-memo-jet3.mdb", "bigtdef-memo-jet4.mdb"),
                         [](const auto& sample) {
                             return std::string(sample.param).find("jet3") == std::string::npos
                                        ? "Jet4"
                                        : "Jet3";
                         });

TEST_F(SampleTest, TableWithAnIndexIsReadButNotWritten) {
    const std::string path = sample("compindex-jet3.mdb");
    const std::string before = readFile(path);
    OpenTable open(engine, path, "Table1");
    std::string text;
    EXPECT_EQ(faultOf([&] { open.rows.addNew(); }, &text), EngineFault::Indexed);
    EXPECT_NE(text.find(open.rows.definition().indexes.front()), std::string::npos) << text;
    EXPECT_EQ(readFile(path), before);
}

TEST_F(SampleTest, MapsThatAreIndirectFromTheStartAreUsed) {
    const std::string path = sample("jackcess-jet4.mdb");
    const std::size_t before = allRows(path, "main").size();
    {
        OpenTable open(engine, path, "main");
        for (int i = 0; i < 2000; ++i) {
            open.rows.addNew();
            open.rows.setText(0, "added " + std::to_string(i));
            open.rows.setText(1, std::string(200, 'p'));
            open.rows.update();
        }
    }
    jet::Engine other(files);
    OpenTable open(other, path, "main", jet::LockType::ReadOnly);
    EXPECT_EQ(remainingRows(open.rows).size(), before + 2000);
    if (MdbTools::installed()) {
        // One more: the place that a row has moved to and left again.
        EXPECT_EQ(MdbTools::countRows(path, "main"), before + 2000 + 1);
    }
}

// ---------------------------------------------------------------------------------------------------
// Files that are refused: each with one line that says why.

struct Refused {
    const char* name;
    const char* file;
    EngineFault fault;
    const char* reason;
};

class RefusedSampleTest : public SampleTest, public testing::WithParamInterface<Refused> {};

TEST_P(RefusedSampleTest, IsRefusedWithItsReason) {
    const std::string path = sample(GetParam().file);
    std::string text;
    EXPECT_EQ(faultOf([&] { jet::Database::open(engine, path); }, &text), GetParam().fault);
    EXPECT_EQ(text, path + ": " + GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Samples, RefusedSampleTest,
    testing::Values(Refused{"EncodedJet3", "encoded-jet3.mdb", EngineFault::Encoded,
                            "the database is encoded (encrypted)"},
                    Refused{"EncodedJet4", "encoded-jet4.mdb", EngineFault::Encoded,
                            "the database is encoded (encrypted)"},
                    Refused{"Password", "password-jet4.mdb", EngineFault::Password,
                            "the database has a password"}),
    [](const auto& sample) { return std::string(sample.param.name); });

}  // namespace
}  // namespace jet_test
