#include "cli/messages.h"

#include "cli/visible_text.h"

namespace cli {
namespace {

constexpr const char* eraseLine = "\r\x1b[K";

}  // namespace

void Messages::report(std::string_view text) {
    clearStatus();
    stream_ << "vdln: " << visibleText(text) << '\n' << std::flush;
}

void Messages::setStatus(std::string_view text) {
    const std::string shown = visibleText(text);
    if (isTerminal_) {
        // The last column stays free: a full line would move the cursor on to the next.
        stream_ << eraseLine << cutToWidth(shown, columns_() - 1) << std::flush;
        statusShown_ = true;
    } else {
        stream_ << shown << '\n' << std::flush;
    }
}

void Messages::clearStatus() {
    if (statusShown_) {
        stream_ << eraseLine << std::flush;
        statusShown_ = false;
    }
}

void Messages::prompt(std::string_view text) {
    clearStatus();
    stream_ << text << std::flush;
}

}  // namespace cli
