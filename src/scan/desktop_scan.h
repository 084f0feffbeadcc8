#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/pending_events.h"
#include "base/program_state.h"
#include "scan/adjustpaths.h"
#include "scan/driveinfoapi.h"
#include "scan/main_display.h"

namespace jet {
class Engine;
}
namespace platform {
class Platform;
}

namespace scan {

/// The scan as the desktop does it: drives are read into currentMedia, a walk fills the scan list,
/// and the main window shows it. Knows no window; the scan window calls it and shows what it says.
class DesktopScan {
  public:
    static constexpr int driveInfoCount = 4;
    using DriveInfoTexts = std::array<std::string, driveInfoCount>;

    /// All must outlive this.
    DesktopScan(base::ProgramState& state, jet::Engine& engine, platform::Platform& platform,
                base::PendingEvents& events, MainDisplay& main);

    /// The entries of the drive list at this moment, by letter. Empty where the machine does not
    /// tell.
    std::vector<std::string> driveEntries();
    /// Reads the drive of an entry into currentMedia; false when it, or the archive, is not ready.
    bool readDriveInfo(const std::string& driveEntry);
    void setMediaName(const std::string& name) { state_.currentMedia.mediaName = name; }

    bool hasCurrentArchive() const { return !state_.archiveName.empty(); }
    /// Which archive the scan is for, or that there is none.
    std::string archiveText() const;
    /// Label, type, size and free space of currentMedia; thousands are set apart.
    DriveInfoTexts driveInfoTexts(std::string_view thousandsSeparator) const;
    /// The captions of the same without any values.
    static DriveInfoTexts driveInfoCaptions();
    std::string mediaIdText() const;

    /// Walks the drive of an entry into the scan list, from entry 1 on. Events run after each
    /// entry, and may start another scan. A drive without entries leaves the list as it is.
    void scanDrive(const std::string& driveEntry, ProgressDisplay& display);

    /// Prepares the main window for a scan: the workspace, and the list's ten columns.
    void setScanMain();
    /// Shows the whole scan list, which may be that of an earlier scan, and counts it for
    /// currentMedia. A list beyond 32,767 entries is an OverflowFailure, with those shown.
    void fillScanList();
    /// Shows the medium and the space in use in the main window's status lines.
    void showDriveInfoInDisplay();
    /// From now on the list shows a scan, which can be saved.
    void offerSaving();

  private:
    base::ProgramState& state_;
    platform::Platform& platform_;
    base::PendingEvents& events_;
    MainDisplay& main_;
    DriveInfo driveInfo_;
};

/// A number with its thousands set apart, for example "1,234" or "-12,000"; 0 is "0".
std::string groupedNumber(std::int32_t number, std::string_view separator);

}  // namespace scan
