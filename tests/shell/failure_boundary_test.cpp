#include "shell/failure_boundary.h"

#include <gtest/gtest.h>

#include <QTimer>
#include <stdexcept>

#include "base/failure.h"
#include "shell/application.h"
#include "shell/end_of_program.h"
#include "shell/failure_report.h"
#include "shell/window_events.h"
#include "tests/shell/test_application.h"
#include "tests/support/scripted_message_box.h"

namespace shell {
namespace {

using base::MessageAnswer;

TEST(FailureBoundary, AHandlerThatEndsWellShowsNothing) {
    support::ScriptedMessageBox messages;
    FailureBoundary boundary(messages);
    EXPECT_TRUE(boundary.run([] {}));
}

TEST(FailureBoundary, AFailureIsShownOnceAndTheRestOfTheHandlerDoesNotRun) {
    support::ScriptedMessageBox messages{MessageAnswer::Ok};
    FailureBoundary boundary(messages);
    bool ranOn = false;
    EXPECT_FALSE(boundary.run([&] {
        throw base::FileFailure("gone");
        ranOn = true;
    }));
    EXPECT_FALSE(ranOn);
    EXPECT_EQ(messages.asked, std::vector{failureReport(base::FileFailure("gone"))});
}

TEST(FailureBoundary, WhatIsNoExceptionIsShownToo) {
    support::ScriptedMessageBox messages{MessageAnswer::Ok};
    FailureBoundary boundary(messages);
    boundary.run([] { throw 1; });
    EXPECT_EQ(messages.asked, std::vector{unknownFailureReport()});
}

TEST(FailureBoundary, TheEndOfTheProgramIsNoFailure) {
    support::ScriptedMessageBox messages;
    FailureBoundary boundary(messages);
    EXPECT_FALSE(boundary.run([] { throw EndOfProgram(); }));
    EXPECT_TRUE(messages.asked.empty());
}

TEST(FailureBoundary, WhileAMessageIsShownFurtherFailuresDoNotPileUp) {
    struct FailingBox : base::MessageBox {
        MessageAnswer show(const base::Message&) override {
            ++shown;
            boundary->run([] { throw base::FileFailure("again"); });
            return MessageAnswer::Ok;
        }
        FailureBoundary* boundary = nullptr;
        int shown = 0;
    } messages;
    FailureBoundary boundary(messages);
    messages.boundary = &boundary;
    boundary.run([] { throw base::FileFailure("first"); });
    EXPECT_EQ(messages.shown, 1);
    boundary.run([] { throw base::FileFailure("later"); });
    EXPECT_EQ(messages.shown, 2);
}

TEST(FailureBoundary, AMessageThatCannotBeShownEndsNothing) {
    struct BrokenBox : base::MessageBox {
        MessageAnswer show(const base::Message&) override { throw std::runtime_error("no screen"); }
    } messages;
    FailureBoundary boundary(messages);
    EXPECT_FALSE(boundary.run([] { throw base::FileFailure("gone"); }));
}

class EventLoop : public testing::Test {
  protected:
    EventLoop() { support::testApplication().setBoundary(&boundary); }
    ~EventLoop() override { support::testApplication().setBoundary(nullptr); }

    support::ScriptedMessageBox messages;
    FailureBoundary boundary{messages};
};

/// Fails at every event that is meant for it.
class FailingReceiver : public QObject {
  public:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        ++received;
        throw base::EngineFailure(base::EngineFault::Damaged, "a.mdb: page 3 is damaged");
    }
    int received = 0;
};

TEST_F(EventLoop, AFailingEventIsShownAndTheProgramGoesOn) {
    FailingReceiver receiver;
    messages.expect(MessageAnswer::Ok);
    messages.expect(MessageAnswer::Ok);
    for (int i = 0; i < 2; ++i) {
        QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(receiver.received, 2);
    ASSERT_EQ(messages.asked.size(), 2U);
    EXPECT_NE(messages.asked[0].text.find("page 3 is damaged"), std::string::npos);
}

TEST_F(EventLoop, EveryCallRunsWhatIsPending) {
    ProgramEnd end;
    WindowEvents events(end);
    for (int call = 1; call <= 1000; ++call) {
        bool ran = false;
        QTimer::singleShot(0, [&] { ran = true; });
        events.runPendingEvents();
        ASSERT_TRUE(ran) << "call " << call;
    }
}

TEST_F(EventLoop, TheEndOfTheProgramIsSeenAtOnce) {
    ProgramEnd end;
    WindowEvents events(end);
    events.runPendingEvents();
    end.request();
    EXPECT_THROW(events.runPendingEvents(), EndOfProgram);
}

TEST_F(EventLoop, PendingEventsRunUntilTheUserEndsTheProgram) {
    ProgramEnd end;
    WindowEvents events(end);
    bool ran = false;
    QTimer::singleShot(0, [&] { ran = true; });
    events.runPendingEvents();
    EXPECT_TRUE(ran);
    QTimer::singleShot(0, [&] { end.request(); });
    EXPECT_THROW(events.runPendingEvents(), EndOfProgram);
}

}  // namespace
}  // namespace shell
