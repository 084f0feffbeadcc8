#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "base/archive_location.h"
#include "search/query_parser.h"
#include "tests/cli/companion.h"
#include "tests/search/archive_of_golden.h"
#include "tests/search/golden_queries.h"

namespace {

using Lines = std::vector<std::string>;

Lines split(const std::string& text, char between) {
    Lines result;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(between, start), text.size());
        result.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return result;
}

/// The companion on the golden archive, on the day from which its queries count.
class SearchCommands : public support::CompanionTest {
  protected:
    SearchCommands() {
        machine.fixedClock.now = {2026, 11, 21, 12, 0, 0};
        jet::Engine engine(files);
        support::storeGoldenArchive(engine, base::splitArchivePath(archive));
        for (const golden::Entry& entry : golden::entries()) {
            keys_[golden::wholePath(entry)] = entry.key;
        }
    }

    support::Outcome find(const Lines& rest) {
        Lines arguments{"find", archive};
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        return companion.run(arguments);
    }

    /// The keys of what a query finds, in order.
    Lines keysOf(const std::string& query) {
        Lines keys;
        for (const std::string& path : split(find({"-0", "--", query}).out, '\0')) {
            keys.push_back(keys_.contains(path) ? keys_.at(path) : "no entry: " + path);
        }
        return keys;
    }

    /// The search window leaves out what it does not understand; find refuses it.
    static bool isUnderstood(std::string_view line) {
        const search::LocalTime now = search::localTime({2026, 11, 21, 12, 0, 0});
        return std::ranges::none_of(search::parseQuery(line, now).notices,
                                    [](const search::Notice& notice) {
                                        return notice.kind == search::Notice::Kind::Invalid;
                                    });
    }

    std::map<std::string, std::string> keys_;
};

TEST_F(SearchCommands, FindFindsWhatTheTableOfQueriesSays) {
    for (const golden::Query& query : golden::queries()) {
        if (!isUnderstood(query.line)) {
            EXPECT_EQ(find({"-0", "--", std::string(query.line)}).code, 2) << query.line;
            continue;
        }
        Lines found = keysOf(std::string(query.line));
        Lines expected = split(std::string(query.found), ' ');
        if (query.order == golden::Order::Any) {
            std::ranges::sort(found);
            std::ranges::sort(expected);
        }
        EXPECT_EQ(found, expected) << query.line;
    }
}

TEST_F(SearchCommands, FindTellsByItsStatusWhetherItFoundSomething) {
    EXPECT_EQ(find({"strand"}).code, 0);
    EXPECT_EQ(find({"no such thing"}).code, 1);
    EXPECT_EQ(find({"no such thing"}).out, "");
    const support::Outcome failed = companion.run({"find", "/verdolin-memory/none.mdb", "x"});
    EXPECT_EQ(failed.code, 2);
    EXPECT_EQ(failed.err, "vdln: /verdolin-memory/none.mdb: there is no such file\n");
    EXPECT_EQ(companion.run({"find", archive}).code, 2);
}

TEST_F(SearchCommands, FindPrintsColumnsForPeople) {
    EXPECT_EQ(find({"summer", "holiday"}).out,
              "Name                    Medium        Folder          Size  Modified\n"
              "our summer holiday.mkv  2: Backup 12  2:\\films  1610612736  06/01/2019 00:00:00\n");
}

TEST_F(SearchCommands, FindPrintsTheColumnsThatAreAskedFor) {
    EXPECT_EQ(find({"strasse", "--columns", "name,copies,notes1", "--format", "csv"}).out,
              "Name,Copies,Notes 1\r\nSTRASSE.pdf,2,\r\nStraße.pdf,2,\r\n");
    EXPECT_EQ(find({"x", "--columns", "name,nonsense"}).code, 2);
}

TEST_F(SearchCommands, FindCountsSortsAndLimits) {
    EXPECT_EQ(find({"ext:jpg", "-c"}).out, "5\n");
    EXPECT_EQ(find({"nothing here", "-c"}).out, "0\n");
    EXPECT_EQ(find({"ext:jpg", "--sort", "size", "--limit", "1", "-0"}).out,
              std::string("3:\\Holiday\\photo (1).jpg") + '\0');
    EXPECT_EQ(find({"ext:jpg", "--sort=-size", "--limit", "1", "-0"}).out,
              std::string("1:\\photos\\2004\\img_0002.JPG") + '\0');
}

