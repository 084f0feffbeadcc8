#include "searchcontrol/search_control.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "tests/search/golden_queries.h"
#include "tests/searchcontrol/control_fixture.h"

namespace searchcontrol {
namespace {

using Names = std::vector<std::string>;

class SearchControlTest : public support::ControlTest {};

TEST_F(SearchControlTest, WithoutAnArchiveItSaysSoAndTakesAnEmptyPath) {
    open("");
    control->setProperty("archivePath", "");
    EXPECT_EQ(control->property("archivePath").toString(), "");
    EXPECT_EQ(status(), "No archive is open");
    search("anything");
    EXPECT_EQ(names(), Names{});
}

TEST_F(SearchControlTest, EveryGoldenQueryFindsItsEntries) {
    openGolden();
    std::map<std::string, std::string> nameOf;
    for (const golden::Entry& entry : golden::entries()) {
        nameOf[std::string(entry.key)] = golden::scanEntry(entry).FileName;
    }
    for (const golden::Query& query : golden::queries()) {
        line()->setText(text(std::string(query.line)));
        waitUntilDone();
        Names expected;
        for (const QString& key : text(std::string(query.found)).split(' ', Qt::SkipEmptyParts)) {
            expected.push_back(nameOf[key.toStdString()]);
        }
        Names found = names();
        if (query.order == golden::Order::Any) {
            std::sort(expected.begin(), expected.end());
            std::sort(found.begin(), found.end());
        }
        EXPECT_EQ(found, expected) << query.line;
    }
}

}  // namespace
}  // namespace searchcontrol
