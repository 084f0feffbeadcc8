#include "shell/window_message_box.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>

#include "tests/shell/modal.h"

namespace shell {
namespace {

using base::MessageAnswer;
using base::MessageButtons;

MessageAnswer answer(MessageButtons buttons, const std::function<void(QMessageBox&)>& user) {
    support::whenModal<QMessageBox>(user);
    return WindowMessageBox().show({"The title", "<b>The</b> text", buttons});
}

QMessageBox::StandardButtons buttonsOf(const QMessageBox& box) { return box.standardButtons(); }

TEST(WindowMessageBox, ShowsTitleAndTextAsTheyAreWithoutAnIcon) {
    answer(MessageButtons::Ok, [](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "The title");
        EXPECT_EQ(box.text(), "<b>The</b> text");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        EXPECT_TRUE(box.iconPixmap().isNull());
        EXPECT_TRUE(box.button(QMessageBox::Ok)->icon().isNull());
        EXPECT_TRUE(box.isModal());
        box.button(QMessageBox::Ok)->click();
    });
}

TEST(WindowMessageBox, HasExactlyTheNamedButtons) {
    const std::pair<MessageButtons, QMessageBox::StandardButtons> cases[] = {
        {MessageButtons::Ok, QMessageBox::Ok},
        {MessageButtons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel},
        {MessageButtons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel}};
    for (const auto& [named, expected] : cases) {
        answer(named, [expected = expected](QMessageBox& box) {
            EXPECT_EQ(buttonsOf(box), expected);
            box.reject();
        });
    }
}

TEST(WindowMessageBox, AnswersWithTheButton) {
    const std::tuple<MessageButtons, QMessageBox::StandardButton, MessageAnswer> cases[] = {
        {MessageButtons::Ok, QMessageBox::Ok, MessageAnswer::Ok},
        {MessageButtons::OkCancel, QMessageBox::Ok, MessageAnswer::Ok},
        {MessageButtons::OkCancel, QMessageBox::Cancel, MessageAnswer::Cancel},
        {MessageButtons::YesNoCancel, QMessageBox::Yes, MessageAnswer::Yes},
        {MessageButtons::YesNoCancel, QMessageBox::No, MessageAnswer::No},
        {MessageButtons::YesNoCancel, QMessageBox::Cancel, MessageAnswer::Cancel}};
    for (const auto& [buttons, clicked, expected] : cases) {
        EXPECT_EQ(answer(buttons,
                         [clicked = clicked](QMessageBox& box) { box.button(clicked)->click(); }),
                  expected);
    }
}

TEST(WindowMessageBox, EscapeIsCancelOrOkWhereThatIsTheOnlyButton) {
    const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    EXPECT_EQ(answer(MessageButtons::Ok, escape), MessageAnswer::Ok);
    EXPECT_EQ(answer(MessageButtons::OkCancel, escape), MessageAnswer::Cancel);
    EXPECT_EQ(answer(MessageButtons::YesNoCancel, escape), MessageAnswer::Cancel);
}

TEST(WindowMessageBox, TheCloseBoxIsWhatEscapeIs) {
    const auto close = [](QMessageBox& box) { box.close(); };
    EXPECT_EQ(answer(MessageButtons::Ok, close), MessageAnswer::Ok);
    EXPECT_EQ(answer(MessageButtons::YesNoCancel, close), MessageAnswer::Cancel);
}

}  // namespace
}  // namespace shell