TEST_F(SearchCommands, FindSaysWhatItDidNotUnderstand) {
    const support::Outcome outcome = find({"strand", "size:>"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "vdln: query: size: a size is missing, such as size:>10mb\n");
    EXPECT_EQ(find({"foo:bar"}).err,
              "vdln: query: \"foo:\" is no field, so it is looked for as text\n");
}

TEST_F(SearchCommands, AQueryThatCannotBeUnderstoodPrintsNothingAndFails) {
    for (const std::string query : {"regex:(", "strand size:abc"}) {
        const support::Outcome found = find({query});
        EXPECT_EQ(found.code, 2) << query;
        EXPECT_EQ(found.out, "") << query;
        EXPECT_TRUE(found.err.starts_with("vdln: query: ")) << found.err;
        for (const std::string command : {"dup", "stats"}) {
            const support::Outcome outcome = companion.run({command, archive, query});
            EXPECT_EQ(outcome.code, 1) << command << ' ' << query;
            EXPECT_EQ(outcome.out, "") << command << ' ' << query;
        }
    }
}

TEST_F(SearchCommands, FindShowsATerminalNoControlCharactersInPaths) {
    machine.disk.addFile("d:\\a\x1b[31mb.txt", 5);
    scan("Disk");
    EXPECT_NE(find({"-0", "31mb"}).out.find("a\x1b[31mb.txt"), std::string::npos);
    companion.outIsTerminal = true;
    EXPECT_NE(find({"-0", "31mb"}).out.find("a\\x1b[31mb.txt"), std::string::npos);
}

TEST_F(SearchCommands, FindWritesWhatBelongsToAFormatWithoutAnyHit) {
    const auto in = [&](const std::string& format) {
        const support::Outcome outcome =
            find({"no such thing", "--columns", "name, size", "--format", format});
        EXPECT_EQ(outcome.code, 1);
        return outcome.out;
    };
    EXPECT_EQ(in("csv"), "Name,Size\r\n");
    EXPECT_EQ(in("tsv"), "Name\tSize\n");
    EXPECT_EQ(in("json"), "");
    EXPECT_NE(in("html").find("</html>"), std::string::npos);
    EXPECT_EQ(in("efu"), "Filename,Size,Date Modified,Date Created,Attributes\r\n");
    EXPECT_EQ(in("text"), "");
}

TEST_F(SearchCommands, ListsOfNamesMayHaveBlanksAfterTheirCommas) {
    EXPECT_EQ(find({"holiday.avi", "--columns", " name , keywords", "--format", "tsv"}).out,
              "Name\tKeywords\nholiday.avi\t\n");
    EXPECT_EQ(companion.run({"dup", archive, "--by", "name, size"}).code, 0);
}

TEST_F(SearchCommands, FindWritesEveryFormat) {
    const Lines query{"holiday.avi"};
    const auto in = [&](const std::string& format) {
        return find({"holiday.avi", "--columns", "name,size,keywords", "--format", format}).out;
    };
    EXPECT_EQ(in("csv"), "Name,Size,Keywords\r\nholiday.avi,2147483648+,\r\n");
    EXPECT_EQ(in("tsv"), "Name\tSize\tKeywords\nholiday.avi\t2147483648+\t\n");
    EXPECT_EQ(in("json"),
              "{\"name\":\"holiday.avi\",\"size\":2147483648,\"sizeIsAtLeast\":true,"
              "\"keywords\":\"\"}\n");
    EXPECT_NE(in("html").find("<td dir=\"auto\">holiday.avi</td>"), std::string::npos);
    EXPECT_EQ(split(in("efu"), '\n').front(),
              "Filename,Size,Date Modified,Date Created,Attributes\r");
}

TEST_F(SearchCommands, DupListsGroupsByTheBytesTheyWaste) {
    EXPECT_EQ(companion.output({"dup", archive, "--format", "tsv"}),
              "group\tkind\tsize\twasted\tmediaid\tpath\n"
              "1\tfile\t2048\t4096\t1\t1:\\\\photos\\\\2004\\\\IMG_0001.jpg\n"
              "1\tfile\t2048\t4096\t2\t2:\\\\img_0001.JPG\n"
              "1\tfile\t2048\t4096\t3\t3:\\\\Holiday\\\\img_0001.jpg\n"
              "2\tfile\t1023\t1023\t1\t1:\\\\photos\\\\Straße.pdf\n"
              "2\tfile\t1023\t1023\t2\t2:\\\\STRASSE.pdf\n");
    const std::string byDate =
        companion.output({"dup", archive, "--by", "name,size,date", "--format", "tsv"});
    EXPECT_EQ(split(byDate, '\n').size(), 4u) << byDate;
    const std::string narrowed = companion.output({"dup", archive, "pdf", "--format", "tsv"});
    EXPECT_EQ(split(narrowed, '\n').size(), 3u) << narrowed;
    EXPECT_EQ(companion.run({"dup", archive, "--by", "colour"}).code, 2);
}

TEST_F(SearchCommands, StatsCountsByWhatIsAskedFor) {
    EXPECT_EQ(companion.output({"stats", archive, "medium:1;2", "--format", "tsv"}),
              "medium\tentries\tfiles\tbytes\tquery\n"
              "1: Holiday 2001\t8\t6\t2110975\tmedium:1\n"
              "2: Backup 12\t8\t6\t5368712704+\tmedium:2\n");
    const std::string years =
        companion.output({"stats", archive, "--by", "year", "dir:films", "--format", "tsv"});
    EXPECT_EQ(years,
              "year\tentries\tfiles\tbytes\tquery\n"
              "2019\t3\t3\t5368709121+\tdate:2019\n"
              "2020\t1\t0\t0\tdate:2020\n");
    const std::string text = companion.output({"stats", archive, "--by", "ext"});
    EXPECT_NE(text.find("\nall "), std::string::npos) << text;
}

TEST_F(SearchCommands, EveryLineOfStatsIsFoundByItsQuery) {
    for (const std::string by : {"medium", "ext", "year", "size", "keywords"}) {
        const Lines lines =
            split(companion.output({"stats", archive, "--by", by, "--format", "tsv"}), '\n');
        ASSERT_GT(lines.size(), 1u) << by;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const Lines cells = fields(lines[i]);
            EXPECT_EQ(find({"-c", cells.at(4)}).out, cells.at(1) + "\n") << lines[i];
        }
    }
}

