#include "controls/plain_frame.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QVBoxLayout>

namespace controls {
namespace {

TEST(PlainFrame, ShowsAnAmpersandAsItIs) {
    PlainFrame frame;
    frame.setCaption("you & me");
    EXPECT_EQ(frame.caption(), "you & me");
    EXPECT_EQ(frame.title(), "you && me");
    EXPECT_EQ(frame.accessibleName(), "you & me");
}

TEST(PlainFrame, ATipThatLooksLikeMarkupIsShownAsItIs) {
    PlainFrame frame;
    frame.setCaption("<b>");
    EXPECT_EQ(frame.toolTip(), "<span>&lt;b&gt;</span>");
}

TEST(PlainFrame, ALongCaptionAsksForNoRoom) {
    PlainFrame frame;
    auto* layout = new QVBoxLayout(&frame);
    layout->addWidget(new QLabel("short"));
    frame.setCaption("x");
    const int narrow = frame.minimumSizeHint().width();
    frame.setCaption(QString(500, 'w'));
    EXPECT_EQ(frame.minimumSizeHint().width(), narrow);
}

TEST(PlainFrame, TheMiddleOfALongCaptionGivesWayToDots) {
    PlainFrame frame;
    frame.resize(200, 100);
    frame.setCaption(QString(20, 'a') + QString(80, 'm') + QString(20, 'z'));
    const QImage dots = frame.grab().toImage();
    frame.setCaption(QString(20, 'a') + QString(300, 'm') + QString(20, 'z'));
    EXPECT_EQ(frame.grab().toImage(), dots);
}

}  // namespace
}  // namespace controls
