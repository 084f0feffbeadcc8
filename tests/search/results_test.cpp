#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "search/breakdown.h"
#include "search/byte_search.h"
#include "search/completion.h"
#include "search/duplicates.h"
#include "search/exporter.h"
#include "search/highlight.h"
#include "search/query_edit.h"
#include "search/text_fold.h"
#include "tests/search/search_fixture.h"

namespace {

using search::Row;

base::ScanEntry entry(const std::string& path, const std::string& name, std::int32_t size,
                      const std::string& kind = "file") {
    base::ScanEntry result;
    result.path = path;
    result.FileName = name;
    result.Folder = kind;
    result.Size = size;
    result.DateModified = "05/31/2004 23:59:59";
    result.mediaId = std::stoi(path);
    return result;
}

/// A group with rows of its own.
struct Group : search::DuplicateGroup {
    explicit Group(const search::DuplicateGroup& found)
        : DuplicateGroup(found), rows(found.rows.begin(), found.rows.end()) {}
    std::vector<Row> rows;
};

std::vector<Group> duplicatesOf(const std::shared_ptr<const search::Index>& index,
                                search::SameBy sameBy = {}) {
    std::vector<Row> rows(index->size());
    for (Row row = 0; row < rows.size(); ++row) {
        rows[row] = row;
    }
    search::DuplicateSearch work(*index, rows, sameBy);
    while (!work.run(search::Budget(std::chrono::milliseconds(0)))) {
    }
    return {work.groups().begin(), work.groups().end()};
}

TEST(Duplicates, EqualFoldersAreOneGroupAndWhatIsInThemIsNotListedAgain) {
    const auto index = support::indexOf(
        {entry("1:", "trip", 0, "folder"), entry("1:\\trip", "day", 0, "folder"),
         entry("1:\\trip", "a.jpg", 10), entry("1:\\trip\\day", "b.jpg", 20),
         entry("2:", "trip copy", 0, "folder"), entry("2:\\trip copy", "day", 0, "folder"),
         entry("2:\\trip copy", "A.JPG", 10), entry("2:\\trip copy\\day", "b.jpg", 20),
         entry("3:", "b.jpg", 20)});
    const auto groups = duplicatesOf(index);
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_TRUE(groups[0].isFolder);
    EXPECT_EQ(groups[0].rows, (std::vector<Row>{0, 4}));
    EXPECT_EQ(groups[0].bytes, 30);
    EXPECT_EQ(groups[0].wasted, 30);
    EXPECT_EQ(groups[0].media, 2u);
    // One more copy outside of the folders.
    EXPECT_EQ(groups[1].rows, (std::vector<Row>{3, 7, 8}));
    EXPECT_EQ(groups[1].wasted, 40);
}

TEST(Duplicates, FoldersOfDifferentContentsAreNone) {
    const auto index = support::indexOf(
        {entry("1:", "a", 0, "folder"), entry("1:\\a", "x", 10), entry("2:", "a", 0, "folder"),
         entry("2:\\a", "x", 11), entry("3:", "empty", 0, "folder"),
         entry("4:", "empty", 0, "folder"), entry("3:", "nothing", 0), entry("4:", "nothing", 0)});
    EXPECT_TRUE(duplicatesOf(index).empty());
    const auto byName = duplicatesOf(index, {true, false, false});
    ASSERT_FALSE(byName.empty());
    EXPECT_EQ(byName[0].rows, (std::vector<Row>{0, 2}));
}

TEST(Duplicates, SizesThatAreNotKnownCountAsTwoGigabytes) {
    const auto index = support::indexOf({entry("1:", "film", -5), entry("2:", "film", -5)});
    const auto groups = duplicatesOf(index);
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0].wasted, std::int64_t{1} << 31);
    EXPECT_FALSE(groups[0].isExact);
}

class StringSink : public search::ExportSink {
  public:
    void write(std::string_view bytes) override { text += bytes; }
    std::string text;
};

std::string exported(const base::ScanEntry& row, search::ExportFormat format,
                     search::ExportOptions options) {
    const auto index = support::indexOf({row});
    const std::vector<Row> rows{0};
    StringSink sink;
    search::Exporter(*index, rows, format, std::move(options), sink)
        .run(search::Budget::unlimited());
    return sink.text;
}

search::ExportOptions nameOnly() {
    search::ExportOptions options;
    options.columns = {search::ResultColumn::Name};
    return options;
}

