#pragma once

#include <string>

namespace base {

/// The button sets that the program's message boxes have.
enum class MessageButtons { Ok, OkCancel, YesNoCancel };

/// The button that closed a message box. Closing it otherwise is Cancel, or Ok where that is the
/// only button.
enum class MessageAnswer { Ok, Cancel, Yes, No };

/// One message box: a text, a title and exactly the named buttons, without an icon.
struct Message {
    std::string title;
    std::string text;
    MessageButtons buttons = MessageButtons::Ok;

    friend bool operator==(const Message&, const Message&) = default;
};

/// Shows a message and waits for the answer. The desktop brings a modal window, the companion the
/// terminal, a test a list of answers.
class MessageBox {
  public:
    virtual ~MessageBox() = default;
    /// One of the buttons of `message.buttons`. Pending window events run meanwhile.
    virtual MessageAnswer show(const Message& message) = 0;
};

}  // namespace base
