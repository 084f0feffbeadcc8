#pragma once

#include <cstdint>

#include "base/scan_entry.h"

namespace scan {

/// Whether the Size of an entry has all the bits of the file's size, or is another number because
/// the size needs more than 32 bits.
enum class SizeFit { Exact, Cut };

/// Takes the entries of a walk, one by one, in the order in which they are found. The desktop keeps
/// them in the scan list; the companion stores each in the archive at once.
class ScanDestination {
  public:
    virtual ~ScanDestination() = default;
    /// Takes a copy of `entry`, which is the walker's and good for this call only. Returns how many
    /// entries the destination holds now. A failure ends the walk.
    virtual std::int64_t store(const base::ScanEntry& entry, SizeFit fit) = 0;
};

}  // namespace scan
