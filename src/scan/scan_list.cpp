#include "scan/scan_list.h"

namespace scan {

std::int64_t ScanList::store(const base::ScanEntry& entry, SizeFit /*fit*/) {
    ++state_.scanCount;
    state_.scanList.growTo(state_.scanCount);
    state_.scanList[state_.scanCount] = entry;
    return state_.scanCount;
}

std::int64_t lastEntryOf(const base::NumberedList<base::ScanEntry>& scanList) {
    return scanList.neverGrown() ? 0 : scanList.upperBound();
}

}  // namespace scan
