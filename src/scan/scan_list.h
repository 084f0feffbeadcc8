#pragma once

#include "base/program_state.h"
#include "scan/scan_destination.h"

namespace scan {

/// The desktop's destination: the scan list of the program's state. Each entry raises scanCount by
/// one, makes the list that long and fills its last element. Whoever starts a scan has set
/// scanCount to 0, so the first entry cuts away what an earlier scan left; a walk without entries
/// leaves it all.
///
/// scanCount is looked at anew for each entry: a second scan, started by an event in the middle of
/// the first, begins at 1 again, and the first goes on behind it.
class ScanList : public ScanDestination {
  public:
    explicit ScanList(base::ProgramState& state) : state_(state) {}

    std::int64_t store(const base::ScanEntry& entry, SizeFit fit) override;

  private:
    base::ProgramState& state_;
};

/// The number of the scan list's last entry, which is how many there are, whatever scanCount says;
/// 0 as long as nothing was ever scanned.
std::int64_t lastEntryOf(const base::NumberedList<base::ScanEntry>& scanList);

}  // namespace scan
