#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/media_info.h"
#include "base/pending_events.h"
#include "scan/scan_progress.h"

// adjustpaths: the form in which a scan stores paths, and the scan window's progress text. The
// walker calls both for every entry.

namespace scan {

/// The entry path of the folder `folderPath` (with its trailing "\"), for a file in it: the media
/// id and ":" in the place of the drive, without the trailing "\". With id 12, "c:\" gives "12:"
/// and "c:\dir\sub\" gives "12:\dir\sub".
///
/// The drive is looked for as the letter of `currentMedia` and ":", in the case given. Where that
/// is found, everything up to it and one character behind it is dropped ("C:\dir\" gives "12:dir"
/// for letter "C"); where it is not, which is the rule because walks run on lower-case letters, as
/// many characters as it has are dropped from the front. A path shorter than what is to be dropped
/// is an InvalidArgumentFailure.
std::string toEntryPathForFile(std::string_view folderPath, const base::MediaInfo& currentMedia);

/// The same for a folder in `folderPath`. It needs a "\" in the result before that is cut, so it is
/// an InvalidArgumentFailure at the root of a drive whose letter was found.
std::string toEntryPathForFolder(std::string_view folderPath, const base::MediaInfo& currentMedia);

/// The label of the scan window that shows how far a scan is.
class ProgressDisplay {
  public:
    virtual ~ProgressDisplay() = default;
    virtual void setDisplayProgress(const std::string& caption) = 0;
};

/// The desktop's progress: a caption and the pending events after each entry. Its count has 16
/// bits, so the 32,768th entry ends a scan with an OverflowFailure.
class WindowProgress : public ScanProgress {
  public:
    WindowProgress(ProgressDisplay& display, base::PendingEvents& events)
        : display_(display), events_(events) {}

    /// Shows "Scanning:  File " and the count, then lets pending events run.
    void showScanProgress(std::int64_t count) override;

  private:
    ProgressDisplay& display_;
    base::PendingEvents& events_;
};

}  // namespace scan
