#include "cli/messages.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/progress_line.h"
#include "cli/terminal_question.h"

namespace cli {
namespace {

class MessagesTest : public testing::Test {
  protected:
    std::ostringstream stream;
    int columns = 80;
    Messages terminal{stream, true, [this] { return columns; }};
    Messages file{stream, false, [] { return 0; }};
};

TEST_F(MessagesTest, AMessageIsOneLineWhateverItHolds) {
    file.report("a\nb\x1b: cannot be read");
    EXPECT_EQ(stream.str(), "vdln: a\\nb\\x1b: cannot be read\n");
}

TEST_F(MessagesTest, AStatusLineGivesWayToAMessage) {
    terminal.setStatus("busy");
    terminal.report("news");
    EXPECT_EQ(stream.str(), "\r\x1b[Kbusy\r\x1b[Kvdln: news\n");
}

TEST_F(MessagesTest, AStatusLineIsNeverWiderThanTheTerminal) {
    columns = 10;
    terminal.setStatus("0123456789");
    EXPECT_EQ(stream.str(), "\r\x1b[K012345...");
}

TEST_F(MessagesTest, NoControlCharacterOfANameReachesTheTerminal) {
    terminal.setStatus("\x1b]0;title\a");
    EXPECT_EQ(stream.str(), "\r\x1b[K\\x1b]0;title\\x07");
}

TEST_F(MessagesTest, NothingIsClearedWhereNothingIsShown) {
    terminal.clearStatus();
    EXPECT_EQ(stream.str(), "");
}

class ProgressLineTest : public MessagesTest {
  protected:
    ProgressLine line(Messages& messages, ProgressLine::Shown shown = ProgressLine::Shown::Yes) {
        ProgressLine progress(messages, shown, [this] { return now; });
        progress.setFolder("/x");
        return progress;
    }
    void showUpTo(ProgressLine& progress, int last) {
        for (int count = shown_ + 1; count <= last; ++count) {
            progress.showScanProgress(count);
        }
        shown_ = last;
    }

    ProgressLine::Time now;

  private:
    int shown_ = 0;
};

TEST_F(ProgressLineTest, ShowsCountRateAndFolder) {
    ProgressLine progress = line(file);
    showUpTo(progress, 1);
    now += std::chrono::seconds(2);
    showUpTo(progress, 4001);
    EXPECT_EQ(stream.str(), "1 entry: /x\n33 entries, 16 per second: /x\n");
}

TEST_F(ProgressLineTest, IsShownAtMostTenTimesASecondOnATerminal) {
    ProgressLine progress = line(terminal);
    for (int i = 0; i < 1000; ++i) {
        now += std::chrono::milliseconds(1);
        showUpTo(progress, (i + 1) * 32);
    }
    std::size_t times = 0;
    for (const char c : stream.str()) {
        times += c == '\r' ? 1 : 0;
    }
    EXPECT_GE(times, 9U);
    EXPECT_LE(times, 11U);
}

TEST_F(ProgressLineTest, QuietWritesNothing) {
    ProgressLine progress = line(terminal, ProgressLine::Shown::No);
    showUpTo(progress, 1000);
    progress.clear();
    EXPECT_EQ(stream.str(), "");
}

TEST(GroupedNumber, HasACommaBetweenThousands) {
    EXPECT_EQ(groupedNumber(0), "0");
    EXPECT_EQ(groupedNumber(999), "999");
    EXPECT_EQ(groupedNumber(1000), "1,000");
    EXPECT_EQ(groupedNumber(1234567), "1,234,567");
    EXPECT_EQ(groupedNumber(-123), "-123");
}

TEST_F(MessagesTest, AQuestionTakesYesInAnyForm) {
    for (const char* answer : {"yes\n", "Y\n", "  YES \r\n", "y"}) {
        std::istringstream in(answer);
        EXPECT_EQ(TerminalQuestion(in, terminal).show({"Title", "Text?", {}}),
                  base::MessageAnswer::Yes)
            << answer;
    }
}

TEST_F(MessagesTest, AQuestionTakesAnythingElseForNo) {
    for (const char* answer : {"", "\n", "yess\n", "ye\n", "1\n", "cancel\n"}) {
        std::istringstream in(answer);
        EXPECT_EQ(TerminalQuestion(in, terminal).show({"Title", "Text?", {}}),
                  base::MessageAnswer::Cancel)
            << answer;
    }
    std::istringstream in("no\n");
    EXPECT_EQ(TerminalQuestion(in, terminal).show({"Title", "Text?", {}}), base::MessageAnswer::No);
}

}  // namespace
}  // namespace cli