TEST(Duplicates, ManyGroupsComeInTheOrderOfTheBytesTheyWaste) {
    std::mt19937 random(5);
    std::vector<base::ScanEntry> entries;
    std::map<std::pair<std::string, int>, std::vector<Row>> plain;
    for (Row row = 0; row < 40000; ++row) {
        const std::string name = "name " + std::to_string(random() % 6000);
        const int size = static_cast<int>(1 + random() % 3);
        entries.push_back(entry("1:\\" + std::to_string(random() % 50), name, size));
        plain[{name, size}].push_back(row);
    }
    std::vector<std::vector<Row>> expected;
    for (const auto& [same, rows] : plain) {
        if (rows.size() > 1) {
            expected.push_back(rows);
        }
    }
    const auto wasted = [&](const std::vector<Row>& rows) {
        return static_cast<int>(rows.size() - 1) * entries[rows[0]].Size;
    };
    std::ranges::sort(expected, [&](const auto& left, const auto& right) {
        return wasted(left) != wasted(right) ? wasted(left) > wasted(right)
                                             : left.front() < right.front();
    });
    std::vector<std::vector<Row>> found;
    for (const Group& group : duplicatesOf(support::indexOf(entries))) {
        EXPECT_EQ(group.wasted, wasted(group.rows));
        found.push_back(group.rows);
    }
    EXPECT_GT(found.size(), 8192U);
    EXPECT_EQ(found, expected);
}

TEST(Export, CsvQuotesWhatNeedsIt) {
    const auto csv = [](const std::string& name) {
        return exported(entry("1:", name, 1), search::ExportFormat::Csv, nameOnly());
    };
    EXPECT_EQ(csv("a,b \"c\"\n"), "Name\r\n\"a,b \"\"c\"\"\n\"\r\n");
    EXPECT_EQ(csv("plain"), "Name\r\nplain\r\n");
    EXPECT_EQ(csv("=1+1"), "Name\r\n=1+1\r\n");
}

TEST(Export, FormulasAreNeutralisedOnRequest) {
    for (const std::string name : {"=1+1", "+1", "-1", "@x", "\tx"}) {
        search::ExportOptions options = nameOnly();
        options.neutralisesFormulas = true;
        const std::string csv = exported(entry("1:", name, 1), search::ExportFormat::Csv, options);
        EXPECT_EQ(csv, "Name\r\n'" + name + "\r\n");
    }
}

TEST(Export, TsvJsonAndHtmlEscapeTheirOwnSigns) {
    const base::ScanEntry row = entry("1:", "a\t<b>&\"\\\n\x1b", 1);
    EXPECT_EQ(exported(row, search::ExportFormat::Tsv, nameOnly()),
              "Name\na\\t<b>&\"\\\\\\n\x1b\n");
    EXPECT_EQ(exported(row, search::ExportFormat::JsonLines, nameOnly()),
              "{\"name\":\"a\\u0009<b>&\\\"\\\\\\u000a\\u001b\"}\n");
    EXPECT_NE(exported(row, search::ExportFormat::Html, nameOnly())
                  .find("a\t&lt;b&gt;&amp;&quot;\\\n\uFFFD</td>"),
              std::string::npos);
}

TEST(Export, EfuHasTimesInUtcAndMarksFolders) {
    // Whatever the time zone, the time lies within a day of the same time in UTC.
    const std::string text = exported(entry("1:", "x", 0, "folder"), search::ExportFormat::Efu, {});
    const std::string start = "Filename,Size,Date Modified,Date Created,Attributes\r\n\"1:\\x\",,";
    ASSERT_TRUE(text.starts_with(start)) << text;
    const std::int64_t ticks = std::stoll(text.substr(start.size()));
    EXPECT_NEAR(static_cast<double>(ticks), 127305215990000000.0, 864e9);
    EXPECT_TRUE(text.ends_with(",,16\r\n")) << text;
}

