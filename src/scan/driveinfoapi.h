#pragma once

#include <cstdint>
#include <string>

#include "base/program_state.h"

namespace jet {
class Engine;
}
namespace platform {
class Clock;
class Drives;
struct CountHalves;
}  // namespace platform

// driveinfoapi: what there is to know of a drive before its medium is scanned, and the id that the
// medium will get. The scan window calls it for each drive the user chooses; the result stands in
// currentMedia of base::ProgramState. Nothing is shown to the user here.

namespace scan {

/// The drive of an entry of the drive list, such as "d:" of "d: [MY DISK]": all but the bracket and
/// the blank before it. An entry without "[" is the drive itself; one that begins with "[" is an
/// InvalidArgumentFailure.
std::string stripDriveEntry(const std::string& driveEntry);

/// The unsigned 64-bit count of two halves, each read as unsigned; exact up to 2^53.
double combineHalves(std::int32_t low, std::int32_t high);

/// "Removable", "Fixed", "Remote", "CDROM", "RAMDisk" for the type codes 1 to 5, "UnKnown" for any
/// other.
const char* driveTypeName(std::int32_t code);

/// A count of bytes in whole Mb, to the nearest, halves to even; an OverflowFailure beyond 32 bits.
std::int32_t megabytes(const platform::CountHalves& bytes);

/// Reads drives. All four must outlive this.
class DriveInfo {
  public:
    DriveInfo(base::ProgramState& state, jet::Engine& engine, platform::Drives& drives,
              platform::Clock& clock)
        : state_(state), engine_(engine), drives_(drives), clock_(clock) {}

    /// Fills currentMedia (all but `numberFiles` and `loaded`) from the drive that an entry of the
    /// drive list names. False when any step failed, be it the drive or the archive: what was read
    /// until then has been set, the rest keeps the values of the last reading.
    bool readDriveInfo(const std::string& driveEntry);

    /// One more than the largest id in table `media` of the current archive; 1 when it has no rows.
    /// Failures of the engine pass, and so does the OverflowFailure past the largest 32-bit number.
    std::int32_t nextMediaId();

  private:
    void read(const std::string& driveEntry);
    void readSpace(const std::string& drive);

    base::ProgramState& state_;
    jet::Engine& engine_;
    platform::Drives& drives_;
    platform::Clock& clock_;
};

}  // namespace scan
