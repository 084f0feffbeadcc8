#include "cli/progress_line.h"

#include "cli/messages.h"

namespace cli {

ProgressLine::ProgressLine(Messages& messages, Shown shown, Now now)
    : messages_(messages),
      isShown_(shown == Shown::Yes),
      now_(std::move(now)),
      start_(now_()),
      next_(start_) {}

void ProgressLine::showScanProgress(std::int64_t count) {
    // Asking the time costs more than passing over it.
    constexpr std::int64_t entriesBetweenLooks = 32;
    if (!isShown_ || (count - 1) % entriesBetweenLooks != 0) {
        return;
    }
    const Time time = now_();
    if (time >= next_) {
        next_ = time + (messages_.isTerminal() ? terminalPause : filePause);
        messages_.setStatus(line(count, time));
    }
}

void ProgressLine::clear() {
    if (isShown_) {
        messages_.clearStatus();
    }
}

std::string ProgressLine::line(std::int64_t count, Time time) const {
    const double seconds = std::chrono::duration<double>(time - start_).count();
    // In the first moments a rate says nothing.
    const auto rate =
        seconds < 0.1 ? 0 : static_cast<std::int64_t>(static_cast<double>(count) / seconds);
    std::string text = groupedNumber(count) + (count == 1 ? " entry" : " entries");
    if (rate > 0) {
        text += ", " + groupedNumber(rate) + " per second";
    }
    return text + ": " + folder_;
}

std::string groupedNumber(std::int64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3 + (number < 0 ? 1U : 0U);) {
        place -= 3;
        text.insert(place, ",");
    }
    return text;
}

}  // namespace cli
