#include <gtest/gtest.h>

#include "jet/connection.h"
#include "jet/database.h"
#include "jet/recordset.h"
#include "tests/cli/companion.h"

namespace {

using support::Outcome;

class ListingCommands : public support::CompanionTest {
  protected:
    void fillDisk() {
        machine.disk.localOffset = 0;
        support::FakeEntry& folder = machine.disk.addFolder("d:\\dir");
        folder.created = support::timeOf(2001, 3, 7, 9, 5, 0);
        folder.lastWrite = support::timeOf(2002, 12, 31, 23, 59, 59);
        support::FakeEntry& file = machine.disk.addFile("d:\\dir\\a\tb.txt", 42);
        file.created = folder.created;
        file.lastWrite = folder.lastWrite;
        file.typeName = "Text";
    }

    /// A table with a number, a text and a memo, in a file of its own.
    void makeFile(const std::string& path) {
        jet::Engine engine(files);
        jet::Database database =
            jet::Database::create(engine, path, ";LANGID=0x0409;CP=1252;COUNTRY=0");
        jet::TableDefinition table;
        table.name = "Odd Table";
        table.fields = {{.name = "id", .type = jet::DataType::Long},
                        {.name = "text", .type = jet::DataType::Text, .allowZeroLength = true},
                        {.name = "flag", .type = jet::DataType::Boolean},
                        {.name = "price", .type = jet::DataType::Double}};
        database.append(table);
        database.close();
        jet::Connection connection(engine);
        connection.open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
        jet::Recordset rows;
        rows.open("Odd Table", connection, jet::CursorType::Dynamic, jet::LockType::Optimistic,
                  jet::CommandType::Table);
        rows.addNew();
        rows.setValue(2, true);
        rows.update();
        rows.addNew();
        rows.setInteger(0, 7);
        rows.setText(1, "");
        rows.setValue(2, false);
        rows.setValue(3, 2.5);
        rows.update();
        rows.close();
        connection.close();
    }
};

TEST_F(ListingCommands, AnEmptyArchiveListsNothingButTheFields) {
    EXPECT_EQ(companion.output({"records", archive}),
              "filename\tpath\tfolder\ttype\tsize\tdatecreated\tdatemodified\tkeywords\tnotes1\t"
              "notes2\tmediaid\n");
    EXPECT_EQ(companion.output({"media", archive, "--format", "tsv"}),
              "mediaid\tmedialabel\tmedianame\tmediasize\tmediatype\tmediafreespace\tarchivedate\t"
              "archiveupdate\tnumberfiles\n");
}

TEST_F(ListingCommands, MediaPrintsEveryFieldInOrder) {
    fillDisk();
    scan("My disk");
    EXPECT_EQ(companion.output({"media", archive, "--format", "csv"}),
              "mediaid,medialabel,medianame,mediasize,mediatype,mediafreespace,archivedate,"
              "archiveupdate,numberfiles\r\n"
              "1,DISK,My disk,700,Removable,100,03/07/2001 09:05:00,03/07/2001 09:05:00,2\r\n");
}

TEST_F(ListingCommands, MediaPrintsColumnsForPeopleByDefault) {
    scan("My disk");
    EXPECT_TRUE(companion.output({"media", archive})
                    .ends_with("\n      1  DISK        My disk          700  Removable             "
                               "100  03/07/2001 09:05:00  03/07/2001 09:05:00            0\n"));
}

TEST_F(ListingCommands, RecordsPrintsEveryFieldInOrder) {
    fillDisk();
    scan();
    const std::string dates = "\t03/07/2001 09:05:00\t12/31/2002 23:59:59\t\t\t\t1\n";
    const std::string records = companion.output({"records", archive});
    EXPECT_EQ(
        records.substr(records.find('\n') + 1),
        "dir\t1:\tfolder\tFolder\t0" + dates + "a\\tb.txt\t1:\\\\dir\tfile\tText\t42" + dates);
}

TEST_F(ListingCommands, RecordsOfOneMediumOrOneKind) {
    fillDisk();
    scan();
    scan();
    EXPECT_EQ(records().size(), 4U);
    EXPECT_EQ(records({"--media", "2"}),
              (std::vector<std::string>{"dir|2:", "a\\tb.txt|2:\\\\dir"}));
    EXPECT_EQ(records({"--media", "1", "--kind", "file"}),
              (std::vector<std::string>{"a\\tb.txt|1:\\\\dir"}));
    EXPECT_EQ(records({"--kind", "folder"}), (std::vector<std::string>{"dir|1:", "dir|2:"}));
    EXPECT_EQ(records({"--media", "3"}), (std::vector<std::string>{}));
}

TEST_F(ListingCommands, RecordsAsJson) {
    fillDisk();
    scan();
    EXPECT_EQ(companion.output({"records", archive, "--kind", "file", "--format", "json"}),
              "[\n{\"filename\":\"a\\tb.txt\",\"path\":\"1:\\\\dir\",\"folder\":\"file\","
              "\"type\":\"Text\",\"size\":42,\"datecreated\":\"03/07/2001 09:05:00\","
              "\"datemodified\":\"12/31/2002 23:59:59\",\"keywords\":\"\",\"notes1\":\"\","
              "\"notes2\":\"\",\"mediaid\":1}\n]\n");
}

TEST_F(ListingCommands, NamesAreHarmlessOnATerminal) {
    machine.disk.addFile("d:\\evil\x1b[31m");
    scan();
    companion.outIsTerminal = true;
    for (const char* format : {"text", "tsv", "csv", "json"}) {
        const std::string text = companion.output({"records", archive, "--format", format});
        EXPECT_EQ(text.find('\x1b'), std::string::npos) << format;
        EXPECT_NE(text.find("1b[31m"), std::string::npos) << format;
    }
}

TEST_F(ListingCommands, DumpListsTheTablesWithTheirRows) {
    fillDisk();
    scan();
    EXPECT_EQ(companion.output({"dump", archive}), "table\trows\nmain\t2\nmedia\t1\n");
}

TEST_F(ListingCommands, DumpListsSystemTablesOnlyWhenAsked) {
    const std::string all = companion.output({"dump", archive, "--system"});
    EXPECT_NE(all.find("MSysObjects\t"), std::string::npos);
    EXPECT_EQ(companion.output({"dump", archive}).find("MSys"), std::string::npos);
}

TEST_F(ListingCommands, DumpPrintsTheRowsOfAnyTable) {
    makeFile("/odd.mdb");
    EXPECT_EQ(companion.output({"dump", "/odd.mdb", "odd table"}),
              "id\ttext\tflag\tprice\n\\N\t\\N\ttrue\t\\N\n7\t\tfalse\t2.5\n");
    EXPECT_EQ(companion.output({"dump", "/odd.mdb", "Odd Table", "--format", "csv"}),
              "id,text,flag,price\r\n,,true,\r\n7,\"\",false,2.5\r\n");
    EXPECT_EQ(companion.output({"dump", "/odd.mdb", "Odd Table", "--format", "json"}),
              "[\n{\"id\":null,\"text\":null,\"flag\":true,\"price\":null},\n"
              "{\"id\":7,\"text\":\"\",\"flag\":false,\"price\":2.5}\n]\n");
}

TEST_F(ListingCommands, ATableThatIsNotThereIsOneLine) {
    makeFile("/odd.mdb");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"dump", "/odd.mdb", "media"}, {"media", "/odd.mdb"}}) {
        const Outcome outcome = companion.run(arguments);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err, "vdln: /odd.mdb: there is no table media\n");
    }
}

TEST_F(ListingCommands, DrivesShowsLabelTypeSizesAndFolder) {
    machine.machineDrives.add('e', "", 4).ready = false;
    machine.machineDrives.at('e').folder = "/media/cd";
    EXPECT_EQ(companion.output({"drives"}),
              "drive  label  type       size (Mb)  free (Mb)  folder\n"
              "d:     DISK   Removable        700        100  /media/disk\n"
              "e:            CDROM                            /media/cd\n");
    EXPECT_EQ(companion.output({"drives", "--format", "tsv"}),
              "drive\tlabel\ttype\tsize (Mb)\tfree (Mb)\tfolder\n"
              "d:\tDISK\tRemovable\t700\t100\t/media/disk\n"
              "e:\t\tCDROM\t\\N\t\\N\t/media/cd\n");
}

TEST_F(ListingCommands, ADriveOfAnUnknownTypeIsListed) {
    machine.machineDrives.at('d').type = 9;
    EXPECT_NE(companion.output({"drives"}).find("UnKnown"), std::string::npos);
}

}  // namespace
