#include <algorithm>
#include <cstdlib>

#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"
#include "tests/jet/mdb_tools.h"
#include "tests/jet/random_rows.h"
#include "tests/jet/sample_files.h"

// Files that the engine has written, read by other programs.

namespace jet_test {
namespace {

using jet::FileFormat;

class JudgedTest : public EngineTest, public testing::WithParamInterface<FileFormat> {
  protected:
    RandomRows random{GetParam(), 20240601};

    /// Random rows in a new table, as stored.
    std::vector<Row> addRows(const std::string& path, int count) {
        std::vector<Row> model;
        OpenTable open(engine, path, "everything");
        for (int i = 0; i < count; ++i) {
            model.push_back(random.row());
            open.rows.addNew();
            setRow(open.rows, model.back());
            open.rows.update();
        }
        return model;
    }

    /// Changes two rows of five, deletes one of five, and returns what must be left.
    std::vector<Row> changeRows(const std::string& path) {
        std::vector<Row> model;
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            const std::uint32_t what = random.number(5);
            if (what == 0) {
                open.rows.deleteCurrent();
                continue;
            }
            Row row;
            for (int field = 0; field < 14; ++field) {
                row.push_back(open.rows.value(field));
            }
            if (what < 3) {
                row = random.row();
                setRow(open.rows, row);
                open.rows.update();
            }
            model.push_back(row);
        }
        return model;
    }
};

std::string formatName(const testing::TestParamInfo<FileFormat>& test) {
    return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
}

// ---------------------------------------------------------------------------------------------------

class MdbToolsJudgeTest : public JudgedTest {
  protected:
    void SetUp() override {
        if (!MdbTools::installed()) {
            GTEST_SKIP() << "mdbtools is not installed";
        }
    }

