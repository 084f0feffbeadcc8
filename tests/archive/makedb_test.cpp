#include "archive/makedb.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "jet/database.h"
#include "tests/archive/archive_fixture.h"

namespace {

using Names = std::vector<std::string>;

class MakedbTest : public support::ArchiveTest {
  protected:
    jet::TableDefinition table(const std::string& name) {
        return jet::Database::open(engine, path).table(name);
    }

    static Names namesOf(const jet::TableDefinition& table) {
        Names names;
        for (const jet::Field& field : table.fields) {
            names.push_back(field.name);
        }
        return names;
    }

    base::EngineFault faultOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const base::EngineFailure& failure) {
            return failure.fault();
        }
        ADD_FAILURE() << "no failure";
        return base::EngineFault::InputOutput;
    }

    const std::string path = "/archives/test.mdb";
};

const Names numbers{"size", "mediaid", "mediasize", "mediafreespace", "numberfiles"};

bool isNumber(const std::string& name) {
    return std::find(numbers.begin(), numbers.end(), name) != numbers.end();
}

}  // namespace

TEST_F(MakedbTest, FileIsNamedByFolderAndName) {
    EXPECT_TRUE(archive::createArchive(engine, {"/other/", "b.mdb"}));
    EXPECT_TRUE(files.exists("/other/b.mdb"));
}

TEST_F(MakedbTest, HoldsExactlyTheTwoTablesWithoutRows) {
    Names names;
    for (const jet::TableSummary& table : jet::Database::open(engine, path).tables()) {
        if (!table.system) {
            names.push_back(table.name);
            EXPECT_EQ(table.rowCount, 0) << table.name;
        }
    }
    EXPECT_EQ(names, (Names{"main", "media"}));
}

TEST_F(MakedbTest, MainHasItsFieldsInOrder) {
    EXPECT_EQ(namesOf(table("main")),
              (Names{"filename", "path", "folder", "type", "size", "datecreated", "datemodified",
                     "keywords", "notes1", "notes2", "mediaid"}));
}

TEST_F(MakedbTest, MediaHasItsFieldsInOrder) {
    EXPECT_EQ(namesOf(table("media")),
              (Names{"mediaid", "medialabel", "medianame", "mediasize", "mediatype",
                     "mediafreespace", "archivedate", "archiveupdate", "numberfiles"}));
}

TEST_F(MakedbTest, TextsAllowTheEmptyTextAndNumbersAreLong) {
    for (const char* name : {"main", "media"}) {
        for (const jet::Field& field : table(name).fields) {
            const bool number = isNumber(field.name);
            EXPECT_EQ(field.type, number ? jet::DataType::Long : jet::DataType::Text) << field.name;
            EXPECT_EQ(field.allowZeroLength, !number) << field.name;
            EXPECT_FALSE(field.required) << field.name;
            EXPECT_FALSE(field.autoNumber) << field.name;
        }
    }
}

TEST_F(MakedbTest, TablesHaveNoIndex) {
    EXPECT_TRUE(table("main").indexes.empty());
    EXPECT_TRUE(table("media").indexes.empty());
}

TEST_F(MakedbTest, EveryTextFieldHoldsTheEmptyTextWhichIsNotNull) {
    for (const char* name : {"main", "media"}) {
        archive::ArchiveTable open(engine, state.currentArchive(), name);
        jet::Recordset& rows = open.rows();
        const std::vector<jet::Field> fields = rows.definition().fields;
        rows.addNew();
        for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
            if (fields[static_cast<std::size_t>(i)].type == jet::DataType::Text) {
                rows.setText(i, "");
            }
        }
        rows.update();
        rows.moveFirst();
        for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
            const jet::Field& field = fields[static_cast<std::size_t>(i)];
            EXPECT_EQ(rows.isNull(i), field.type != jet::DataType::Text) << field.name;
            EXPECT_EQ(rows.text(i), "") << field.name;
        }
    }
}

TEST_F(MakedbTest, TextFieldsHold255Characters) {
    archive::ArchiveTable open(engine, state.currentArchive(), "main");
    jet::Recordset& rows = open.rows();
    const int field = rows.field("notes1");
    rows.addNew();
    rows.setText(field, std::string(255, 'n'));
    rows.update();
    EXPECT_EQ(faultOf([&] {
                  rows.addNew();
                  rows.setText(field, std::string(256, 'n'));
                  rows.update();
              }),
              base::EngineFault::Value);
}

TEST_F(MakedbTest, SizeHolds32Bits) {
    archive::ArchiveTable open(engine, state.currentArchive(), "main");
    jet::Recordset& rows = open.rows();
    const int field = rows.field("size");
    rows.addNew();
    rows.setInteger(field, 2147483647);
    rows.update();
    EXPECT_EQ(faultOf([&] {
                  rows.addNew();
                  rows.setInteger(field, 2147483648);
                  rows.update();
              }),
              base::EngineFault::Value);
}

TEST_F(MakedbTest, FieldsAreFoundInAnyLetterCase) {
    archive::ArchiveTable open(engine, state.currentArchive(), "MAIN");
    EXPECT_EQ(open.rows().field("mediaId"), 10);
    EXPECT_EQ(open.rows().field("MEDIAID"), 10);
    EXPECT_EQ(open.rows().field("DateModified"), 6);
    EXPECT_EQ(faultOf([&] { open.rows().field("mediaId "); }), base::EngineFault::NotFound);
}

TEST_F(MakedbTest, FileThatIsThereAlreadyIsAFailureAndStaysAsItIs) {
    files.write("/archives/b.mdb", "something else");
    EXPECT_EQ(faultOf([&] {
                  archive::createArchive(engine, {"/archives/", "b.mdb"});
              }),
              base::EngineFault::Exists);
    EXPECT_EQ(files.read("/archives/b.mdb"), "something else");
}

TEST_F(MakedbTest, ArchiveThatIsThereAlreadyKeepsItsRows) {
    base::MediaInfo medium;
    medium.mediaId = 4;
    tables.addMedia(state.currentArchive(), {medium});
    EXPECT_EQ(faultOf([&] { archive::createArchive(engine, state.currentArchive()); }),
              base::EngineFault::Exists);
    EXPECT_EQ(column("media", "mediaid"), Names{"4"});
}

TEST_F(MakedbTest, FolderThatCannotBeWrittenIsAFailure) {
    files.unwritable.insert("/archives/b.mdb");
    EXPECT_THROW(archive::createArchive(engine, {"/archives/", "b.mdb"}), base::Failure);
}

TEST_F(MakedbTest, FullDiskIsAFailureAndNothingIsRolledBack) {
    files.capacity = 10000;
    EXPECT_THROW(archive::createArchive(engine, {"/archives/", "b.mdb"}), base::Failure);
    EXPECT_TRUE(files.exists("/archives/b.mdb"));
}
