#include <gtest/gtest.h>

#include "search/copies.h"
#include "searchcontrol/details_pane.h"
#include "searchcontrol/duplicates_page.h"
#include "searchcontrol/mounted_media.h"
#include "searchcontrol/pick_list.h"
#include "searchcontrol/result_actions.h"
#include "searchcontrol/syntax_card.h"
#include "searchcontrol/texts.h"
#include "tests/search/search_fixture.h"
#include "tests/support/fake_drives.h"
#include "tests/support/temporary_folder.h"

namespace searchcontrol {
namespace {

search::Row rowOf(std::string_view key) {
    search::Row row = 0;
    while (golden::entries().at(row).key != key) {
        ++row;
    }
    return row;
}

std::vector<std::string> found(const std::shared_ptr<const search::Index>& index,
                               const std::string& query) {
    std::vector<std::string> keys;
    for (const search::Row row :
         search::findRows(index, search::parseQuery(query, golden::now()))) {
        keys.push_back(support::keyOf(row));
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

using Keys = std::vector<std::string>;

class ControlTextsTest : public testing::Test {
  protected:
    bool holds(const QString& html, const char* part) { return html.contains(part); }

    std::shared_ptr<const search::Index> index = support::goldenIndex();
};

TEST_F(ControlTextsTest, SizesThatAreNotKnownAreAtLeastTwoGigabytes) {
    EXPECT_EQ(shownCell(*index, rowOf("avi"), search::ResultColumn::Size), "at least 2.0 GB");
    EXPECT_EQ(shownCell(*index, rowOf("photos"), search::ResultColumn::Size), "");
    EXPECT_EQ(shownCell(*index, rowOf("mueller"), search::ResultColumn::Size), "0 bytes");
}

TEST_F(ControlTextsTest, DatesReadDownwardsAndOddOnesAsTheyAre) {
    EXPECT_EQ(shownCell(*index, rowOf("img1"), search::ResultColumn::Modified),
              "2004-05-31 23:59:59");
    EXPECT_EQ(shownCell(*index, rowOf("dot"), search::ResultColumn::Modified), "not a date");
}

TEST_F(ControlTextsTest, DetailsTellEverythingAndTheCopiesElsewhere) {
    const QString before = detailsHtml(*index, rowOf("img1"));
    EXPECT_FALSE(holds(before, "entry:"));
    index->copies().finish();
    const QString html = detailsHtml(*index, rowOf("img1"));
    for (const char* part :
         {"IMG_0001.jpg", "\\photos\\2004\\IMG_0001.jpg", "1: Holiday 2001", "CD_HOL01", "CDROM",
          "03/07/2001 10:00:00", "2.0 KB (2,048 bytes)", "JPEG image", "2004-05-31 23:59:59",
          "2003-03-03 03:03:03", "holiday, beach", "2: Backup 12, \\img_0001.JPG",
          "3: Backup 1, \\Holiday\\img_0001.jpg"}) {
        EXPECT_TRUE(holds(html, part)) << part;
    }
}

TEST_F(ControlTextsTest, NamesAreNeverTakenForMarkup) {
    base::ScanEntry entry = golden::scanEntry(golden::entries()[2]);
    entry.FileName = "<img src='x'>&amp;.jpg";
    const auto odd = support::indexOf({entry});
    EXPECT_TRUE(holds(detailsHtml(*odd, 0), "&lt;img src='x'&gt;&amp;amp;.jpg"));
    const std::vector<search::Row> rows{0};
    EXPECT_TRUE(holds(pickListHtml(*odd, rows), "&lt;img src='x'&gt;&amp;amp;.jpg"));
}

TEST_F(ControlTextsTest, APickListGoesMediumByMedium) {
    const std::vector<search::Row> rows{rowOf("cat"), rowOf("img2"), rowOf("avi"), rowOf("img1"),
                                        rowOf("readme")};
    const QString html = pickListHtml(*index, rows);
    std::vector<qsizetype> places;
    for (const char* part : {"Medium 1: Holiday 2001, label CD_HOL01", "README", "\\photos\\2004",
                             "IMG_0001.jpg", "img_0002.JPG", "Medium 2: Backup 12, label BACKUP12",
                             "holiday.avi", "at least 2.0 GB", "Medium 3: Backup 1", "cat.txt"}) {
        places.push_back(html.indexOf(part));
        EXPECT_GE(places.back(), 0) << part;
    }
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_EQ(html.count("Medium "), 3);
}

TEST_F(ControlTextsTest, APickListSaysWhatItLeavesOut) {
    const std::vector<search::Row> rows(mostPicked + 7, rowOf("cat"));
    EXPECT_TRUE(holds(pickListHtml(*index, rows), "7 more are left out"));
    EXPECT_TRUE(holds(pickListHtml(*index, {}), "Pick list"));
}

TEST_F(ControlTextsTest, TheQueryForCopiesFindsThemAll) {
    EXPECT_EQ(found(index, copiesQuery(*index, rowOf("img1"))),
              (Keys{"img1", "img1copy", "img1third"}));
    EXPECT_EQ(found(index, copiesQuery(*index, rowOf("quote"))), Keys{"quote"});
    EXPECT_EQ(found(index, copiesQuery(*index, rowOf("photos"))), Keys{"photos"});
    EXPECT_EQ(found(index, copiesQuery(*index, rowOf("strasse"))), (Keys{"strasse", "strasse2"}));
}

TEST_F(ControlTextsTest, TheTermsOfAnEntryTakeItIn) {
    for (search::Row row = 0; row < index->size(); ++row) {
        for (const std::string& term :
             {folderTerm(*index, row), extensionTerm(*index, row), mediumTerm(*index, row)}) {
            if (!term.empty()) {
                const Keys keys = found(index, term);
                EXPECT_TRUE(std::count(keys.begin(), keys.end(), support::keyOf(row))) << term;
            }
        }
    }
    EXPECT_EQ(folderTerm(*index, rowOf("img1")), "path:start:\"1:\\photos\\2004\\\"");
    EXPECT_EQ(found(index, folderTerm(*index, rowOf("img1"))), (Keys{"img1", "img2", "strand"}));
    EXPECT_EQ(extensionTerm(*index, rowOf("photos")), "");
}

TEST_F(ControlTextsTest, TheTermOfAFolderLeavesItsNeighboursAndOtherMediaOut) {
    std::vector<base::ScanEntry> entries;
    for (const char* path :
         {"1:\\trip", "1:\\trip\\day 1", "1:\\trip 2", "1:\\my\\trip", "2:\\trip"}) {
        entries.push_back(golden::scanEntry(golden::entries()[2]));
        entries.back().path = path;
        entries.back().mediaId = path[0] - '0';
    }
    const auto neighbours = support::indexOf(entries);
    const std::string term = folderTerm(*neighbours, 0);
    EXPECT_EQ(search::findRows(neighbours, search::parseQuery(term + " sort:folder", 0)),
              (std::vector<search::Row>{0, 1}));
}

TEST_F(ControlTextsTest, ExamplesOfTheSyntaxCardComeFromTheArchive) {
    EXPECT_EQ(exampleOf(index.get(), "ext:", "ext:jpg;png"), "ext:txt");
    EXPECT_EQ(exampleOf(index.get(), "medium:", "medium:7"), "medium:1");
    EXPECT_EQ(exampleOf(nullptr, "ext:", "ext:jpg;png"), "ext:jpg;png");
    EXPECT_EQ(exampleOf(index.get(), "size:", "size:1mb"), "size:1mb");
    for (const char* field : {"ext:", "date:", "kw:", "medium:", "only:", "dir:"}) {
        EXPECT_FALSE(found(index, exampleOf(index.get(), field, "")).empty()) << field;
    }
    EXPECT_TRUE(holds(syntaxCardHtml(index.get()), "regex:"));
}

class MountedMediaTest : public ControlTextsTest {
  protected:
    std::string place(std::string_view key) { return nativePlaceOf(*index, rowOf(key), drives); }

    support::TemporaryFolder folder;
    support::FakeDrives drives;
};

TEST_F(MountedMediaTest, AnEntryIsFoundOnTheDriveWithItsMediumsLabel) {
    const std::string file = folder.makeFile("cd/photos/2004/IMG_0001.jpg");
    drives.add('d', "OTHER").folder = folder.pathOf("cd");
    EXPECT_EQ(place("img1"), "");
    drives.add('e', "cd_hol01").folder = folder.pathOf("cd");
    EXPECT_EQ(place("img1"), file);
    EXPECT_EQ(place("2004"), folder.pathOf("cd/photos/2004"));
}

TEST_F(MountedMediaTest, AMediumWithoutTheEntryIsNotTheOne) {
    folder.makeFolder("cd/photos/2004/IMG_0001.jpg");
    drives.add('e', "CD_HOL01").folder = folder.pathOf("cd");
    EXPECT_EQ(place("img2"), "");
    EXPECT_EQ(place("img1"), "");  // a folder of that name is no file
}

TEST_F(MountedMediaTest, WhatToFetchIsNamedInFull) {
    EXPECT_EQ(mediumToFetch(golden::media()[0]), "1: Holiday 2001, label CD_HOL01");
    EXPECT_EQ(mediumToFetch(golden::media()[2]), "3: Backup 1");
}

}  // namespace
}  // namespace searchcontrol
