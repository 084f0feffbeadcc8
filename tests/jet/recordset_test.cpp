#include "jet/recordset.h"

#include <set>

#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"

namespace jet_test {
namespace {

using base::EngineFault;
using jet::FileFormat;
using jet::Value;

class RecordsetTest : public EngineTest, public testing::WithParamInterface<FileFormat> {
  protected:
    RecordsetTest() { path = makeDatabase(GetParam(), allTypesTable()); }

    void add(jet::Recordset& rows, std::int32_t id, const std::string& label = {}) {
        rows.addNew();
        rows.setInteger(0, id);
        rows.setText(rows.field("label"), label);
        rows.update();
    }
    void addMany(int count) {
        OpenTable open(engine, path, "everything");
        for (int i = 0; i < count; ++i) {
            add(open.rows, i, "row " + std::to_string(i));
        }
    }
    std::vector<std::int32_t> ids(jet::Recordset& rows) {
        std::vector<std::int32_t> found;
        for (rows.moveFirst(); !rows.endOfFile(); rows.moveNext()) {
            found.push_back(rows.integer(0));
        }
        return found;
    }
    std::vector<std::int32_t> storedIds() {
        jet::Engine other(files);
        OpenTable open(other, path, "everything", jet::LockType::ReadOnly);
        return ids(open.rows);
    }
    using Ids = std::vector<std::int32_t>;

