#include "controls/passing_window.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "tests/support/recording_boundary.h"

namespace controls {
namespace {

class Window : public PassingWindow {
  public:
    Window(base::EventBoundary& boundary, std::function<void()> unloaded)
        : PassingWindow(boundary, std::move(unloaded)) {}
    using PassingWindow::handle;
    using PassingWindow::whileInUse;
};

class PassingWindowTest : public testing::Test {
  protected:
    ~PassingWindowTest() override { delete window.data(); }

    static void deleteWhatIsOver() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    support::RecordingBoundary boundary;
    int unloaded = 0;
    QPointer<Window> window{new Window(boundary, [this] { ++unloaded; })};
};

TEST_F(PassingWindowTest, GoesOnceAndForGood) {
    window->show();
    window->unload();
    window->unload();
    EXPECT_EQ(unloaded, 1);
    EXPECT_FALSE(window->isVisible());
    deleteWhatIsOver();
    EXPECT_TRUE(window.isNull());
}

TEST_F(PassingWindowTest, LivesUntilTheLastOfItsHandlersHasEnded) {
    window->handle([this] {
        window->handle([this] { window->unload(); });
        deleteWhatIsOver();
        EXPECT_FALSE(window.isNull());
        window->handle([] {});
        deleteWhatIsOver();
        EXPECT_FALSE(window.isNull());
    });
    deleteWhatIsOver();
    EXPECT_TRUE(window.isNull());
}

TEST_F(PassingWindowTest, AHandlerThatFailsHasEndedToo) {
    window->handle([this] {
        window->unload();
        throw base::OverflowFailure("too many");
    });
    EXPECT_EQ(boundary.failures, std::vector<std::string>{"too many"});
    deleteWhatIsOver();
    EXPECT_TRUE(window.isNull());
}

TEST_F(PassingWindowTest, FailuresOutsideOfHandlersPass) {
    EXPECT_THROW(window->whileInUse([] { throw base::OverflowFailure("too many"); }),
                 base::OverflowFailure);
    EXPECT_EQ(unloaded, 0);
}

TEST_F(PassingWindowTest, TheCloseBoxAndEscapeAreCancel) {
    window->show();
    window->close();
    EXPECT_EQ(unloaded, 1);
    deleteWhatIsOver();
    EXPECT_TRUE(window.isNull());
    window = new Window(boundary, [this] { ++unloaded; });
    window->show();
    QTest::keyClick(window.data(), Qt::Key_Escape);
    EXPECT_EQ(unloaded, 2);
}

TEST_F(PassingWindowTest, IsNotDeletedInTheMiddleOfTheEventThatClosedIt) {
    window->show();
    // Delivered as the event loop does it, with an event loop's round inside the handler.
    QMetaObject::invokeMethod(
        window.data(),
        [this] {
            window->handle([this] {
                QMetaObject::invokeMethod(
                    window.data(), [this] { window->close(); }, Qt::QueuedConnection);
                QCoreApplication::processEvents();
                QCoreApplication::processEvents();
                EXPECT_EQ(unloaded, 1);
                EXPECT_FALSE(window.isNull());
            });
        },
        Qt::QueuedConnection);
    QCoreApplication::processEvents();
    EXPECT_EQ(unloaded, 1);
    QCoreApplication::processEvents();
    deleteWhatIsOver();
    EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace controls
