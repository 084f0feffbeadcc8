#include "jet/connection.h"

#include "tests/jet/engine_fixture.h"
#include "tests/jet/example_tables.h"

namespace jet_test {
namespace {

using base::EngineFault;
using jet::FileFormat;

class ConnectionTest : public EngineTest {
  protected:
    /// Opens with a text in which PATH stands for the file's path.
    void open(std::string text, const std::string& file) {
        if (const std::size_t at = text.find("PATH"); at != std::string::npos) {
            text.replace(at, 4, file);
        }
        jet::Connection connection(engine);
        connection.open(text);
        EXPECT_TRUE(connection.isOpen());
    }
    std::string path = makeDatabase(FileFormat::Jet4, mediaTable());
};

TEST_F(ConnectionTest, TextsThatNameTheFile) {
    for (const char* text : {
             "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=PATH",
             "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=PATH;",
             "provider=microsoft.jet.oledb.4.0;DATA SOURCE=PATH;",
             " Provider = Microsoft.Jet.OLEDB.4.0 ; Data Source=PATH",
             "Data Source=PATH;Provider=Microsoft.Jet.OLEDB.4.0",
             "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=\"PATH\"",
             "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=PATH;Persist Security Info=False",
         }) {
        EXPECT_NO_THROW(open(text, path)) << text;
    }
}

TEST_F(ConnectionTest, PathMayHoldSemicolonsAndEqualsSigns) {
    for (const char* name : {"a;b.mdb", "a=b.mdb", "x;y=z;.mdb", "it's.mdb", "\u00E4 \u0416.mdb"}) {
        EXPECT_NO_THROW(open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=PATH",
                             makeDatabase(FileFormat::Jet4, mediaTable(), name)))
            << name;
    }
}

TEST_F(ConnectionTest, OtherTextsAreUsageFailures) {
    for (const char* text : {"", "Data Source=PATH", "Provider=SQLOLEDB;Data Source=PATH",
                             "Provider=Microsoft.Jet.OLEDB.4.0",
                             "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=", "PATH"}) {
        EXPECT_EQ(faultOf([&] { open(text, path); }), EngineFault::Usage) << text;
    }
}

TEST_F(ConnectionTest, MissingFileIsNotFound) {
    EXPECT_EQ(faultOf([&] {
                  open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=PATH",
                       folder.pathOf("none.mdb"));
              }),
              EngineFault::NotFound);
    EXPECT_FALSE(folder.exists("none.mdb"));
}

TEST_F(ConnectionTest, FailedOpenLeavesItClosed) {
    jet::Connection connection(engine);
    connection.open(connectionText(path));
    EXPECT_THROW(connection.open("nonsense"), base::EngineFailure);
    EXPECT_FALSE(connection.isOpen());
}

TEST_F(ConnectionTest, ClosingTwiceIsNothing) {
    jet::Connection connection(engine);
    connection.close();
    connection.open(connectionText(path));
    connection.close();
    connection.close();
    EXPECT_FALSE(connection.isOpen());
}

TEST_F(ConnectionTest, RecordsetNeedsAnOpenConnection) {
    jet::Connection connection(engine);
    jet::Recordset rows;
    EXPECT_EQ(faultOf([&] {
                  rows.open("media", connection, jet::CursorType::Dynamic,
                            jet::LockType::Optimistic, jet::CommandType::Table);
              }),
              EngineFault::Usage);
    EXPECT_FALSE(rows.isOpen());
    EXPECT_EQ(faultOf([&] { rows.moveNext(); }), EngineFault::Usage);
}

TEST_F(ConnectionTest, TwoConnectionsSeeEachOthersRows) {
    OpenTable one(engine, path, "media");
    OpenTable two(engine, path, "MEDIA");
    one.rows.addNew();
    one.rows.setInteger(0, 5);
    one.rows.update();
    two.rows.moveFirst();
    ASSERT_FALSE(two.rows.endOfFile());
    EXPECT_EQ(two.rows.integer(0), 5);
    EXPECT_EQ(two.rows.recordCount(), 1);
}

TEST_F(ConnectionTest, OnePathOrAnotherIsOneFile) {
    const std::string link = folder.makeHardLink("link.mdb", "test.mdb");
    OpenTable one(engine, path, "media");
    OpenTable two(engine, link, "media");
    one.rows.addNew();
    one.rows.update();
    EXPECT_EQ(two.rows.recordCount(), 1);
}

TEST_F(ConnectionTest, UnfinishedRowIsDroppedAtClose) {
    {
        OpenTable open(engine, path, "media");
        open.rows.addNew();
        open.rows.setInteger(0, 1);
    }
    EXPECT_TRUE(allRows(path, "media").empty());
}