    std::string path;
};

INSTANTIATE_TEST_SUITE_P(Formats, RecordsetTest,
                         testing::Values(FileFormat::Jet3, FileFormat::Jet4), [](const auto& test) {
                             return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
                         });

// ----- moving
// ---------------------------------------------------------------------------------------

TEST_P(RecordsetTest, EmptyTableHasNoCurrentRow) {
    OpenTable open(engine, path, "everything");
    EXPECT_TRUE(open.rows.endOfFile());
    EXPECT_EQ(open.rows.recordCount(), 0);
    EXPECT_EQ(faultOf([&] { open.rows.value(0); }), EngineFault::NoCurrentRow);
    EXPECT_EQ(faultOf([&] { open.rows.setInteger(0, 1); }), EngineFault::NoCurrentRow);
    EXPECT_EQ(faultOf([&] { open.rows.deleteCurrent(); }), EngineFault::NoCurrentRow);
    EXPECT_EQ(faultOf([&] { open.rows.moveNext(); }), EngineFault::NoCurrentRow);
    EXPECT_NO_THROW(open.rows.moveFirst());
}

TEST_P(RecordsetTest, FirstRowIsCurrentAfterOpening) {
    addMany(2);
    OpenTable open(engine, path, "everything");
    EXPECT_EQ(open.rows.integer(0), 0);
    open.rows.moveNext();
    EXPECT_EQ(open.rows.integer(0), 1);
    open.rows.moveNext();
    EXPECT_TRUE(open.rows.endOfFile());
    EXPECT_EQ(faultOf([&] { open.rows.moveNext(); }), EngineFault::NoCurrentRow);
    EXPECT_EQ(faultOf([&] { open.rows.integer(0); }), EngineFault::NoCurrentRow);
    open.rows.moveFirst();
    EXPECT_EQ(open.rows.integer(0), 0);
}

TEST_P(RecordsetTest, TableNamesAreFoundInAnyCase) {
    addMany(1);
    for (const char* name : {"everything", "EVERYTHING", "EveryThing"}) {
        OpenTable open(engine, path, name);
        EXPECT_EQ(open.rows.definition().name, "everything");
        EXPECT_EQ(open.rows.integer(0), 0);
    }
    std::string text;
    EXPECT_EQ(faultOf([&] { OpenTable(engine, path, "nothing"); }, &text), EngineFault::NotFound);
    EXPECT_NE(text.find("nothing"), std::string::npos);
}

TEST_P(RecordsetTest, FieldsAreFoundInAnyCase) {
    OpenTable open(engine, path, "everything");
    EXPECT_EQ(open.rows.field("ID"), 0);
    EXPECT_EQ(open.rows.field("Label"), 9);
    std::string text;
    EXPECT_EQ(faultOf([&] { open.rows.field("none"); }, &text), EngineFault::NotFound);
    EXPECT_EQ(text, "table everything has no field none");
    EXPECT_EQ(faultOf([&] { open.rows.value(-1); }), EngineFault::Usage);
    EXPECT_EQ(faultOf([&] { open.rows.value(14); }), EngineFault::Usage);
}

TEST_P(RecordsetTest, ClosedRecordsetIsAUsageFailure) {
    OpenTable open(engine, path, "everything");
    open.rows.close();
    EXPECT_FALSE(open.rows.isOpen());
    EXPECT_EQ(faultOf([&] { open.rows.endOfFile(); }), EngineFault::Usage);
    EXPECT_EQ(faultOf([&] { open.rows.addNew(); }), EngineFault::Usage);
}

// ----- adding
// ---------------------------------------------------------------------------------------

TEST_P(RecordsetTest, NewRowIsCurrentAfterUpdate) {
    addMany(3);
    OpenTable open(engine, path, "everything");
    add(open.rows, 77, "new");
    EXPECT_FALSE(open.rows.endOfFile());
    EXPECT_EQ(open.rows.integer(0), 77);
    EXPECT_EQ(open.rows.recordCount(), 4);
    open.rows.setText(9, "changed");
    open.rows.update();
    EXPECT_EQ(open.rows.text(9), "changed");
    open.rows.deleteCurrent();
    EXPECT_EQ(open.rows.recordCount(), 3);
    EXPECT_EQ(ids(open.rows), (Ids{0, 1, 2}));
}

TEST_P(RecordsetTest, FieldsOfANewRowAreNull) {
    OpenTable open(engine, path, "everything");
    open.rows.addNew();
    open.rows.update();
    for (int field = 0; field < 14; ++field) {
        if (field == open.rows.field("truth")) {
            EXPECT_EQ(open.rows.value(field), Value(false));
        } else {
            EXPECT_TRUE(open.rows.isNull(field)) << field;
        }
    }
    EXPECT_EQ(open.rows.integer(0), 0);
    EXPECT_EQ(open.rows.text(9), "");
}

TEST_P(RecordsetTest, NewRowIsReadBeforeItIsStored) {
    OpenTable open(engine, path, "everything");
    open.rows.addNew();
    open.rows.setInteger(0, 5);
    EXPECT_EQ(open.rows.integer(0), 5);
    EXPECT_EQ(open.rows.recordCount(), 0);
    open.rows.cancelUpdate();
    EXPECT_TRUE(open.rows.endOfFile());
}

TEST_P(RecordsetTest, CancelledRowIsNotAdded) {
    addMany(2);
    OpenTable open(engine, path, "everything");
    open.rows.addNew();
    open.rows.setInteger(0, 9);
    open.rows.cancelUpdate();
    EXPECT_EQ(open.rows.integer(0), 0);
    EXPECT_EQ(open.rows.recordCount(), 2);
    open.rows.update();  // nothing to store
    EXPECT_EQ(ids(open.rows), (Ids{0, 1}));
}

TEST_P(RecordsetTest, CancelledChangeIsNotStored) {
    addMany(1);
    OpenTable open(engine, path, "everything");
    open.rows.setText(9, "changed");
    EXPECT_EQ(open.rows.text(9), "changed");
    open.rows.cancelUpdate();
    EXPECT_EQ(open.rows.text(9), "row 0");
}

TEST_P(RecordsetTest, MovingOnDropsAnUnfinishedChange) {
    addMany(2);
    OpenTable open(engine, path, "everything");
    open.rows.setText(9, "changed");
    open.rows.moveNext();
    EXPECT_EQ(open.rows.text(9), "row 1");
    open.rows.moveFirst();
    EXPECT_EQ(open.rows.text(9), "row 0");
}

TEST_P(RecordsetTest, RowsComeInTheOrderInWhichTheyWereAdded) {
    addMany(5000);
    Ids expected(5000);
    for (int i = 0; i < 5000; ++i) {
        expected[static_cast<std::size_t>(i)] = i;
    }
    EXPECT_EQ(storedIds(), expected);
}

// ----- changing and deleting
// ------------------------------------------------------------------------

TEST_P(RecordsetTest, DeletedRowIsNoLongerCurrent) {
    addMany(3);
    OpenTable open(engine, path, "everything");
    open.rows.deleteCurrent();
    EXPECT_EQ(faultOf([&] { open.rows.integer(0); }), EngineFault::NoCurrentRow);
    EXPECT_EQ(faultOf([&] { open.rows.deleteCurrent(); }), EngineFault::NoCurrentRow);
    EXPECT_EQ(faultOf([&] { open.rows.setInteger(0, 1); }), EngineFault::NoCurrentRow);
    open.rows.moveNext();
    EXPECT_EQ(open.rows.integer(0), 1);
}

TEST_P(RecordsetTest, LastRowCanBeDeleted) {
    addMany(2);
    OpenTable open(engine, path, "everything");
    open.rows.moveNext();
    open.rows.deleteCurrent();
    open.rows.moveNext();
    EXPECT_TRUE(open.rows.endOfFile());
    EXPECT_EQ(ids(open.rows), Ids{0});
}

TEST_P(RecordsetTest, AllRowsCanBeDeletedOneByOne) {
    addMany(2000);
    {
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            open.rows.deleteCurrent();
        }
        EXPECT_EQ(open.rows.recordCount(), 0);
    }
    EXPECT_TRUE(storedIds().empty());
}

TEST_P(RecordsetTest, SpaceOfDeletedRowsIsUsedAgain) {
    addMany(2000);
    const auto deleteAll = [&] {
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            open.rows.deleteCurrent();
        }
    };
    deleteAll();
    addMany(2000);
    const std::size_t size = folder.read("test.mdb").size();
    for (int round = 0; round < 4; ++round) {
        deleteAll();
        addMany(2000);
    }
    EXPECT_LE(folder.read("test.mdb").size(), size + size / 10);
}