TEST(Highlight, MarksTheWordsAndNotWhatIsExcluded) {
    const search::Highlighter marks(search::parseQuery("MULLER strand !am ext:jpg", 0));
    // "Müller am Strand": the letter with its accent is two bytes.
    EXPECT_EQ(marks.inName("Müller am Strand"), (std::vector<search::TextRange>{{0, 7}, {11, 6}}));
    EXPECT_EQ(marks.inName("Mu\u0308ller"), (std::vector<search::TextRange>{{0, 8}}));
    EXPECT_TRUE(marks.inName("other").empty());
    EXPECT_EQ(marks.inPath("1:\\strand"), (std::vector<search::TextRange>{{3, 6}}));
    EXPECT_TRUE(marks.inKeywords("strand").empty());
    const search::Highlighter sharp(search::parseQuery("s", 0));
    EXPECT_EQ(sharp.inName("aß"), (std::vector<search::TextRange>{{1, 2}}));
    const search::Highlighter expression(search::parseQuery("regex:\\d+", 0));
    EXPECT_EQ(expression.inName("a12b3"), (std::vector<search::TextRange>{{1, 2}, {4, 1}}));
}

TEST(QueryEdit, AddsAndTakesOutTerms) {
    EXPECT_EQ(search::lineWith("", "ext:jpg"), "ext:jpg");
    EXPECT_EQ(search::lineWith("a b", "ext:jpg"), "a b ext:jpg");
    EXPECT_EQ(search::lineWith("a ext:jpg b", "ext:jpg"), "a ext:jpg b");
    EXPECT_EQ(search::lineWith("a !ext:jpg b", "ext:jpg"), "a b ext:jpg");
    EXPECT_EQ(search::lineWith("a | b", "ext:jpg"), "(a | b) ext:jpg");
    EXPECT_EQ(search::lineWith("(a | b", "ext:jpg"), "(a | b) ext:jpg");
    EXPECT_EQ(search::lineWith("\"a b", "ext:jpg"), "\"a b\" ext:jpg");
    EXPECT_EQ(search::lineWithout("a ext:jpg", "ext:jpg"), "a !ext:jpg");
    EXPECT_EQ(search::lineSortedBy("a sort:name b", "-size"), "a b sort:-size");
    EXPECT_EQ(search::lineSortedBy("a sort:name", ""), "a");
}

TEST(QueryEdit, AnExclusionWithNothingBehindItDoesNotExcludeWhatIsAdded) {
    for (const std::string_view half : {"a !", "a -", "a NOT", "a NOT ", "a ! !", "a NOT !  "}) {
        EXPECT_EQ(search::lineWith(half, "ext:jpg"), "a ext:jpg") << half;
        EXPECT_EQ(search::lineWithout(half, "ext:jpg"), "a !ext:jpg") << half;
        EXPECT_EQ(search::lineSortedBy(half, "name"), "a sort:name") << half;
    }
    EXPECT_EQ(search::lineWith("!", "ext:jpg"), "ext:jpg");
    EXPECT_EQ(search::lineWith("(a | b !", "ext:jpg"), "(a | b) ext:jpg");
    EXPECT_EQ(search::lineWith("\"a !", "ext:jpg"), "\"a !\" ext:jpg");
}

TEST(Completion, OffersFieldsAndWhatTheArchiveHolds) {
    const auto index = support::goldenIndex();
    const auto first = [&](std::string_view line) {
        const auto found = search::completionsAt(*index, line, line.size(), 5);
        return found.empty() ? std::string() : found.front().text;
    };
    EXPECT_EQ(first("summer ex"), "ext:");
    EXPECT_EQ(first("ext:t"), "ext:txt");
    EXPECT_EQ(first("ext:jpg;t"), "ext:jpg;txt");
    EXPECT_EQ(first("medium:back"), "medium:\"Backup 12\"");
    EXPECT_EQ(first("kw:be"), "kw:\"holiday, beach\"");
    EXPECT_EQ(first("sort:-s"), "sort:-size");
    EXPECT_EQ(first("summer "), "");
}

TEST(Breakdown, CountsEveryRowOnce) {
    const auto index = support::goldenIndex();
    const auto rows = search::findRows(index, search::parseQuery("", golden::now()));
    search::Breakdown counts(*index, rows, {search::Grouping::Year, search::Grouping::SizeClass});
    EXPECT_TRUE(counts.run(search::Budget::unlimited()));
    EXPECT_EQ(counts.total().entries, golden::entries().size());
    EXPECT_EQ(counts.mediaTouched(), 4u);
    std::size_t files = 0;
    for (const auto& line : counts.lines(search::Grouping::SizeClass)) {
        files += line.files;
    }
    EXPECT_EQ(files, counts.total().files);
}