TEST_F(SearchCommands, TagChangesKeywordsAndNotesForGood) {
    EXPECT_EQ(companion.output(
                  {"tag", archive, "ext:pdf", "--add-keyword", "street", "--notes1", "seen"}),
              "2 entries changed\n");
    EXPECT_EQ(keysOf("kw:street note:seen"), (Lines{"strasse2", "strasse"}));
    EXPECT_EQ(
        companion.output({"tag", archive, "name:img_0001", "medium:1", "--add-keyword", "new"}),
        "1 entry changed\n");
    EXPECT_EQ(find({"medium:1 img_0001", "--columns", "keywords", "--format", "tsv"}).out,
              "Keywords\nholiday, beach,new\n");
    EXPECT_EQ(companion.output({"tag", archive, "kw:new", "--remove-keyword", "HOLIDAY"}),
              "1 entry changed\n");
    EXPECT_EQ(find({"kw:new", "--columns", "keywords", "--format", "tsv"}).out,
              "Keywords\nbeach,new\n");
    EXPECT_EQ(companion.output({"tag", archive, "kw:new", "--keywords", ""}), "1 entry changed\n");
    EXPECT_EQ(find({"kw:new"}).code, 1);
    EXPECT_EQ(companion.run({"check", archive}).code, 0);
}

TEST_F(SearchCommands, TagOnlyListsInADryRun) {
    const std::string before = files.read(archive);
    EXPECT_EQ(companion.output({"tag", archive, "ext:avi", "--keywords", "film", "--dry-run"}),
              "path                  keywords  notes1  notes2\n"
              "2:\\films\\holiday.avi  film\n");
    EXPECT_EQ(files.read(archive), before);
}

TEST_F(SearchCommands, TagRefusesATextThatIsTooLongBeforeAnythingIsWritten) {
    const std::string before = files.read(archive);
    const support::Outcome outcome =
        companion.run({"tag", archive, "ext:jpg", "--keywords", std::string(256, 'x')});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("keywords"), std::string::npos) << outcome.err;
    EXPECT_EQ(keysOf("has:kw ext:jpg"), (Lines{"img2", "img1"}));
    EXPECT_EQ(files.read(archive).size(), before.size());
}

