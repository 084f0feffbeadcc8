#pragma once

#include <istream>

#include "base/message_box.h"

namespace cli {

class Messages;

/// Asks on the terminal and reads one line: "yes" or "y" is Yes, "no" or "n" is No, anything else,
/// the end of the input included, is Cancel. Questions with other buttons are not asked here.
class TerminalQuestion : public base::MessageBox {
  public:
    /// Both must outlive this.
    TerminalQuestion(std::istream& in, Messages& messages) : in_(in), messages_(messages) {}

    base::MessageAnswer show(const base::Message& message) override;

  private:
    std::istream& in_;
    Messages& messages_;
};

}  // namespace cli
