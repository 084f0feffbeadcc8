#include "scan/desktop_scan.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

#include "base/checked.h"
#include "base/failure.h"
#include "platform/directory_lister.h"
#include "platform/drives.h"
#include "platform/platform.h"
#include "scan/scan_limit_failure.h"
#include "scan/scan_list.h"
#include "scan/scandriveapi.h"

namespace scan {

namespace {

/// What the 16-bit number reaches that counts the items.
constexpr std::int64_t mostShownEntries = std::numeric_limits<std::int16_t>::max();

ListItem itemOf(const base::ScanEntry& entry) {
    // Not from a list in braces, out of which every text would be copied once more.
    ListItem item;
    item.reserve(10);
    for (const std::string* text :
         {&entry.FileName, &entry.path, &entry.Folder, &entry.Type, &entry.keywords, &entry.Notes1,
          &entry.Notes2, &entry.DateCreated, &entry.DateModified}) {
        item.push_back(*text);
    }
    item.push_back(std::to_string(entry.Size));
    return item;
}

std::string megabytesText(std::int32_t megabytes, std::string_view thousandsSeparator) {
    return groupedNumber(megabytes, thousandsSeparator) + " Mb";
}

}  // namespace

std::string groupedNumber(std::int32_t number, std::string_view separator) {
    constexpr std::size_t groupLength = 3;
    const std::string digits = std::to_string(std::abs(static_cast<std::int64_t>(number)));
    std::string text = number < 0 ? "-" : "";
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % groupLength == 0) {
            text.append(separator);
        }
        text.push_back(digits[i]);
    }
    return text;
}

DesktopScan::DesktopScan(base::ProgramState& state, jet::Engine& engine,
                         platform::Platform& platform, base::PendingEvents& events,
                         MainDisplay& main)
    : state_(state),
      platform_(platform),
      events_(events),
      main_(main),
      driveInfo_(state, engine, platform.drives(), platform.clock()) {}

std::vector<std::string> DesktopScan::driveEntries() {
    std::vector<std::string> entries;
    try {
        for (const platform::DriveListEntry& drive : platform_.drives().list()) {
            entries.push_back(drive.text());
        }
    } catch (const base::Failure&) {
        // A machine that does not tell its drives has none to choose.
    }
    return entries;
}

bool DesktopScan::readDriveInfo(const std::string& driveEntry) {
    return driveInfo_.readDriveInfo(driveEntry);
}

std::string DesktopScan::archiveText() const {
    return hasCurrentArchive()
               ? "Scan for current archive: " + state_.currentArchive().fullPath()
               : std::string("No current archive, go to File menu to make current archive.");
}

DesktopScan::DriveInfoTexts DesktopScan::driveInfoCaptions() {
    return {"Disk Label: ", "Disk Type: ", "Disk Size: ", "Disk Free Space: "};
}

DesktopScan::DriveInfoTexts DesktopScan::driveInfoTexts(std::string_view thousandsSeparator) const {
    const base::MediaInfo& media = state_.currentMedia;
    DriveInfoTexts texts = driveInfoCaptions();
    texts[0] += media.mediaLabel;
    texts[1] += media.mediaType;
    texts[2] += megabytesText(media.mediaSize, thousandsSeparator);
    texts[3] += megabytesText(media.mediaFreeSpace, thousandsSeparator);
    return texts;
}

std::string DesktopScan::mediaIdText() const {
    return "Media ID Number:" + std::to_string(state_.currentMedia.mediaId);
}

void DesktopScan::scanDrive(const std::string& driveEntry, ProgressDisplay& display) {
    state_.scanCount = 0;
    const std::string drive = stripDriveEntry(driveEntry);
    // All of this walk alone: an event in its middle may start another one.
    const auto lister = platform_.createDirectoryLister();
    ScanList destination(state_);
    WindowProgress progress(display, events_);
    Walker(state_.currentMedia, *lister, destination, progress, WalkLimits::Checked)
        .scanDrive(drive);
}

void DesktopScan::setScanMain() {
    main_.arrangeScanMain();
    main_.setListColumns({{"Name", 0.10},
                          {"Path", 0.20},
                          {"Type", 0.05},
                          {"Type", 0.15},
                          {"Keywords", 0.10},
                          {"Notes 1", 0.10},
                          {"Notes 2", 0.10},
                          {"Date Created", 0.05},
                          {"Date Modified", 0.05},
                          {"Size", 0.10}});
}

void DesktopScan::fillScanList() {
    const std::int64_t last = lastEntryOf(state_.scanList);
    state_.currentMedia.numberFiles = base::Int32(last);
    main_.removeAllItems();
    std::vector<ListItem> items;
    const std::int64_t shown = std::min(last, mostShownEntries);
    items.reserve(static_cast<std::size_t>(shown));
    for (std::int64_t i = 1; i <= shown; ++i) {
        items.push_back(itemOf(state_.scanList[i]));
    }
    main_.addItems(std::move(items));
    if (last > shown) {
        throw ScanLimitFailure("the list shows the first 32,767 entries of the scan only");
    }
}

void DesktopScan::showDriveInfoInDisplay() {
    const base::MediaInfo& media = state_.currentMedia;
    main_.setDisplayDriveInfo(0, std::to_string(media.mediaId) + ": " + media.mediaLabel +
                                     " as User Name: " + media.mediaName +
                                     " is a: " + media.mediaType);
    const base::Int32 used = base::Int32(media.mediaSize) - base::Int32(media.mediaFreeSpace);
    main_.setDisplayDriveInfo(
        1, std::to_string(media.numberFiles) +
               " files and folders totalling: " + std::to_string(used.value()) + " of " +
               std::to_string(media.mediaSize) + " total size.");
}

void DesktopScan::offerSaving() {
    main_.enableSave();
    state_.viewMode = "scan";
}

}  // namespace scan
