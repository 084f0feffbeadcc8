#include "scan/scandriveapi_support.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace std::string_view_literals;

namespace {

std::vector<std::string> namesOf(const scan::NameList& list) {
    std::vector<std::string> names;
    list.forEach([&](std::string_view name) { names.emplace_back(name); });
    return names;
}

}  // namespace

TEST(StripNulls, CutsAtTheFirstNull) {
    EXPECT_EQ(scan::stripNulls("name\0\0\0"sv), "name");
    EXPECT_EQ(scan::stripNulls("name\0older name"sv), "name");
}

TEST(StripNulls, KeepsATextWithoutNull) {
    EXPECT_EQ(scan::stripNulls("name"), "name");
    EXPECT_EQ(scan::stripNulls(""), "");
}

TEST(StripNulls, LeavesNothingOfATextThatBeginsWithNull) {
    EXPECT_EQ(scan::stripNulls("\0name"sv), "");
}

TEST(DotNames, AreTheTwoExactly) {
    EXPECT_TRUE(scan::isDotName("."));
    EXPECT_TRUE(scan::isDotName(".."));
    EXPECT_FALSE(scan::isDotName("..."));
    EXPECT_FALSE(scan::isDotName(".a"));
    EXPECT_FALSE(scan::isDotName(""));
}

TEST(NameList, GivesItsNamesInOrder) {
    scan::NameList list;
    EXPECT_TRUE(list.empty());
    list.append("b");
    list.append("");
    list.append("ä longer name");
    EXPECT_FALSE(list.empty());
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"b", "", "ä longer name"}));
}

TEST(NameList, WithoutNamesVisitsNone) { EXPECT_TRUE(namesOf(scan::NameList()).empty()); }
