#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <vector>

#include "base/message_box.h"

namespace support {

/// Answers message boxes from a list and remembers what was asked. A box that nobody expected fails
/// the test, and so does an answer that its buttons do not offer.
class ScriptedMessageBox : public base::MessageBox {
  public:
    ScriptedMessageBox() = default;
    ScriptedMessageBox(std::initializer_list<base::MessageAnswer> answers) : answers_(answers) {}

    void expect(base::MessageAnswer answer) { answers_.push_back(answer); }

    base::MessageAnswer show(const base::Message& message) override {
        asked.push_back(message);
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected message box \"" << message.title << "\": " << message.text;
            return harmlessAnswer(message.buttons);
        }
        const base::MessageAnswer answer = answers_.front();
        answers_.pop_front();
        EXPECT_TRUE(offers(message.buttons, answer))
            << "the box \"" << message.title << "\" has no button for the scripted answer";
        return answer;
    }

    bool allAnswersUsed() const { return answers_.empty(); }

    std::vector<base::Message> asked;  ///< every box shown, in order

  private:
    static bool offers(base::MessageButtons buttons, base::MessageAnswer answer) {
        switch (buttons) {
            case base::MessageButtons::Ok:
                return answer == base::MessageAnswer::Ok;
            case base::MessageButtons::OkCancel:
                return answer == base::MessageAnswer::Ok || answer == base::MessageAnswer::Cancel;
            case base::MessageButtons::YesNoCancel:
                return answer != base::MessageAnswer::Ok;
        }
        return false;
    }

    static base::MessageAnswer harmlessAnswer(base::MessageButtons buttons) {
        return buttons == base::MessageButtons::Ok ? base::MessageAnswer::Ok
                                                   : base::MessageAnswer::Cancel;
    }

    std::deque<base::MessageAnswer> answers_;
};

}  // namespace support