TEST(ByteSearch, FindsWhatFindFinds) {
    std::mt19937 random(4711);
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 70, 'a');
        for (char& c : text) {
            c = static_cast<char>('a' + random() % 3);
        }
        const std::string wanted =
            text.substr(text.empty() ? 0 : random() % text.size(), random() % 6);
        const std::size_t start = text.empty() ? 0 : random() % text.size();
        ASSERT_EQ(search::ByteSearch(wanted).find(text, start), text.find(wanted, start))
            << text << " / " << wanted;
    }
}

TEST(SearchRun, ComesBackWhenItsTimeIsOver) {
    std::vector<base::ScanEntry> entries;
    for (int i = 0; i < 30000; ++i) {
        entries.push_back(entry("1:", "name " + std::to_string(i), i));
    }
    const auto index = support::indexOf(entries);
    search::SearchRun run(index, search::parseQuery("name sort:-size", 0));
    int steps = 1;
    while (!run.run(search::Budget(std::chrono::milliseconds(0)))) {
        ++steps;
    }
    EXPECT_GT(steps, 8);
    ASSERT_EQ(run.hits().size(), 30000u);
    EXPECT_EQ(run.hits().front(), 29999u);
    run.sortBy({});
    while (!run.run(search::Budget(std::chrono::milliseconds(0)))) {
    }
    EXPECT_EQ(run.hits().front(), 0u);
}

TEST(SearchRun, OrdersAsAStableSortDoes) {
    std::mt19937 random(99);
    for (const std::size_t count : {0u, 1u, 8191u, 8192u, 8193u, 20000u, 41000u}) {
        std::vector<base::ScanEntry> entries;
        for (std::size_t i = 0; i < count; ++i) {
            // Long stretches that are in order already, and many that are equal.
            const auto size = static_cast<std::int32_t>(i < count / 2 ? i / 7 : random() % 1000);
            entries.push_back(entry("1:", "n", size));
        }
        const auto index = support::indexOf(entries);
        for (const std::string line : {"sort:size", "sort:-size"}) {
            std::vector<Row> expected(count);
            for (Row row = 0; row < count; ++row) {
                expected[row] = row;
            }
            std::ranges::stable_sort(expected, [&](Row left, Row right) {
                return line == "sort:size" ? entries[left].Size < entries[right].Size
                                           : entries[left].Size > entries[right].Size;
            });
            EXPECT_EQ(search::findRows(index, search::parseQuery(line, 0)), expected)
                << line << " of " << count;
        }
    }
}

TEST(SearchRun, OrdersByTextsThatManyEntriesShare) {
    std::mt19937 random(17);
    std::vector<base::ScanEntry> entries;
    for (int i = 0; i < 30000; ++i) {
        // Some folders differ in letter case alone, and are at one place then.
        const std::string folder = (random() % 2 == 0 ? "Folder " : "folder ");
        entries.push_back(entry("1:\\" + folder + std::to_string(random() % 9000), "n", i));
        entries.back().keywords = random() % 3 == 0 ? "" : "kw" + std::to_string(random() % 20);
    }
    const auto index = support::indexOf(entries);
    const auto keysOf = [&](Row row) {
        return std::pair(search::foldedText(entries[row].path),
                         search::foldedText(entries[row].keywords));
    };
    std::vector<Row> expected(entries.size());
    std::iota(expected.begin(), expected.end(), 0U);
    std::ranges::stable_sort(expected, {}, keysOf);
    EXPECT_EQ(search::findRows(index, search::parseQuery("sort:folder,kw", 0)), expected);
    std::ranges::sort(expected);
    std::ranges::stable_sort(expected, std::ranges::greater{},
                             [&](Row row) { return keysOf(row).second; });
    EXPECT_EQ(search::findRows(index, search::parseQuery("sort:-kw", 0)), expected);
}

TEST(SearchRun, ItsHitsMayBeKeptBeyondIt) {
    const auto index = support::indexOf(
        {entry("1:", "b", 2), entry("1:", "a", 1), entry("1:", "c", 3), entry("1:", "x", 9)});
    auto run = std::make_unique<search::SearchRun>(
        index, search::parseQuery("size:<5 sort:-size limit:2", 0));
    EXPECT_EQ(run->sharedHits(), nullptr);
    EXPECT_EQ(run->ascendingHits(), nullptr);
    run->run(search::Budget::unlimited());
    const auto hits = run->sharedHits();
    const auto ascending = run->ascendingHits();
    run.reset();
    EXPECT_EQ(*hits, (std::vector<Row>{2, 0}));
    EXPECT_EQ(*ascending, (std::vector<Row>{0, 2}));
}

}  // namespace