// ---------------------------------------------------------------------------------------------------
// When rows reach the file. Another engine has the file open for reading only while nobody writes,
// so the file's own bytes are looked at.

class FlushTest : public ConnectionTest {
  protected:
    bool stored(const std::string& text) const {
        return folder.read("test.mdb").find(text) != std::string::npos;
    }
    void add(OpenTable& open, const std::string& label) {
        open.rows.addNew();
        open.rows.setText(1, label);
        open.rows.update();
    }
};

TEST_F(FlushTest, RowsStayInMemoryUntilAFlush) {
    OpenTable open(engine, path, "media");
    add(open, "LABEL_ONE");
    EXPECT_FALSE(stored("LABEL_ONE"));
    open.connection.flush();
    EXPECT_TRUE(stored("LABEL_ONE"));
}

TEST_F(FlushTest, CloseFlushes) {
    {
        OpenTable open(engine, path, "media");
        add(open, "LABEL_ONE");
        open.connection.close();
        EXPECT_TRUE(stored("LABEL_ONE"));
    }
}

TEST_F(FlushTest, DestructorFlushes) {
    { add(*std::make_unique<OpenTable>(engine, path, "media"), "LABEL_ONE"); }
    EXPECT_TRUE(stored("LABEL_ONE"));
}

TEST_F(FlushTest, PolicyCountsRows) {
    OpenTable open(engine, path, "media");
    open.connection.setFlushPolicy({.rows = 3, .milliseconds = 0});
    add(open, "LABEL_ONE");
    add(open, "LABEL_TWO");
    EXPECT_FALSE(stored("LABEL_ONE"));
    add(open, "LABEL_THREE");
    EXPECT_TRUE(stored("LABEL_ONE"));
    EXPECT_TRUE(stored("LABEL_THREE"));
    add(open, "LABEL_FOUR");
    EXPECT_FALSE(stored("LABEL_FOUR"));
}

TEST_F(FlushTest, DeletionsCountAsRows) {
    OpenTable open(engine, path, "media");
    add(open, "LABEL_ONE");
    add(open, "LABEL_TWO");
    open.connection.flush();
    const std::string before = folder.read("test.mdb");
    open.rows.moveFirst();
    open.rows.deleteCurrent();
    EXPECT_EQ(folder.read("test.mdb"), before);
    open.connection.setFlushPolicy({.rows = 1, .milliseconds = 0});
    open.rows.moveNext();
    open.rows.deleteCurrent();
    EXPECT_NE(folder.read("test.mdb"), before);
}

TEST_F(FlushTest, PolicyCountsTime) {
    OpenTable open(engine, path, "media");
    open.connection.setFlushPolicy({.rows = 0, .milliseconds = 1});
    add(open, "LABEL_ONE");
    // The clock is looked at from time to time only.
    for (int i = 0; i < 100000 && !stored("LABEL_ONE"); i += 64) {
        for (int k = 0; k < 64; ++k) {
            add(open, "LATER");
        }
    }
    EXPECT_TRUE(stored("LABEL_ONE"));
}

// ---------------------------------------------------------------------------------------------------

/// Opens every file for reading only, as a folder without permission to write does.
class ReadingOpener : public base::FileOpener {
  public:
    explicit ReadingOpener(base::FileOpener& files) : files_(files) {}
    Opened open(const std::string& path, Mode mode) override {
        return mode == Mode::Read ? files_.open(path, mode)
                                  : Opened{nullptr, Refusal::NotWritable, "may not be written"};
    }
    void pause(int milliseconds) override { files_.pause(milliseconds); }

  private:
    base::FileOpener& files_;
};

TEST_F(ConnectionTest, FileThatMayNotBeWrittenIsRead) {
    addRow(path, "media", {std::int32_t{1}});
    ReadingOpener reading(files);
    jet::Engine other(reading);
    OpenTable open(other, path, "media");
    EXPECT_EQ(open.rows.integer(0), 1);
    EXPECT_EQ(faultOf([&] { open.rows.addNew(); }), EngineFault::ReadOnly);
    EXPECT_EQ(faultOf([&] { open.rows.setInteger(0, 2); }), EngineFault::ReadOnly);
    EXPECT_EQ(faultOf([&] { open.rows.deleteCurrent(); }), EngineFault::ReadOnly);
    EXPECT_EQ(faultOf([&] { jet::Database::open(other, path).append(mainTable()); }),
              EngineFault::ReadOnly);
    EXPECT_EQ(open.rows.integer(0), 1);
}

}  // namespace
}  // namespace jet_test
