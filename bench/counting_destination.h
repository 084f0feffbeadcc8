#pragma once

#include <cstddef>
#include <cstdint>

#include "base/scan_entry.h"
#include "scan/scan_destination.h"

namespace bench {

/// Takes the entries of a walk and keeps nothing of them but sums, so that the walk alone is
/// measured.
class CountingDestination final : public scan::ScanDestination {
  public:
    std::int64_t store(const base::ScanEntry& entry, scan::SizeFit) override {
        texts_ += entry.FileName.size() + entry.path.size() + entry.Type.size();
        return ++count_;
    }
    std::int64_t count() const { return count_; }

  private:
    std::int64_t count_ = 0;
    std::size_t texts_ = 0;
};

}  // namespace bench
