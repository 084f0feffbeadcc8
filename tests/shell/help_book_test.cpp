#include "shell/help_book.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"

namespace shell {
namespace {

using Pages = std::vector<std::size_t>;

constexpr const char* sample =
    "left out\n# First Page\ntext one\n\n## Within\nmore\n# The scan: how?\r\nSCANNING and Ärger\n"
    "# Text\nnothing\n";

TEST(HelpBook, APageBeginsWithATitle) {
    const HelpBook book = HelpBook::parse(sample);
    ASSERT_EQ(book.pages().size(), 3U);
    EXPECT_EQ(book.pages()[0].title, "First Page");
    EXPECT_EQ(book.pages()[0].text, "# First Page\ntext one\n\n## Within\nmore\n");
    EXPECT_EQ(book.pages()[1].title, "The scan: how?");
    EXPECT_EQ(book.pages()[1].text, "# The scan: how?\nSCANNING and Ärger\n");
}

TEST(HelpBook, PagesAreFoundByTheirAnchors) {
    const HelpBook book = HelpBook::parse(sample);
    EXPECT_EQ(book.pageOf("first-page"), 0U);
    EXPECT_EQ(book.pageOf("the-scan-how"), 1U);
    EXPECT_EQ(book.pageOf("missing"), std::nullopt);
}

TEST(HelpBook, SearchFindsPagesWithEveryWordTitlesFirst) {
    const HelpBook book = HelpBook::parse(sample);
    EXPECT_EQ(book.search("text"), (Pages{2, 0}));
    EXPECT_EQ(book.search("  TEXT  more "), Pages{0});
    EXPECT_EQ(book.search("ärger scanning"), Pages{1});
    EXPECT_EQ(book.search("text scanning"), Pages{});
    EXPECT_EQ(book.search(" "), (Pages{0, 1, 2}));
}

TEST(HelpBook, WhatIsNoHelpTextIsAFailure) {
    for (const std::string& text : {std::string(), std::string("no title\n"),
                                    std::string("# \xFF\xFE binary"), std::string("#title")}) {
        EXPECT_THROW(HelpBook::parse(text), base::FileFailure) << text;
    }
}

}  // namespace
}  // namespace shell
