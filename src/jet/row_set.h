#pragma once

#include <bitset>
#include <cstdint>
#include <unordered_map>

#include "jet/format.h"

namespace jet {

/// Rows by their places, in 32 bytes for each page that has one.
class RowSet {
  public:
    /// False when it was there already.
    bool insert(RowPointer row) {
        auto& slots = pages_[row.page];
        const bool added = !slots[row.slot];
        slots[row.slot] = true;
        size_ += added ? 1 : 0;
        return added;
    }
    bool contains(RowPointer row) const {
        const auto page = pages_.find(row.page);
        return page != pages_.end() && page->second[row.slot];
    }
    std::uint64_t size() const { return size_; }

  private:
    std::unordered_map<std::uint32_t, std::bitset<256>> pages_;
    std::uint64_t size_ = 0;
};

}  // namespace jet