TEST_F(SearchCommands, TagRefusesAQueryThatIsNotUnderstood) {
    const support::Outcome outcome =
        companion.run({"tag", archive, "size:>", "--keywords", "everything"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(find({"kw:everything"}).code, 1);
    EXPECT_EQ(companion.run({"tag", archive, "ext:jpg"}).code, 2);
    EXPECT_EQ(companion.run({"tag", archive, "x", "--keywords", "a", "--add-keyword", "b"}).code,
              2);
}

TEST_F(SearchCommands, TagRefusesAQueryWithoutACondition) {
    const std::string before = files.read(archive);
    for (const std::string query : {"", " ", "sort:name", "limit:5"}) {
        const support::Outcome outcome = companion.run({"tag", archive, query, "--keywords", "z"});
        EXPECT_EQ(outcome.code, 1) << query;
        EXPECT_EQ(outcome.err,
                  "vdln: query: nothing was changed, as there is no condition; write * to change "
                  "every entry\n");
    }
    EXPECT_EQ(files.read(archive), before);
    EXPECT_EQ(companion.output({"tag", archive, "*", "--keywords", "z"}),
              std::to_string(golden::entries().size()) + " entries changed\n");
}

TEST_F(SearchCommands, ExportRefusesAMediumThatIsNotThere) {
    const support::Outcome outcome =
        companion.run({"export", archive, "--format", "csv", "--media", "99"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "vdln: " + archive + ": there is no medium 99; \"vdln media\" lists them\n");
}

TEST_F(SearchCommands, ExportWritesAllEntriesOrThoseOfAMedium) {
    const std::string all =
        companion.output({"export", archive, "--format", "tsv", "--columns", "name"});
    EXPECT_EQ(split(all, '\n').size(), golden::entries().size() + 1);
    const std::string one = companion.output(
        {"export", archive, "--format", "tsv", "--columns", "name", "--media", "2"});
    EXPECT_EQ(split(one, '\n').size(), 9u);
    EXPECT_EQ(companion.run({"export", archive}).code, 2);
}

TEST_F(SearchCommands, DiffComparesTwoMedia) {
    const std::string text =
        companion.output({"diff", archive, "1", "Backup 12", "--format", "tsv"});
    EXPECT_NE(text.find("moved\t\\\\photos\\\\2004\\\\IMG_0001.jpg\t\\\\img_0001.JPG\t2048\t2048"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("removed\t\\\\README\t\\N"), std::string::npos) << text;
    EXPECT_NE(text.find("added\t\\N\t\\\\films\\\\holiday.avi"), std::string::npos) << text;
    EXPECT_EQ(companion.output({"diff", archive, "1", "1", "--format", "tsv"}),
              "difference\tleft\tright\tleftsize\trightsize\tleftmodified\trightmodified\n");
    EXPECT_EQ(companion.run({"diff", archive, "99", "1"}).code, 1);
    EXPECT_EQ(companion.run({"diff", archive, "1", "no such folder"}).code, 1);
}

TEST_F(SearchCommands, DiffPairsNamesThatDifferInCaseByTheirExactNamesFirst) {
    const std::string header =
        "difference\tleft\tright\tleftsize\trightsize\tleftmodified\trightmodified\n";
    machine.disk.addFile("d:\\a.txt", 5);
    machine.disk.addFile("d:\\A.txt", 6);
    scan("Disk");
    machine.disk.remove("d:\\a.txt");
    machine.disk.addFile("d:\\a.txt", 5);
    EXPECT_EQ(companion.output({"diff", archive, "Disk", "d:", "--format", "tsv"}), header);
    machine.disk.remove("d:\\A.txt");
    const Lines lines =
        split(companion.output({"diff", archive, "Disk", "d:", "--format", "tsv"}), '\n');
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[1].starts_with("removed\t\\\\A.txt\t\\N\t6\t")) << lines[1];
}

TEST_F(SearchCommands, DiffComparesAMediumWithADrive) {
    machine.disk.addFolder("d:\\sub");
    machine.disk.addFile("d:\\same.txt", 5);
    machine.disk.addFile("d:\\sub\\gone.txt", 6);
    scan("Disk");
    EXPECT_EQ(
        split(companion.output({"diff", archive, "Disk", "d:", "--format", "tsv"}), '\n').size(),
        1u);
    machine.disk.addFile("d:\\new.txt", 7);
    const Lines lines =
        split(companion.output({"diff", archive, "Disk", "d:", "--format", "tsv"}), '\n');
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1].substr(0, 22), "added\t\\N\t\\\\new.txt\t\\N\t");
}

TEST_F(SearchCommands, DiffTellsWhatHasAnotherSizeOrAnotherKind) {
    machine.disk.addFile("d:\\a.txt", 5);
    machine.disk.addFile("d:\\b", 7);
    scan("Disk");
    machine.disk.remove("d:\\a.txt");
    machine.disk.addFile("d:\\a.txt", 9);
    machine.disk.remove("d:\\b");
    machine.disk.addFolder("d:\\b");
    const Lines lines =
        split(companion.output({"diff", archive, "Disk", "d:", "--format", "tsv"}), '\n');
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_TRUE(lines[1].starts_with("changed\t\\\\a.txt\t\\\\a.txt\t5\t9\t")) << lines[1];
    EXPECT_TRUE(lines[2].starts_with("changed\t\\\\b\t\\\\b\t7\t\\N\t")) << lines[2];
}

}  // namespace