TEST_P(RecordsetTest, RowsThatGrowMoveAndKeepTheirPlaceInTheOrder) {
    addMany(300);
    {
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            if (open.rows.integer(0) % 3 == 0) {
                open.rows.setText(9, std::string(250, 'g'));
                open.rows.update();
                EXPECT_EQ(open.rows.text(9).size(), 250u);
            }
        }
    }
    jet::Engine other(files);
    OpenTable open(other, path, "everything");
    for (int i = 0; i < 300; ++i, open.rows.moveNext()) {
        ASSERT_EQ(open.rows.integer(0), i);
        ASSERT_EQ(open.rows.text(9),
                  i % 3 == 0 ? std::string(250, 'g') : "row " + std::to_string(i));
    }
}

TEST_P(RecordsetTest, MovedRowsMoveAgainShrinkAndAreDeleted) {
    addMany(200);
    for (const std::size_t length : {100u, 250u, 3u, 255u, 0u}) {
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            open.rows.setText(9, std::string(length, 'x'));
            open.rows.update();
        }
    }
    {
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            EXPECT_EQ(open.rows.text(9), "");
            if (open.rows.integer(0) % 2 == 1) {
                open.rows.deleteCurrent();
            }
        }
        EXPECT_EQ(open.rows.recordCount(), 100);
    }
    EXPECT_EQ(storedIds().size(), 100u);
}

