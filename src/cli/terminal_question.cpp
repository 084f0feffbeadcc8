#include "cli/terminal_question.h"

#include <string>

#include "base/text.h"
#include "cli/messages.h"

namespace cli {
namespace {

bool isAnswer(const std::string& line, std::string_view word) {
    return base::equalIgnoringCase(line, word) || base::equalIgnoringCase(line, word.substr(0, 1));
}

std::string trimmed(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    const std::size_t last = line.find_last_not_of(" \t\r");
    return first == std::string::npos ? std::string() : line.substr(first, last - first + 1);
}

}  // namespace

base::MessageAnswer TerminalQuestion::show(const base::Message& message) {
    messages_.prompt(message.title + "\n\n" + message.text + " [Yes/No/Cancel] ");
    std::string line;
    std::getline(in_, line);
    const std::string answer = trimmed(line);
    if (isAnswer(answer, "Yes")) {
        return base::MessageAnswer::Yes;
    }
    return isAnswer(answer, "No") ? base::MessageAnswer::No : base::MessageAnswer::Cancel;
}

}  // namespace cli
