#pragma once

#include <cstddef>

namespace jet_test {

/// The largest piece of memory that new was asked for since this was made. For one thread.
class LargestAllocation {
  public:
    LargestAllocation();
    std::size_t bytes() const;
};

}  // namespace jet_test
