#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace cli {

/// The stream that messages and progress go to. On a terminal its last line may be a status line,
/// which is rewritten in place and gives way to messages. A stream that takes nothing more is no
/// failure: there is nobody to tell.
class Messages {
  public:
    using Columns = std::function<int()>;

    /// `columns` tells the width of the terminal; asked only where the stream is one.
    Messages(std::ostream& stream, bool isTerminal, Columns columns)
        : stream_(stream), isTerminal_(isTerminal), columns_(std::move(columns)) {}

    bool isTerminal() const { return isTerminal_; }

    /// One line "vdln: text"; hidden characters are made visible.
    void report(std::string_view text);
    /// Shows `text` as the status line; where the stream is no terminal, as a line of its own.
    void setStatus(std::string_view text);
    void clearStatus();
    /// Writes a text of our own as it is, without an end of line, and sees that it is seen.
    void prompt(std::string_view text);

  private:
    std::ostream& stream_;
    bool isTerminal_;
    Columns columns_;
    bool statusShown_ = false;
};

}  // namespace cli