TEST_P(RecordsetTest, OneFieldIsChangedAndTheOthersStay) {
    OpenTable open(engine, path, "everything");
    open.rows.addNew();
    const Row row{std::int32_t{3},
                  true,
                  std::int32_t{200},
                  std::int32_t{-300},
                  jet::Currency{-12345},
                  1.5f,
                  -2.25,
                  jet::Date{37753.4375},
                  jet::Binary{std::string("\x00\x01\xFF", 3)},
                  std::string("label"),
                  jet::Guid{{1, 2, 3}},
                  jet::Numeric{true, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x30, 0x39}, 4},
                  std::string(3000, 'm'),
                  jet::Binary{std::string(9000, 'o')}};
    for (std::size_t i = 0; i < row.size(); ++i) {
        open.rows.setValue(static_cast<int>(i), row[i]);
    }
    open.rows.update();
    open.rows.setText(9, "other");
    open.rows.update();
    for (std::size_t i = 0; i < row.size(); ++i) {
        EXPECT_EQ(open.rows.value(static_cast<int>(i)),
                  i == 9 ? Value(std::string("other")) : row[i])
            << i;
    }
}

// ----- two recordsets on one table
// ------------------------------------------------------------------

TEST_P(RecordsetTest, RowsAddedByAnotherAreSeenFurtherOn) {
    addMany(1);
    OpenTable reader(engine, path, "everything");
    OpenTable writer(engine, path, "everything");
    add(writer.rows, 50);
    EXPECT_EQ(reader.rows.recordCount(), 2);
    reader.rows.moveNext();
    ASSERT_FALSE(reader.rows.endOfFile());
    EXPECT_EQ(reader.rows.integer(0), 50);
}

TEST_P(RecordsetTest, RowsThatAReaderAddsAreSeenByItsOwnScan) {
    addMany(1);
    OpenTable open(engine, path, "everything");
    OpenTable reader(engine, path, "everything");
    int seen = 0;
    for (; !reader.rows.endOfFile() && seen < 500; reader.rows.moveNext(), ++seen) {
        add(open.rows, seen);
    }
    EXPECT_EQ(seen, 500);
}

TEST_P(RecordsetTest, ChangeByAnotherIsSeenAtOnce) {
    addMany(2);
    OpenTable reader(engine, path, "everything");
    OpenTable writer(engine, path, "everything");
    writer.rows.setText(9, std::string(200, 'n'));
    EXPECT_EQ(reader.rows.text(9), "row 0");
    writer.rows.update();
    EXPECT_EQ(reader.rows.text(9), std::string(200, 'n'));
}

TEST_P(RecordsetTest, RowDeletedByAnotherIsGoneAndMovingOnIsNot) {
    addMany(3);
    OpenTable reader(engine, path, "everything");
    OpenTable writer(engine, path, "everything");
    writer.rows.deleteCurrent();
    EXPECT_FALSE(reader.rows.endOfFile());
    EXPECT_EQ(faultOf([&] { reader.rows.integer(0); }), EngineFault::NoCurrentRow);
    reader.rows.moveNext();
    EXPECT_EQ(reader.rows.integer(0), 1);
}

TEST_P(RecordsetTest, ChangeOfARowThatAnotherHasDeletedFails) {
    addMany(3);
    OpenTable one(engine, path, "everything");
    OpenTable two(engine, path, "everything");
    one.rows.setText(9, "late");
    two.rows.deleteCurrent();
    EXPECT_EQ(faultOf([&] { one.rows.update(); }), EngineFault::NoCurrentRow);
    one.rows.cancelUpdate();
    one.rows.moveNext();
    EXPECT_EQ(one.rows.integer(0), 1);
    EXPECT_EQ(one.rows.recordCount(), 2);
}

TEST_P(RecordsetTest, AllRowsDeletedByAnotherEndTheScan) {
    addMany(500);
    OpenTable reader(engine, path, "everything");
    OpenTable writer(engine, path, "everything");
    for (; !writer.rows.endOfFile(); writer.rows.moveNext()) {
        writer.rows.deleteCurrent();
    }
    reader.rows.moveNext();
    EXPECT_TRUE(reader.rows.endOfFile());
}

