#include "scan/scan_list.h"

namespace scan {

std::int64_t ScanList::store(const base::ScanEntry& entry, SizeFit /*fit*/) {
    ++state_.scanCount;
    state_.scanList.growTo(state_.scanCount);
    state_.scanList[state_.scanCount] = entry;
    return state_.scanCount;
}

}  // namespace scan
