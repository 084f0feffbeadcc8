#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "scan/scan_progress.h"

namespace cli {

class Messages;

/// The progress of a scan: entries so far, entries a second, and the folder that the walk is in.
class ProgressLine : public scan::ScanProgress {
  public:
    using Time = std::chrono::steady_clock::time_point;
    using Now = std::function<Time()>;

    /// Between two lines on a terminal, and elsewhere, where each stays.
    static constexpr std::chrono::milliseconds terminalPause{100};
    static constexpr std::chrono::milliseconds filePause{1000};

    /// `messages` must outlive this. Where it is not shown nothing is ever written.
    enum class Shown { Yes, No };
    ProgressLine(Messages& messages, Shown shown, Now now);

    /// The walk has come to this folder, in the form in which it is to be shown.
    void setFolder(std::string folder) { folder_ = std::move(folder); }
    void showScanProgress(std::int64_t count) override;
    void clear();

  private:
    std::string line(std::int64_t count, Time time) const;

    Messages& messages_;
    bool isShown_;
    Now now_;
    Time start_;
    Time next_;
    std::string folder_;
};

/// "1,234,567".
std::string groupedNumber(std::int64_t number);

}  // namespace cli
