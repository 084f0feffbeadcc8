#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"

namespace jet_test {
namespace {

using base::EngineFault;
using jet::FileFormat;
using jet::Value;

class FilterTest : public EngineTest, public testing::WithParamInterface<FileFormat> {
  protected:
    FilterTest() {
        path = makeDatabase(GetParam(), allTypesTable());
        open.emplace(engine, path, "everything");
    }
    void TearDown() override {
        open.reset();
        EngineTest::TearDown();
    }

    void add(std::int32_t id, const Value& label = {}) { addWith(id, "label", label); }
    void addWith(std::int32_t id, const char* field, const Value& value) {
        open->rows.addNew();
        open->rows.setInteger(0, id);
        open->rows.setValue(open->rows.field(field), value);
        open->rows.update();
    }
    std::vector<std::int32_t> ids(const std::string& condition) {
        open->rows.setFilter(condition);
        std::vector<std::int32_t> found;
        for (; !open->rows.endOfFile(); open->rows.moveNext()) {
            found.push_back(open->rows.integer(0));
        }
        return found;
    }
    using Ids = std::vector<std::int32_t>;

    std::string path;
    std::optional<OpenTable> open;
};

INSTANTIATE_TEST_SUITE_P(Formats, FilterTest, testing::Values(FileFormat::Jet3, FileFormat::Jet4),
                         [](const auto& test) {
                             return test.param == FileFormat::Jet4 ? "Jet4" : "Jet3";
                         });

Value text(const std::string& content) { return content; }

TEST_P(FilterTest, QuotedNumberIsComparedWithANumberField) {
    for (std::int32_t id : {1, 2, 12, -1}) {
        add(id);
    }
    EXPECT_EQ(ids("id='2'"), Ids{2});
    EXPECT_EQ(ids("id='-1'"), Ids{-1});
    EXPECT_EQ(ids("id=' 12 '"), Ids{12});
    EXPECT_EQ(ids("id='2.0'"), Ids{2});
    EXPECT_EQ(ids("id='2.5'"), Ids{});
    EXPECT_EQ(ids("id='3'"), Ids{});
}

TEST_P(FilterTest, ComparisonsAreJoinedByAnd) {
    add(1, text("folder"));
    add(1, text("file"));
    add(2, text("folder"));
    EXPECT_EQ(ids("id='1' AND label='folder'"), Ids{1});
    EXPECT_EQ(ids("id='1' and label='folder' And id='1'"), Ids{1});
    EXPECT_EQ(ids("label='folder'"), (Ids{1, 2}));
    EXPECT_EQ(ids("id='2' AND label='file'"), Ids{});
}

TEST_P(FilterTest, FieldNamesIgnoreCaseAndMayStandInBrackets) {
    add(7);
    EXPECT_EQ(ids("ID='7'"), Ids{7});
    EXPECT_EQ(ids("[Id] = '7'"), Ids{7});
    EXPECT_EQ(ids("  id  =  '7'  "), Ids{7});
}

TEST_P(FilterTest, TextsIgnoreCase) {
    add(1, text("Folder"));
    add(2, text("FOLDER"));
    add(3, text("folders"));
    add(4, text("\u00C9t\u00E9"));
    EXPECT_EQ(ids("label='folder'"), (Ids{1, 2}));
    EXPECT_EQ(ids("label='\u00E9T\u00C9'"), Ids{4});
}

TEST_P(FilterTest, TextsOfAllLengthsAreFound) {
    for (int length = 1; length <= 255; ++length) {
        add(length, text(std::string(static_cast<std::size_t>(length), 'a')));
    }
    for (int length = 1; length <= 255; ++length) {
        const std::string small(static_cast<std::size_t>(length), 'a');
        const std::string large(static_cast<std::size_t>(length), 'A');
        ASSERT_EQ(ids("label='" + small + "'"), Ids{length});
        ASSERT_EQ(ids("label='" + large + "'"), Ids{length});
    }
}

TEST_P(FilterTest, NullEqualsNothing) {
    add(1);
    add(2, text(""));
    EXPECT_EQ(ids("label=''"), Ids{2});
    addWith(3, "medium", Value(std::int32_t{0}));
    EXPECT_EQ(ids("medium='0'"), Ids{3});
}

TEST_P(FilterTest, TwoQuotationMarksStandForOne) {
    add(1, text("it's"));
    add(2, text("'"));
    add(3, text("a' AND id='3"));
    EXPECT_EQ(ids("label='it''s'"), Ids{1});
    EXPECT_EQ(ids("label=''''"), Ids{2});
    EXPECT_EQ(ids("label='a'' AND id=''3'"), Ids{3});
}

TEST_P(FilterTest, EveryKindOfFieldIsCompared) {
    addWith(1, "truth", true);
    addWith(2, "small", Value(std::int32_t{200}));
    addWith(3, "money", jet::Currency{12345});
    addWith(4, "double", 0.25);
    addWith(5, "moment", jet::Date{37753.4375});
    addWith(6, "memo", text("A Memo"));
    addWith(7, "memo", text(std::string(5000, 'm')));
    addWith(8, "decimal", text("-2.5"));
    EXPECT_EQ(ids("truth='-1'"), Ids{1});
    EXPECT_EQ(ids("small='200'"), Ids{2});
    EXPECT_EQ(ids("money='1.2345'"), Ids{3});
    EXPECT_EQ(ids("double='0.25'"), Ids{4});
    EXPECT_EQ(ids("moment='37753.4375'"), Ids{5});
    EXPECT_EQ(ids("memo='a memo'"), Ids{6});
    EXPECT_EQ(ids("memo='" + std::string(5000, 'M') + "'"), Ids{7});
    EXPECT_EQ(ids("decimal='-2.50'"), Ids{8});
    EXPECT_EQ(ids("truth='0'").size(), 7u);
}

TEST_P(FilterTest, EmptyConditionLetsAllRowsThrough) {
    add(1);
    add(2);
    EXPECT_EQ(ids("id='2'"), Ids{2});
    EXPECT_EQ(ids(""), (Ids{1, 2}));
    EXPECT_EQ(ids("   "), (Ids{1, 2}));
}

TEST_P(FilterTest, ConditionsThatMakeNoSenseAreUsageFailures) {
    add(1);
    for (const char* condition :
         {"id", "id=", "id=1", "id='1", "='1'", "id='1' OR id='2'", "id='1' AND", "id='1' AND ",
          "id='1' label='x'", "id<'1'", "[id='1'", "id='one'", "id=''", "'id'='1'"}) {
        EXPECT_EQ(faultOf([&] { open->rows.setFilter(condition); }), EngineFault::Usage)
            << condition;
    }
}

TEST_P(FilterTest, UnknownFieldIsNotFound) {
    std::string text;
    EXPECT_EQ(faultOf([&] { open->rows.setFilter("nothing='1'"); }, &text), EngineFault::NotFound);
    EXPECT_NE(text.find("nothing"), std::string::npos);
    EXPECT_NE(text.find("everything"), std::string::npos);
}

TEST_P(FilterTest, RowsMayBeDeletedOneByOne) {
    for (int i = 0; i < 3000; ++i) {
        add(i % 3, text("label of a row"));
    }
    open->rows.setFilter("id='1'");
    int deleted = 0;
    for (; !open->rows.endOfFile(); open->rows.moveNext()) {
        open->rows.deleteCurrent();
        ++deleted;
    }
    EXPECT_EQ(deleted, 1000);
    EXPECT_EQ(open->rows.recordCount(), 2000);
    EXPECT_EQ(ids("id='1'"), Ids{});
    EXPECT_EQ(ids("id='2'").size(), 1000u);
}

TEST_P(FilterTest, RecordCountIsThatOfTheWholeTable) {
    add(1);
    add(2);
    open->rows.setFilter("id='1'");
    EXPECT_EQ(open->rows.recordCount(), 2);
}

class Jet3FilterTest : public EngineTest {};

TEST_F(Jet3FilterTest, CharacterOutsideTheCodePageIsFoundInNoRow) {
    const std::string path = makeDatabase(FileFormat::Jet3, mediaTable());
    addRow(path, "media", {std::int32_t{1}, std::string("\u0416")});  // stored as "?"
    OpenTable open(engine, path, "media");
    open.rows.setFilter("medialabel='\u0416'");
    EXPECT_TRUE(open.rows.endOfFile());
    open.rows.setFilter("medialabel='?'");
    EXPECT_FALSE(open.rows.endOfFile());
}

}  // namespace
}  // namespace jet_test