TEST_P(RecordsetTest, DeletedAndAddedAgainWhileAnotherReads) {
    addMany(500);
    OpenTable reader(engine, path, "everything");
    {
        OpenTable writer(engine, path, "everything");
        for (; !writer.rows.endOfFile(); writer.rows.moveNext()) {
            writer.rows.deleteCurrent();
        }
        for (int i = 1000; i < 1500; ++i) {
            add(writer.rows, i);
        }
    }
    std::set<std::int32_t> seen;
    for (reader.rows.moveNext(); !reader.rows.endOfFile(); reader.rows.moveNext()) {
        EXPECT_TRUE(seen.insert(reader.rows.integer(0)).second) << "a row was seen twice";
        EXPECT_GE(reader.rows.integer(0), 1000);
    }
}

// ----- memo values
// ----------------------------------------------------------------------------------

class MemoTest : public RecordsetTest {
  protected:
    std::string memo(std::size_t length, char c = 'm') { return std::string(length, c); }
    int memoField(jet::Recordset& rows) { return rows.field("memo"); }
};

INSTANTIATE_TEST_SUITE_P(Formats, MemoTest, testing::Values(FileFormat::Jet3, FileFormat::Jet4),
                         [](const auto& test) {
                             return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
                         });

TEST_P(MemoTest, EveryFormIsReadBack) {
    const std::vector<std::size_t> lengths{0,    1,    2,    29,   30,   31,    32,    33,   62,
                                           63,   64,   65,   1000, 1024, 1025,  2030,  2036, 2037,
                                           4076, 4080, 4081, 8000, 8144, 50000, 200000};
    {
        OpenTable open(engine, path, "everything");
        for (const std::size_t length : lengths) {
            open.rows.addNew();
            open.rows.setText(memoField(open.rows), memo(length));
            open.rows.setValue(13, jet::Binary{memo(length, '\0')});
            open.rows.update();
        }
    }
    jet::Engine other(files);
    OpenTable open(other, path, "everything");
    for (const std::size_t length : lengths) {
        ASSERT_EQ(open.rows.value(12), Value(memo(length))) << length;
        ASSERT_EQ(open.rows.value(13), Value(jet::Binary{memo(length, '\0')})) << length;
        open.rows.moveNext();
    }
}

TEST_P(MemoTest, NullAndEmptyMemoAreTwoThings) {
    OpenTable open(engine, path, "everything");
    open.rows.addNew();
    open.rows.setText(12, "");
    open.rows.update();
    EXPECT_FALSE(open.rows.isNull(12));
    EXPECT_TRUE(open.rows.isNull(13));
}

TEST_P(MemoTest, RowThatCannotBeStoredKeepsItsMemo) {
    jet::TableDefinition table{"long", {}, {}};
    for (int i = 0; i < 20; ++i) {
        table.fields.push_back(textField("text" + std::to_string(i)));
    }
    table.fields.push_back(fieldOf("memo", jet::DataType::Memo));
    const std::string file = makeDatabase(GetParam(), table, "long.mdb");
    {
        OpenTable open(engine, file, "long");
        open.rows.addNew();
        open.rows.setText(20, memo(3000));
        open.rows.update();
        for (int i = 0; i < 20; ++i) {
            open.rows.setText(i, std::string(255, 'x'));
        }
        open.rows.setText(20, memo(3000, 'n'));
        std::string text;
        EXPECT_EQ(faultOf([&] { open.rows.update(); }, &text), EngineFault::Value);
        EXPECT_NE(text.find("too long"), std::string::npos) << text;
        open.rows.cancelUpdate();
        EXPECT_EQ(open.rows.text(20), memo(3000));
    }
    EXPECT_EQ(allRows(file, "long")[0][20], Value(memo(3000)));
}

