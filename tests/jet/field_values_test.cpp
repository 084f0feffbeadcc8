#include <cmath>
#include <limits>

#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"

// What fields take and refuse.

namespace jet_test {
namespace {

using base::EngineFault;
using jet::FileFormat;
using jet::Value;

class FieldTest : public EngineTest, public testing::WithParamInterface<FileFormat> {
  protected:
    FieldTest() {
        path = makeDatabase(GetParam(), allTypesTable());
        open.emplace(engine, path, "everything");
        open->rows.addNew();
    }
    void TearDown() override {
        open->rows.update();
        open.reset();
        EngineTest::TearDown();
    }

    jet::Recordset& rows() { return open->rows; }
    int field(const char* name) { return rows().field(name); }

    Value afterText(const char* name, const std::string& text) {
        rows().setText(field(name), text);
        return rows().value(field(name));
    }
    Value afterInteger(const char* name, std::int64_t number) {
        rows().setInteger(field(name), number);
        return rows().value(field(name));
    }
    Value afterValue(const char* name, const Value& value) {
        rows().setValue(field(name), value);
        return rows().value(field(name));
    }
    /// The action must end with a Value failure that names field and table and changes nothing.
    template <typename Action>
    void refused(const char* name, Action action) {
        const Value before = rows().value(field(name));
        std::string text;
        EXPECT_EQ(faultOf(action, &text), EngineFault::Value) << name;
        EXPECT_TRUE(text.starts_with(std::string("field ") + name + " of table everything: "))
            << text;
        EXPECT_EQ(rows().value(field(name)), before);
    }
    void refusedText(const char* name, const std::string& text) {
        refused(name, [&] { rows().setText(field(name), text); });
    }
    void refusedInteger(const char* name, std::int64_t number) {
        refused(name, [&] { rows().setInteger(field(name), number); });
    }
    void refusedValue(const char* name, const Value& value) {
        refused(name, [&] { rows().setValue(field(name), value); });
    }

