#include "shell/help_window.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <fstream>
#include <sstream>

#include "base/failure.h"
#include "tests/support/temporary_folder.h"

namespace shell {
namespace {

class HelpWindowTest : public testing::Test {
  protected:
    void show(const std::string& text) {
        desk.showHelpFile(folder.makeFile("help/vdln.hlp", text));
        contents = desk.window()->findChild<QListWidget*>("listContents");
        page = desk.window()->findChild<QTextBrowser*>("textPage");
        search = desk.window()->findChild<QLineEdit*>("inputSearch");
    }
    std::vector<std::string> titles() const {
        std::vector<std::string> result;
        for (int row = 0; row < contents->count(); ++row) {
            result.push_back(contents->item(row)->text().toStdString());
        }
        return result;
    }

    support::TemporaryFolder folder;
    HelpDesk desk;
    QListWidget* contents = nullptr;
    QTextBrowser* page = nullptr;
    QLineEdit* search = nullptr;
};

using Titles = std::vector<std::string>;
constexpr const char* twoPages = "# One\nfirst [other](#two)\n# Two\nsecond second\n";

TEST_F(HelpWindowTest, ShowsTheContentsAndTheFirstPage) {
    show(twoPages);
    EXPECT_TRUE(desk.window()->isVisible());
    EXPECT_EQ(titles(), (Titles{"One", "Two"}));
    EXPECT_TRUE(page->toPlainText().contains("first"));
}

TEST_F(HelpWindowTest, AClickInTheContentsShowsThePage) {
    show(twoPages);
    QTest::mouseClick(contents->viewport(), Qt::LeftButton, {},
                      contents->visualItemRect(contents->item(1)).center());
    EXPECT_TRUE(page->toPlainText().contains("second"));
}

TEST_F(HelpWindowTest, SearchNarrowsTheContentsAndMarksTheWords) {
    show(twoPages);
    QTest::keyClicks(search, "SECOND");
    EXPECT_EQ(titles(), Titles{"Two"});
    EXPECT_EQ(page->extraSelections().size(), 2);
    search->clear();
    EXPECT_EQ(titles(), (Titles{"One", "Two"}));
    EXPECT_TRUE(page->extraSelections().isEmpty());
}

TEST_F(HelpWindowTest, ASearchWithoutResultSaysSo) {
    show(twoPages);
    QTest::keyClicks(search, "zebra");
    EXPECT_EQ(titles(), Titles{"No page holds these words."});
}

TEST_F(HelpWindowTest, ALinkLeadsToItsPage) {
    show(twoPages);
    QTest::keyClicks(search, "first");
    emit page->anchorClicked(QUrl("#two"));
    EXPECT_EQ(titles(), (Titles{"One", "Two"}));
    EXPECT_TRUE(page->toPlainText().contains("second"));
    emit page->anchorClicked(QUrl("#nowhere"));
    EXPECT_TRUE(page->toPlainText().contains("second"));
}

TEST_F(HelpWindowTest, AMissingOrBrokenFileIsAFailureAndShowsNothing) {
    EXPECT_THROW(desk.showHelpFile(folder.pathOf("missing")), base::FileFailure);
    EXPECT_THROW(desk.showHelpFile(folder.path()), base::FileFailure);
    EXPECT_THROW(desk.showHelpFile(folder.makeFile("x", "\xFF\xFF")), base::FileFailure);
    EXPECT_EQ(desk.window(), nullptr);
}

TEST_F(HelpWindowTest, TheWindowIsUsedAgain) {
    show(twoPages);
    HelpWindow* window = desk.window();
    window->close();
    show("# Three\n");
    EXPECT_EQ(desk.window(), window);
    EXPECT_EQ(titles(), Titles{"Three"});
    EXPECT_TRUE(window->isVisible());
}

TEST(HelpText, EveryLinkOfTheProgramsOwnHelpLeadsSomewhere) {
    std::ifstream file(VERDOLIN_HELP_FILE);
    std::stringstream text;
    text << file.rdbuf();
    const HelpBook book = HelpBook::parse(text.str());
    const QRegularExpression link("\\]\\(#([^)]*)\\)");
    int links = 0;
    for (auto found = link.globalMatch(QString::fromStdString(text.str())); found.hasNext();) {
        const std::string anchor = found.next().captured(1).toStdString();
        EXPECT_TRUE(book.pageOf(anchor)) << anchor;
        ++links;
    }
    EXPECT_GT(links, 10);
}

TEST(HelpText, EveryWindowHasItsPage) {
    std::ifstream file(VERDOLIN_HELP_FILE);
    std::stringstream text;
    text << file.rdbuf();
    const HelpBook book = HelpBook::parse(text.str());
    for (const char* anchor : {"from-scanning-to-searching", "the-start-window", "the-main-window",
                               "the-open-archive-window", "the-scan-window", "the-save-window",
                               "the-keywords-and-notes-window", "the-search-window",
                               "the-about-window", "the-loading-windows"}) {
        EXPECT_TRUE(book.pageOf(anchor)) << anchor;
    }
}

}  // namespace
}  // namespace shell