TEST_P(MemoTest, CancelledMemoLeavesNothingBehind) {
    OpenTable open(engine, path, "everything");
    add(open.rows, 1);
    open.rows.setText(12, memo(5000));
    open.rows.cancelUpdate();
    open.rows.addNew();
    open.rows.setText(12, memo(6000));
    open.rows.moveFirst();
    open.rows.setText(12, memo(7000));
    open.rows.setText(12, memo(100));
    open.rows.update();
    EXPECT_EQ(open.rows.text(12), memo(100));
    // The check at the end of the test finds long values that no row refers to.
}

TEST_P(MemoTest, ReplacedMemoLeavesNothingBehind) {
    addMany(3);
    for (const std::size_t length : {5000u, 40u, 9000u, 0u, 70u}) {
        OpenTable open(engine, path, "everything");
        for (; !open.rows.endOfFile(); open.rows.moveNext()) {
            open.rows.setText(12, memo(length));
            open.rows.update();
        }
    }
    OpenTable open(engine, path, "everything");
    for (; !open.rows.endOfFile(); open.rows.moveNext()) {
        EXPECT_EQ(open.rows.text(12), memo(70));
        open.rows.setNull(12);
        open.rows.update();
        EXPECT_TRUE(open.rows.isNull(12));
    }
}

TEST_P(MemoTest, DeletedRowsGiveTheirMemosBack) {
    for (int round = 0; round < 6; ++round) {
        OpenTable open(engine, path, "everything");
        for (int i = 0; i < 50; ++i) {
            open.rows.addNew();
            open.rows.setText(12, memo(6000));
            open.rows.update();
        }
        open.connection.flush();
        for (open.rows.moveFirst(); !open.rows.endOfFile(); open.rows.moveNext()) {
            open.rows.deleteCurrent();
        }
    }
    EXPECT_LT(folder.read("test.mdb").size(), 3u * 50 * 8192);
}

TEST_P(MemoTest, MemoThatAnotherReplacesDuringAChangeIsNotBroughtBack) {
    addMany(1);
    OpenTable one(engine, path, "everything");
    one.rows.setText(12, memo(3000, 'a'));
    one.rows.update();
    OpenTable two(engine, path, "everything");
    one.rows.setText(9, "changed by one");
    two.rows.setText(12, memo(3000, 'b'));
    two.rows.update();
    two.connection.flush();
    one.rows.update();
    one.connection.flush();
    EXPECT_EQ(one.rows.text(12), memo(3000, 'b'));
    EXPECT_EQ(one.rows.text(9), "changed by one");
}

TEST_P(MemoTest, MemoThatAnotherTakesAwayDuringAChangeStaysAway) {
    addMany(1);
    OpenTable one(engine, path, "everything");
    one.rows.setText(12, memo(3000, 'a'));
    one.rows.update();
    OpenTable two(engine, path, "everything");
    one.rows.setText(9, "changed by one");
    two.rows.setNull(12);
    two.rows.update();
    two.connection.flush();
    one.rows.update();
    EXPECT_TRUE(one.rows.isNull(12));
}

// ----- reading only
// ---------------------------------------------------------------------------------

TEST_P(RecordsetTest, RecordsetForReadingIsNotChanged) {
    addMany(1);
    OpenTable open(engine, path, "everything", jet::LockType::ReadOnly);
    EXPECT_EQ(faultOf([&] { open.rows.addNew(); }), EngineFault::Usage);
    EXPECT_EQ(faultOf([&] { open.rows.setInteger(0, 4); }), EngineFault::Usage);
    EXPECT_EQ(faultOf([&] { open.rows.setNull(0); }), EngineFault::Usage);
    EXPECT_EQ(faultOf([&] { open.rows.deleteCurrent(); }), EngineFault::Usage);
    EXPECT_EQ(open.rows.integer(0), 0);
}

}  // namespace
}  // namespace jet_test
