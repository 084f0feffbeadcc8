#pragma once

#include <cstdint>

namespace scan {

/// A sum that is a signed 32-bit number as long as it fits and a double from the first sum on that
/// does not; it never goes back.
class WideningTotal {
  public:
    WideningTotal& operator+=(std::int32_t number);
    WideningTotal& operator+=(const WideningTotal& other);
    /// Adds a number that is a double already, which widens this.
    WideningTotal& operator+=(double number);

    bool isDouble() const { return widened_; }
    double value() const { return widened_ ? double_ : integer_; }

  private:
    std::int32_t integer_ = 0;
    double double_ = 0;
    bool widened_ = false;
};

}  // namespace scan