    static std::vector<MdbTools::Line> lines(const jet::TableDefinition& table,
                                             const std::vector<Row>& rows) {
        std::vector<MdbTools::Line> lines;
        for (const Row& row : rows) {
            MdbTools::Line& line = lines.emplace_back();
            for (std::size_t i = 0; i < row.size(); ++i) {
                line.push_back(normalText(table.fields[i], row[i]));
            }
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, MdbToolsJudgeTest,
                         testing::Values(FileFormat::Jet3, FileFormat::Jet4), formatName);

TEST_P(MdbToolsJudgeTest, RandomRowsAreReadIdentically) {
    const jet::TableDefinition table = allTypesTable();
    const std::string path = makeDatabase(GetParam(), table);
    const std::vector<Row> model = addRows(path, 1500);
    EXPECT_EQ(allRows(path, "everything"), model);
    EXPECT_EQ(differenceOf(lines(table, model), MdbTools::rows(path, table)), "");
}

TEST_P(MdbToolsJudgeTest, ChangedAndDeletedRowsAreReadIdentically) {
    const jet::TableDefinition table = allTypesTable();
    const std::string path = makeDatabase(GetParam(), table);
    addRows(path, 600);
    std::vector<Row> model;
    for (int round = 0; round < 3; ++round) {
        model = changeRows(path);
    }
    EXPECT_EQ(allRows(path, "everything"), model);
    EXPECT_EQ(differenceOf(lines(table, model), MdbTools::rows(path, table)), "");
}

TEST_P(MdbToolsJudgeTest, ManyRowsAreCountedAndFound) {
    const std::string path = makeDatabase(GetParam(), mainTable());
    {
        OpenTable open(engine, path, "main");
        for (int i = 0; i < 40000; ++i) {
            open.rows.addNew();
            open.rows.setText(0, "file" + std::to_string(i) + ".dat");
            open.rows.setText(1, "\\folder\\" + std::string(static_cast<std::size_t>(i % 90), 'f'));
            open.rows.setInteger(10, i % 10);
            open.rows.update();
        }
    }
    EXPECT_EQ(MdbTools::countRows(path, "main"), 40000u);
    EXPECT_EQ(outputOf("mdb-count " + shellQuoted(path) + " main"), "40000\n");
}

TEST_P(MdbToolsJudgeTest, SchemaIsRead) {
    jet::TableDefinition table = allTypesTable();
    std::vector<std::string> expected{"id Long Integer",
                                      "truth Boolean NOT NULL",
                                      "small Byte",
                                      "medium Integer",
                                      "money Currency",
                                      "single Single",
                                      "double Double",
                                      "moment DateTime",
                                      "bytes Binary",
                                      "label Text (255)",
                                      "identity Replication ID",
                                      "decimal Numeric (18, 4)",
                                      "memo Memo/Hyperlink (255)",
                                      "object OLE (255)"};
    if (GetParam() == FileFormat::Jet3) {
        // The judge looks for the digits of a Jet 3 column in another place.
        table.fields.erase(table.fields.begin() + 11);
        expected.erase(expected.begin() + 11);
    }
    const std::string path = makeDatabase(GetParam(), table);
    EXPECT_EQ(MdbTools::tables(path), (std::vector<std::string>{"everything"}));
    EXPECT_EQ(MdbTools::columns(path, "everything"), expected);
}

TEST_P(MdbToolsJudgeTest, DecimalNumbersAreReadIdentically) {
    if (GetParam() == FileFormat::Jet3) {
        GTEST_SKIP() << "the judge looks for the digits of a Jet 3 column in another place";
    }
    const jet::TableDefinition table = allTypesTable();
    const std::string path = makeDatabase(GetParam(), table);
    {
        OpenTable open(engine, path, "everything");
        for (const char* number : {"0", "1", "-1", "12.5", "-0.0001", "99999999999999.9999"}) {
            open.rows.addNew();
            open.rows.setText(11, number);
            open.rows.update();
        }
    }
    EXPECT_EQ(differenceOf(lines(table, allRows(path, "everything")), MdbTools::rows(path, table)),
              "");
}

// ---------------------------------------------------------------------------------------------------
// A reader written in JavaScript, which tells NULL from an empty text and knows characters beyond
// the first plane. VERDOLIN_MDB_READER names the folder in which its package was installed ("npm
// install mdb-reader"). It lists moved rows where they have moved to, and takes a long value for
// longer than it is where the row before it on its page has been deleted.

class MdbReaderJudgeTest : public JudgedTest {
  protected:
    void SetUp() override {
        const char* const named = std::getenv("VERDOLIN_MDB_READER");
        if (named == nullptr) {
            GTEST_SKIP() << "VERDOLIN_MDB_READER does not name a folder with the package";
        }
        package = named;
    }

    std::vector<TextRow> rowsOf(const std::string& path, const std::string& table) {
        const std::string script = std::string(VERDOLIN_TEST_JUDGES) + "/mdb_reader_rows.mjs";
        const std::string text =
            outputOf("node " + shellQuoted(script) + " " + shellQuoted(package) + " " +
                     shellQuoted(path) + " " + shellQuoted(table));
        return readTextTable(folder.makeFile("theirs.tsv", text)).rows;
    }

    /// In the form of the script.
    static TextRow textRow(const Row& row) {
        TextRow texts;
        for (const jet::Value& value : row) {
            std::string text = jet::displayText(value);
            if (std::holds_alternative<jet::Binary>(value)) {
                text.erase(0, 2);
            } else if (std::holds_alternative<bool>(value)) {
                text = text == "true" ? "1" : "0";
            } else if (std::holds_alternative<jet::Currency>(value)) {
                text = fourPlaces(text);
            } else if (std::holds_alternative<jet::Guid>(value)) {
                text = inSmallLetters(text.substr(1, text.size() - 2));
            }
            texts.push_back(jet::isNull(value) ? std::nullopt : std::optional(text));
        }
        return texts;
    }

    static std::string inSmallLetters(std::string text) {
        for (char& c : text) {
            c = c >= 'A' && c <= 'F' ? static_cast<char>(c + 32) : c;
        }
        return text;
    }

    static std::string fourPlaces(std::string text) {
        const std::size_t point = text.find('.');
        if (point == std::string::npos) {
            return text + ".0000";
        }
        text.resize(point + 5, '0');
        return text;
    }

    void expectSameRows(const std::vector<TextRow>& ours, const std::vector<TextRow>& theirs) {
        ASSERT_EQ(theirs.size(), ours.size());
        for (std::size_t i = 0; i < ours.size(); ++i) {
            ASSERT_EQ(theirs[i], ours[i]) << "row " << i;
        }
    }

    static std::vector<TextRow> textRows(const std::vector<Row>& rows) {
        std::vector<TextRow> texts;
        for (const Row& row : rows) {
            texts.push_back(textRow(row));
        }
        return texts;
    }

    /// Sorted, without the long values, which are the last two columns.
    static std::vector<TextRow> comparable(std::vector<TextRow> rows) {
        for (TextRow& row : rows) {
            row.resize(12);
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    std::string package;
};

INSTANTIATE_TEST_SUITE_P(Formats, MdbReaderJudgeTest,
                         testing::Values(FileFormat::Jet3, FileFormat::Jet4), formatName);

TEST_P(MdbReaderJudgeTest, RandomRowsAreReadIdenticallyAndInOrder) {
    const std::string path = makeDatabase(GetParam(), allTypesTable());
    const std::vector<Row> model = addRows(path, 1500);
    expectSameRows(textRows(model), rowsOf(path, "everything"));
}

TEST_P(MdbReaderJudgeTest, ChangedAndDeletedRowsAreReadIdentically) {
    const std::string path = makeDatabase(GetParam(), allTypesTable());
    addRows(path, 600);
    changeRows(path);
    changeRows(path);
    const std::vector<Row> model = changeRows(path);
    expectSameRows(comparable(textRows(model)), comparable(rowsOf(path, "everything")));
}

}  // namespace
}  // namespace jet_test
