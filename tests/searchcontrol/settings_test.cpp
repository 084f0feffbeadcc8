#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTableWidget>

#include "platform/file_private_profile.h"
#include "search/result_column.h"
#include "searchcontrol/column_layout.h"
#include "searchcontrol/query_history.h"
#include "searchcontrol/saved_searches.h"
#include "tests/support/fake_platform.h"
#include "tests/support/temporary_folder.h"

namespace searchcontrol {
namespace {

class SettingsTest : public testing::Test {
  protected:
    SettingsTest() {
        folder.makeFolder("settings");
        shell.folder = folder.path();
    }
    SettingsSection section(const char* name) { return {profile, shell, name}; }

    support::TemporaryFolder folder;
    platform::FilePrivateProfile profile;
    support::FakeShell shell;
};

TEST_F(SettingsTest, ATextComesBackAsItWas) {
    for (const char* text : {"", "a", " blanks around ", "\"in marks\"", "a=b;[c]", "Müller"}) {
        section("search").write("key", text);
        EXPECT_EQ(section("search").read("key"), text) << text;
    }
}

TEST_F(SettingsTest, ALineBreakBecomesABlank) {
    section("search").write("key", "a\nb");
    EXPECT_EQ(section("search").read("key"), "a b");
}

TEST_F(SettingsTest, WhatCannotBeWrittenIsPassedOver) {
    shell.folder = folder.pathOf("missing");
    QueryHistory history(section("search"));
    history.add("query");
    EXPECT_EQ(history.size(), 1);
}

TEST_F(SettingsTest, TheHistoryKeepsTheLastTwoHundredTheLatestFirst) {
    QueryHistory history(section("search"));
    for (int i = 1; i <= 250; ++i) {
        history.add("query " + QString::number(i));
    }
    QueryHistory later(section("search"));
    ASSERT_EQ(later.size(), QueryHistory::most);
    EXPECT_EQ(later.at(0), "query 250");
    EXPECT_EQ(later.at(199), "query 51");
}

TEST_F(SettingsTest, AQueryUsedAgainMovesUpInTheHistory) {
    QueryHistory history(section("search"));
    history.add("a");
    history.add("b");
    history.add(" a ");
    history.add("  ");
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history.at(0), "a");
    EXPECT_EQ(history.at(1), "b");
}

TEST_F(SettingsTest, SavedSearchesComeBackInTheOrderOfTheirNames) {
    SavedSearches saved(section("searches"));
    saved.save("zoo", "animals | \"zoo\"");
    saved.save("Big films", "type:video size:>1gb");
    const std::vector<SavedSearches::Search> expected{{"Big films", "type:video size:>1gb"},
                                                      {"zoo", "animals | \"zoo\""}};
    EXPECT_EQ(SavedSearches(section("searches")).all(), expected);
}

TEST_F(SettingsTest, ASavedSearchOfTheSameNameGivesWay) {
    SavedSearches saved(section("searches"));
    saved.save("Films", "avi");
    saved.save("films ", "mkv");
    saved.save("  ", "nothing");
    ASSERT_EQ(saved.all().size(), 1U);
    EXPECT_EQ(saved.all()[0].query, "mkv");
}

TEST_F(SettingsTest, AForgottenSearchStaysForgotten) {
    SavedSearches saved(section("searches"));
    saved.save("a", "1");
    saved.save("b", "2");
    saved.forget("a");
    saved.forget("never there");
    SavedSearches later(section("searches"));
    ASSERT_EQ(later.all().size(), 1U);
    EXPECT_EQ(later.all()[0].name, "b");
}

TEST_F(SettingsTest, ANonsensicalCountOfSavedSearchesIsNotBelieved) {
    section("searches").write("count", "-7");
    EXPECT_TRUE(SavedSearches(section("searches")).all().empty());
    section("searches").write("count", "999999999");
    EXPECT_TRUE(SavedSearches(section("searches")).all().empty());
}

class ColumnLayoutTest : public testing::Test {
  protected:
    QTableWidget table{1, static_cast<int>(search::allResultColumns.size())};
    QHeaderView& header = *table.horizontalHeader();
};

TEST_F(ColumnLayoutTest, OrderWidthsAndHiddenColumnsComeBack) {
    const QString layout =
        "size:90,name:210,-medium:100,folder:77,modified:100,type:100,keywords:100,"
        "notes1:100,notes2:100,created:100,copies:100";
    setColumnLayout(header, layout);
    EXPECT_EQ(columnLayout(header), layout);
    EXPECT_EQ(header.logicalIndex(0), 3);
    EXPECT_TRUE(header.isSectionHidden(1));
}

TEST_F(ColumnLayoutTest, NonsenseLeavesTheColumnsAsTheyAre) {
    const QString before = columnLayout(header);
    for (const char* layout : {"", ",,,", "nothing:5", ":", "-", "name:x,name:-5", "name"}) {
        setColumnLayout(header, layout);
        EXPECT_EQ(columnLayout(header), before) << layout;
    }
}

TEST_F(ColumnLayoutTest, OneColumnAlwaysStays) {
    QString layout = columnLayout(header);
    layout.prepend('-').replace(",", ",-");
    setColumnLayout(header, layout);
    EXPECT_LT(header.hiddenSectionCount(), header.count());
}

}  // namespace
}  // namespace searchcontrol
