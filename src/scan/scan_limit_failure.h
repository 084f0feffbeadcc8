#pragma once

#include "base/failure.h"

namespace scan {

/// A scan has more entries than the desktop can hold or show. Told apart from other overflows, as
/// the companion program has no such limit.
class ScanLimitFailure : public base::OverflowFailure {
  public:
    using OverflowFailure::OverflowFailure;
};

}  // namespace scan
