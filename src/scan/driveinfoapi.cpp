#include "scan/driveinfoapi.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "archive/archive_table.h"
#include "base/checked.h"
#include "base/failure.h"
#include "platform/clock.h"
#include "platform/drives.h"
#include "scan/date_text.h"

namespace scan {
namespace {

constexpr double twoToThe32 = 4294967296.0;
constexpr double bytesPerMb = 1024.0 * 1024.0;

double unsignedHalf(std::int32_t half) { return half < 0 ? half + twoToThe32 : half; }

}  // namespace

std::string stripDriveEntry(const std::string& driveEntry) {
    const std::size_t bracket = driveEntry.find('[');
    if (bracket == std::string::npos) {
        return driveEntry;
    }
    if (bracket == 0) {
        throw base::InvalidArgumentFailure("the drive list entry \"" + driveEntry +
                                           "\" names no drive");
    }
    return driveEntry.substr(0, bracket - 1);
}

double combineHalves(std::int32_t low, std::int32_t high) {
    return twoToThe32 * unsignedHalf(high) + unsignedHalf(low);
}

const char* driveTypeName(std::int32_t code) {
    switch (static_cast<platform::DriveType>(code)) {
        case platform::DriveType::Removable:
            return "Removable";
        case platform::DriveType::Fixed:
            return "Fixed";
        case platform::DriveType::Remote:
            return "Remote";
        case platform::DriveType::CdRom:
            return "CDROM";
        case platform::DriveType::RamDisk:
            return "RAMDisk";
        case platform::DriveType::Unknown:
            break;
    }
    return "UnKnown";
}

std::int32_t megabytes(const platform::CountHalves& bytes) {
    const double rounded = std::nearbyint(combineHalves(bytes.low, bytes.high) / bytesPerMb);
    if (rounded > std::numeric_limits<std::int32_t>::max()) {
        throw base::OverflowFailure("a drive's size in Mb does not fit 32 bits");
    }
    return static_cast<std::int32_t>(rounded);
}

bool DriveInfo::readDriveInfo(const std::string& driveEntry) {
    try {
        read(driveEntry);
        return true;
    } catch (const base::Failure&) {
        // Not told apart on purpose: the caller has one message for a drive that is not ready and
        // for an archive that is not there.
        return false;
    }
}

void DriveInfo::read(const std::string& driveEntry) {
    const auto fileSystem = drives_.createFileSystemObject();
    const auto drive = fileSystem->getDrive(fileSystem->getDriveName(driveEntry));
    base::MediaInfo& media = state_.currentMedia;
    media.mediaLabel = drive->volumeName();
    media.driveLetter = drive->driveLetter();
    media.mediaName.clear();
    media.mediaId = nextMediaId();
    media.archiveDate = dateText(clock_.localNow());
    media.archiveUpdate = media.archiveDate;
    media.mediaType = driveTypeName(drive->driveType());
    readSpace(stripDriveEntry(driveEntry));
}

void DriveInfo::readSpace(const std::string& drive) {
    platform::DiskSpace space;
    if (!drives_.getDiskFreeSpace(drive, space)) {
        throw base::FileFailure(drive + ": the drive's size cannot be read");
    }
    state_.currentMedia.mediaSize = megabytes(space.totalBytes);
    state_.currentMedia.mediaFreeSpace = megabytes(space.totalFree);
}

std::int32_t DriveInfo::nextMediaId() {
    archive::ArchiveTable table(engine_, state_.currentArchive(), "media", jet::LockType::ReadOnly);
    jet::Recordset& rows = table.rows();
    const int mediaId = rows.field("mediaId");
    base::Int32 largest;
    for (; !rows.endOfFile(); rows.moveNext()) {
        largest = std::max<std::int32_t>(largest, rows.integer(mediaId));
    }
    table.close();
    return largest + base::Int32(1);
}

}  // namespace scan
