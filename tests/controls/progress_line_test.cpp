#include "controls/progress_line.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

namespace controls {
namespace {

/// Counts what an object is sent.
class PaintCounter : public QObject {
  public:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

class ProgressLineTest : public testing::Test {
  protected:
    ProgressLineTest() {
        line.resize(300, line.sizeHint().height());
        line.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&line));
        QCoreApplication::processEvents();
        label->installEventFilter(&counter);
    }

    ProgressLine line{"displayProgress", nullptr};
    QLabel* label = line.findChild<QLabel*>("displayProgress");
    PaintCounter counter;
};

TEST_F(ProgressLineTest, ATextIsSetAndPainted) {
    line.setText("one");
    EXPECT_EQ(label->text(), "one");
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 1);
}

TEST_F(ProgressLineTest, ARunIsPaintedNowAndThenAndItsTextIsAlwaysTheLast) {
    for (int i = 0; i < 5000; ++i) {
        line.setRunningText(QString::number(i));
        ASSERT_EQ(label->text(), QString::number(i));
        QCoreApplication::processEvents();
    }
    EXPECT_GE(counter.paints, 1);
    EXPECT_LT(counter.paints, 1000);
}

TEST_F(ProgressLineTest, ALongRunIsPaintedAgainAndAgain) {
    line.setRunningText("1");
    const int before = counter.paints;
    QTest::qWait(60);
    line.setRunningText("2");
    EXPECT_GT(counter.paints, before);
}

TEST_F(ProgressLineTest, TheEndOfARunPaintsTheLastText) {
    line.setRunningText("1");
    line.setRunningText("2");
    const int before = counter.paints;
    line.endRun();
    QCoreApplication::processEvents();
    EXPECT_GT(counter.paints, before);
    EXPECT_TRUE(label->updatesEnabled());
}

TEST_F(ProgressLineTest, ALongTextAsksForNoRoom) {
    line.setText(QString(500, 'w'));
    EXPECT_EQ(line.minimumSizeHint().width(), 0);
}

}  // namespace
}  // namespace controls
