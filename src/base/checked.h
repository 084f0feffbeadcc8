#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "base/failure.h"

namespace base {

/// A signed whole number of fixed width whose every change is checked: a result outside the range
/// of `Number` is an OverflowFailure, never a wrap, and leaves the number as it was. Constructing
/// from a wider number is checked as well, so a conversion such as `Int16(scanCount)` fails where
/// the number does not fit.
template <std::signed_integral Number>
class Checked {
  public:
    constexpr Checked() = default;

    template <std::integral Other>
    constexpr Checked(Other value) : value_(narrow(value)) {}  // NOLINT: implicit by intent

    template <std::signed_integral Other>
    constexpr explicit Checked(Checked<Other> other) : Checked(other.value()) {}

    constexpr Number value() const { return value_; }
    constexpr operator Number() const { return value_; }  // NOLINT: implicit by intent

    constexpr Checked& operator+=(Checked other) {
        Number result = 0;
        if (__builtin_add_overflow(value_, other.value_, &result)) {
            fail();
        }
        value_ = result;
        return *this;
    }
    constexpr Checked& operator-=(Checked other) {
        Number result = 0;
        if (__builtin_sub_overflow(value_, other.value_, &result)) {
            fail();
        }
        value_ = result;
        return *this;
    }
    constexpr Checked& operator++() { return *this += Checked(1); }

    friend constexpr Checked operator+(Checked left, Checked right) { return left += right; }
    friend constexpr Checked operator-(Checked left, Checked right) { return left -= right; }

    // With a plain number on one side, where the conversions would lead both ways.
    template <std::integral Other>
    friend constexpr Checked operator+(Checked left, Other right) {
        return left += right;
    }
    template <std::integral Other>
    friend constexpr Checked operator+(Other left, Checked right) {
        return right += left;
    }
    template <std::integral Other>
    friend constexpr Checked operator-(Checked left, Other right) {
        return left -= right;
    }
    template <std::integral Other>
    friend constexpr Checked operator-(Other left, Checked right) {
        return Checked(left) -= right;
    }

  private:
    template <std::integral Other>
    static constexpr Number narrow(Other value) {
        if (!std::in_range<Number>(value)) {
            fail();
        }
        return static_cast<Number>(value);
    }

    [[noreturn]] static void fail() {
        throw OverflowFailure("a number does not fit " + std::to_string(8 * sizeof(Number)) +
                              " bits");
    }

    Number value_ = 0;
};

using Int16 = Checked<std::int16_t>;
using Int32 = Checked<std::int32_t>;

}  // namespace base