    std::string path;
    std::optional<OpenTable> open;
};

INSTANTIATE_TEST_SUITE_P(Formats, FieldTest, testing::Values(FileFormat::Jet3, FileFormat::Jet4),
                         [](const auto& test) {
                             return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
                         });

TEST_P(FieldTest, LongTakesThirtyTwoBits) {
    EXPECT_EQ(afterInteger("id", INT32_MAX), Value(INT32_MAX));
    EXPECT_EQ(afterInteger("id", INT32_MIN), Value(INT32_MIN));
    refusedInteger("id", std::int64_t{INT32_MAX} + 1);
    refusedInteger("id", std::int64_t{INT32_MIN} - 1);
    EXPECT_EQ(afterText("id", " -5 "), Value(std::int32_t{-5}));
    EXPECT_EQ(afterText("id", "7.6"), Value(std::int32_t{8}));
    refusedText("id", "");
    refusedText("id", "seven");
    refusedText("id", "1e30");
    refusedText("id", "3000000000");
}

TEST_P(FieldTest, IntegerTakesSixteenBits) {
    EXPECT_EQ(afterInteger("medium", -32768), Value(std::int32_t{-32768}));
    EXPECT_EQ(afterInteger("medium", 32767), Value(std::int32_t{32767}));
    refusedInteger("medium", 32768);
    refusedInteger("medium", -32769);
}

TEST_P(FieldTest, ByteTakesEightBits) {
    EXPECT_EQ(afterInteger("small", 0), Value(std::int32_t{0}));
    EXPECT_EQ(afterInteger("small", 255), Value(std::int32_t{255}));
    refusedInteger("small", 256);
    refusedInteger("small", -1);
}

TEST_P(FieldTest, BooleanIsNeverNull) {
    EXPECT_EQ(afterInteger("truth", 3), Value(true));
    EXPECT_EQ(afterValue("truth", false), Value(false));
    EXPECT_EQ(afterValue("truth", true), Value(true));
    EXPECT_EQ(afterValue("truth", Value()), Value(false));
    EXPECT_FALSE(rows().isNull(field("truth")));
}

TEST_P(FieldTest, CurrencyIsExact) {
    EXPECT_EQ(afterText("money", "0.1"), Value(jet::Currency{1000}));
    EXPECT_EQ(afterText("money", "-12.3456"), Value(jet::Currency{-123456}));
    EXPECT_EQ(afterInteger("money", 900719925474099), Value(jet::Currency{9007199254740990000}));
    EXPECT_EQ(afterInteger("money", -922337203685477), Value(jet::Currency{-9223372036854770000}));
    EXPECT_EQ(afterValue("money", jet::Currency{INT64_MIN}), Value(jet::Currency{INT64_MIN}));
    refusedInteger("money", 922337203685478);
    refusedText("money", "1e16");
}

TEST_P(FieldTest, RealsTakeTheirRange) {
    EXPECT_EQ(afterText("double", "1e300"), Value(1e300));
    EXPECT_EQ(afterValue("single", 0.1f), Value(0.1f));
    EXPECT_EQ(afterInteger("single", 5), Value(5.0f));
    refusedText("single", "1e300");
    refusedText("double", "1e400");
    refusedText("double", "nan");
}

TEST_P(FieldTest, DateTakesDays) {
    EXPECT_EQ(afterValue("moment", jet::Date{-1.25}), Value(jet::Date{-1.25}));
    EXPECT_EQ(afterText("moment", "37753.4375"), Value(jet::Date{37753.4375}));
    EXPECT_EQ(rows().text(field("moment")), "2003-05-12 10:30:00");
}

TEST_P(FieldTest, TextTakesItsWidth) {
    EXPECT_EQ(afterText("label", std::string(255, 'x')), Value(std::string(255, 'x')));
    refusedText("label", std::string(256, 'x'));
    std::string accents;
    for (int i = 0; i < 255; ++i) {
        accents += "\u00E9";
    }
    EXPECT_EQ(afterText("label", accents), Value(accents));
    refusedText("label", accents + "\u00E9");
    EXPECT_EQ(afterText("label", ""), Value(std::string()));
}

TEST_P(FieldTest, NumberForATextIsItsDecimalText) {
    EXPECT_EQ(afterInteger("label", -42), Value(std::string("-42")));
    EXPECT_EQ(afterInteger("memo", 7), Value(std::string("7")));
    EXPECT_EQ(rows().integer(field("label")), -42);
}

TEST_P(FieldTest, BinaryTakesItsWidth) {
    EXPECT_EQ(afterValue("bytes", jet::Binary{std::string(100, '\0')}),
              Value(jet::Binary{std::string(100, '\0')}));
    refusedValue("bytes", jet::Binary{std::string(101, 'x')});
    EXPECT_EQ(afterValue("bytes", jet::Binary{}), Value(jet::Binary{}));
    refusedText("bytes", "text");
    refusedInteger("bytes", 1);
}

TEST_P(FieldTest, GuidTakesSixteenBytes) {
    const jet::Guid guid{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};
    EXPECT_EQ(afterValue("identity", guid), Value(guid));
    refusedText("identity", "{}");
}

TEST_P(FieldTest, NumericTakesItsPlacesAndDigits) {
    EXPECT_EQ(jet::displayText(afterText("decimal", "-12.5")), "-12.5");
    EXPECT_EQ(jet::displayText(afterText("decimal", "12345678901234.5678")), "12345678901234.5678");
    EXPECT_EQ(jet::displayText(afterInteger("decimal", 7)), "7");
    refusedText("decimal", "0.00001");
    refusedText("decimal", "123456789012345");
    refusedText("decimal", "many");
    jet::Numeric other;
    other.magnitude[15] = 25;
    other.scale = 1;
    EXPECT_EQ(jet::displayText(afterValue("decimal", other)), "2.5");
    EXPECT_EQ(std::get<jet::Numeric>(rows().value(field("decimal"))).scale, 4);
    other.scale = 9;
    refusedValue("decimal", other);
}

TEST_P(FieldTest, NullIsTakenByAll) {
    for (int position = 0; position < 14; ++position) {
        rows().setNull(position);
        EXPECT_EQ(rows().isNull(position), position != field("truth"));
        EXPECT_EQ(rows().integer(position), 0);
        EXPECT_EQ(rows().text(position), position == field("truth") ? "false" : "");
    }
}

TEST_P(FieldTest, TextThatIsNoNumberIsNotReadAsOne) {
    rows().setText(field("label"), "no number");
    refused("label", [&] { rows().integer(field("label")); });
    rows().setText(field("label"), "99999999999");
    refused("label", [&] { rows().integer(field("label")); });
}

class Jet4TextTest : public EngineTest {};

TEST_F(Jet4TextTest, CharactersBeyondTheFirstPlaneCountTwice) {
    const std::string path = makeDatabase(FileFormat::Jet4, mediaTable());
    OpenTable open(engine, path, "media");
    std::string smiles;
    for (int i = 0; i < 127; ++i) {
        smiles += "\U0001F602";
    }
    open.rows.addNew();
    open.rows.setText(1, smiles + "x");
    EXPECT_EQ(open.rows.text(1), smiles + "x");
    EXPECT_EQ(faultOf([&] { open.rows.setText(1, smiles + "\U0001F602"); }), EngineFault::Value);
    open.rows.update();
    EXPECT_EQ(open.rows.text(1), smiles + "x");
}

TEST_F(Jet4TextTest, TextThatBeginsWithTheMarkIsKept) {
    const std::string path = makeDatabase(FileFormat::Jet4, mediaTable());
    std::string text = "\uFEFF";
    for (int i = 0; i < 252; ++i) {
        text += "z";
    }
    addRow(path, "media", {std::int32_t{1}, text});
    EXPECT_EQ(allRows(path, "media")[0][1], Value(text));
}

class LongRecordTest : public EngineTest, public testing::WithParamInterface<FileFormat> {};

INSTANTIATE_TEST_SUITE_P(Formats, LongRecordTest,
                         testing::Values(FileFormat::Jet3, FileFormat::Jet4), [](const auto& test) {
                             return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
                         });

TEST_P(LongRecordTest, IsRefusedAndNothingIsStored) {
    const std::string path = makeDatabase(GetParam(), mainTable());
    {
        OpenTable open(engine, path, "main");
        open.rows.addNew();
        for (const jet::Field& field : open.rows.definition().fields) {
            if (field.type == jet::DataType::Text) {
                std::string text;
                for (int i = 0; i < 255; ++i) {
                    text += GetParam() == FileFormat::Jet4 ? "\u0416" : "x";
                }
                open.rows.setText(open.rows.field(field.name), text);
            }
        }
        std::string text;
        EXPECT_EQ(faultOf([&] { open.rows.update(); }, &text), EngineFault::Value);
        EXPECT_TRUE(text.starts_with("the record of table main is too long: ")) << text;
        EXPECT_EQ(open.rows.recordCount(), 0);
        // The record is still there to be shortened.
        open.rows.setText(0, "short");
        open.rows.setNull(1);
        open.rows.setNull(2);
        open.rows.update();
        EXPECT_EQ(open.rows.recordCount(), 1);
    }
    EXPECT_EQ(allRows(path, "main").size(), 1u);
}

TEST_P(LongRecordTest, LongestRecordFillsAPageAlone) {
    const std::string path = makeDatabase(GetParam(), mainTable());
    const std::size_t most = GetParam() == FileFormat::Jet4 ? 4060 : 2012;
    std::size_t stored = 0;
    {
        OpenTable open(engine, path, "main");
        open.rows.addNew();
        const char* const piece = GetParam() == FileFormat::Jet4 ? "\u0416" : "x";
        const std::size_t width = GetParam() == FileFormat::Jet4 ? 2 : 1;
        std::size_t room = most - 60;
        for (int field = 0; room > 0; ++field) {
            if (open.rows.definition().fields[static_cast<std::size_t>(field)].type !=
                jet::DataType::Text) {
                continue;
            }
            std::string text;
            for (int i = 0; i < 255 && room >= width; ++i, room -= width) {
                text += piece;
            }
            room = room < width ? 0 : room;
            stored += text.size();
            open.rows.setText(field, text);
        }
        open.rows.update();
    }
    std::size_t read = 0;
    for (const Row& row : allRows(path, "main")) {
        for (const Value& value : row) {
            read += std::holds_alternative<std::string>(value) ? std::get<std::string>(value).size()
                                                               : 0;
        }
    }
    EXPECT_EQ(read, stored);
}

// ---------------------------------------------------------------------------------------------------

class AutoNumberTest : public EngineTest {};

TEST_F(AutoNumberTest, NewRowsAreNumbered) {
    jet::TableDefinition table{"numbered", {longField("id"), textField("name")}, {}};
    table.fields[0].autoNumber = true;
    const std::string path = makeDatabase(FileFormat::Jet4, table);
    for (int round = 0; round < 2; ++round) {
        OpenTable open(engine, path, "numbered");
        EXPECT_TRUE(open.rows.definition().fields[0].autoNumber);
        open.rows.addNew();
        open.rows.update();
        open.rows.addNew();
        open.rows.setInteger(0, 100 + round);
        open.rows.update();
        open.rows.addNew();
        open.rows.update();
    }
    std::vector<std::int32_t> numbers;
    for (const Row& row : allRows(path, "numbered")) {
        numbers.push_back(std::get<std::int32_t>(row[0]));
    }
    EXPECT_EQ(numbers, (std::vector<std::int32_t>{1, 100, 101, 102, 101, 103}));
}

// ---------------------------------------------------------------------------------------------------

class DatabaseTest : public EngineTest, public testing::WithParamInterface<FileFormat> {
  protected:
    jet::Database create(const std::string& name = "new.mdb") {
        jet::CreateOptions options;
        options.format = GetParam();
        jet::Database database =
            jet::Database::create(engine, folder.pathOf(name), generalLocale, options);
        made.push_back(folder.pathOf(name));
        return database;
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, DatabaseTest, testing::Values(FileFormat::Jet3, FileFormat::Jet4),
                         [](const auto& test) {
                             return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
                         });

TEST_P(DatabaseTest, NewDatabaseHasTheFourEngineTables) {
    const jet::Database database = create();
    EXPECT_EQ(database.format(), GetParam());
    std::vector<std::string> names;
    for (const jet::TableSummary& table : database.tables()) {
        names.push_back(table.name);
        EXPECT_TRUE(table.system);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"MSysObjects", "MSysACEs", "MSysQueries",
                                               "MSysRelationships"}));
}

TEST_P(DatabaseTest, ExistingFileIsLeftAlone) {
    folder.makeFile("new.mdb", "something else");
    EXPECT_EQ(
        faultOf([&] { jet::Database::create(engine, folder.pathOf("new.mdb"), generalLocale); }),
        EngineFault::Exists);
    EXPECT_EQ(folder.read("new.mdb"), "something else");
}

TEST_P(DatabaseTest, OtherLocalesAreRefusedBeforeAFileIsMade) {
    EXPECT_EQ(faultOf([&] {
                  jet::Database::create(engine, folder.pathOf("x.mdb"),
                                        ";LANGID=0x0419;CP=1251;COUNTRY=0");
              }),
              EngineFault::Usage);
    EXPECT_FALSE(folder.exists("x.mdb"));
}

TEST_P(DatabaseTest, DefinitionIsReadBackAsItWasGiven) {
    jet::TableDefinition table = allTypesTable();
    table.fields[9].required = true;
    jet::Database database = create();
    database.append(table);
    const jet::TableDefinition read = database.table("EVERYTHING");
    EXPECT_EQ(read.name, "everything");
    ASSERT_EQ(read.fields.size(), table.fields.size());
    for (std::size_t i = 0; i < read.fields.size(); ++i) {
        EXPECT_EQ(read.fields[i].name, table.fields[i].name);
        EXPECT_EQ(read.fields[i].type, table.fields[i].type) << i;
        EXPECT_EQ(read.fields[i].allowZeroLength, table.fields[i].allowZeroLength) << i;
        EXPECT_EQ(read.fields[i].required, table.fields[i].required) << i;
        EXPECT_EQ(read.fields[i].precision, table.fields[i].precision) << i;
        EXPECT_EQ(read.fields[i].scale, table.fields[i].scale) << i;
    }
    EXPECT_EQ(read.fields[9].size, 255);
    EXPECT_EQ(read.fields[8].size, 100);
}

TEST_P(DatabaseTest, SecondTableOfOneNameIsRefused) {
    jet::Database database = create();
    database.append({"Main", {longField("x")}, {}});
    EXPECT_EQ(faultOf([&] {
                  database.append({"MAIN", {longField("x")}, {}});
              }),
              EngineFault::Exists);
    EXPECT_EQ(faultOf([&] {
                  database.append({"msysobjects", {longField("x")}, {}});
              }),
              EngineFault::Exists);
}

TEST_P(DatabaseTest, NamesThatTheFormatCannotHoldAreRefused) {
    jet::Database database = create();
    for (const std::string name : {"", " x", "a.b", "a!b", "a[b", "a]b", "a`b", "a\nb", "\u0416"}) {
        EXPECT_EQ(faultOf([&] {
                      database.append({name, {longField("x")}, {}});
                  }),
                  EngineFault::Usage)
            << name;
    }
    EXPECT_EQ(faultOf([&] {
                  database.append({std::string(65, 'n'), {longField("x")}, {}});
              }),
              EngineFault::Usage);
    EXPECT_NO_THROW(database.append({std::string(64, 'n'), {longField("x")}, {}}));
    EXPECT_NO_THROW(database.append({"caf\u00E9", {longField("\u00E9t\u00E9")}, {}}));
    EXPECT_EQ(database.table("CAF\u00C9").fields[0].name, "\u00E9t\u00E9");
}

TEST_P(DatabaseTest, FieldsThatTheFormatCannotHoldAreRefused) {
    jet::Database database = create();
    const auto refused = [&](const std::vector<jet::Field>& fields) {
        EXPECT_EQ(faultOf([&] { database.append({"t", fields, {}}); }), EngineFault::Usage);
    };
    refused({});
    refused({longField("a"), longField("A")});
    refused({textField("a", 256)});
    refused({textField("a", -1)});
    refused({fieldOf("a", static_cast<jet::DataType>(18))});
    refused({longField("")});
    refused(std::vector<jet::Field>(256, longField("a")));
    EXPECT_EQ(database.tables().size(), 4u);
}

TEST_P(DatabaseTest, TableOfTheMostFieldsIsUsed) {
    jet::TableDefinition table{"wide", {}, {}};
    for (int i = 0; i < 255; ++i) {
        table.fields.push_back(textField("a field with a long name " + std::to_string(i), 20));
    }
    jet::Database database = create();
    database.append(table);
    database.close();
    addRow(made.back(), "wide", Row(255, std::string("val")));
    EXPECT_EQ(allRows(made.back(), "wide")[0], Row(255, std::string("val")));
}

TEST_P(DatabaseTest, ManyTablesAreFoundAgain) {
    jet::Database database = create();
    for (int i = 0; i < 60; ++i) {
        database.append({"table " + std::to_string(i), {longField("x")}, {}});
    }
    database.close();
    jet::Engine other(files);
    const jet::Database again = jet::Database::open(other, made.back());
    EXPECT_EQ(again.tables().size(), 64u);
    for (int i = 0; i < 60; ++i) {
        EXPECT_EQ(again.table("Table " + std::to_string(i)).fields.size(), 1u);
    }
}

TEST_P(DatabaseTest, ClosedDatabaseIsAUsageFailure) {
    jet::Database database = create();
    database.close();
    EXPECT_EQ(faultOf([&] { database.tables(); }), EngineFault::Usage);
    EXPECT_EQ(faultOf([&] { database.append(mediaTable()); }), EngineFault::Usage);
}

TEST_P(DatabaseTest, AssignedDatabaseKeepsItsObjectDate) {
    jet::CreateOptions options;
    options.format = GetParam();
    options.objectDate = 12345.0;
    jet::Database database = create("other.mdb");
    database = jet::Database::create(engine, folder.pathOf("dated.mdb"), generalLocale, options);
    database.append(mediaTable());
    database.close();
    OpenTable objects(engine, folder.pathOf("dated.mdb"), "MSysObjects", jet::LockType::ReadOnly);
    objects.rows.setFilter("Name='media'");
    EXPECT_EQ(objects.rows.value(objects.rows.field("DateCreate")), Value(jet::Date{12345.0}));
}

}  // namespace
}  // namespace jet_test
