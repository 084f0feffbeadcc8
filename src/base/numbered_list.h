#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"

namespace base {

/// A list whose elements are numbered from 1, as the program's shared lists are.
///
/// It has three states. *Never grown*: it has no bounds, and asking for them or for any element is
/// a SubscriptFailure. *Grown*: growTo(n) gave it n elements, the earlier ones kept. *Cut*:
/// growTo(n) with an n below the present size dropped the elements above n; this is the only way in
/// which the list ever gets shorter. Growing by one is amortised constant time. Any growTo() may
/// move the elements: a reference is good until the next growTo(), so a loop that lets events run
/// indexes anew.
template <typename Element>
class NumberedList {
  public:
    /// Makes the list exactly `count` elements long (count >= 0), keeping elements 1 to `count`.
    /// New elements are value-initialised.
    void growTo(std::int64_t count) {
        if (count < 0) {
            throw SubscriptFailure("a list cannot have " + std::to_string(count) + " elements");
        }
        grown_ = true;
        elements_.resize(static_cast<std::size_t>(count));
    }

    /// Appends one element and returns its number.
    std::int64_t append(Element element) {
        grown_ = true;
        elements_.push_back(std::move(element));
        return static_cast<std::int64_t>(elements_.size());
    }

    bool neverGrown() const { return !grown_; }

    /// The number of the last element. SubscriptFailure when the list was never grown.
    std::int64_t upperBound() const {
        if (!grown_) {
            throw SubscriptFailure("a list that was never filled has no bounds");
        }
        return static_cast<std::int64_t>(elements_.size());
    }

    /// Element `number`, from 1 to upperBound(); anything else is a SubscriptFailure.
    Element& operator[](std::int64_t number) { return elements_[indexOf(number)]; }
    const Element& operator[](std::int64_t number) const { return elements_[indexOf(number)]; }

    /// The elements in order, for algorithms; empty when the list was never grown.
    std::vector<Element>& elements() { return elements_; }
    const std::vector<Element>& elements() const { return elements_; }

  private:
    std::size_t indexOf(std::int64_t number) const {
        if (number < 1 || static_cast<std::uint64_t>(number) > elements_.size()) {
            throw SubscriptFailure("a list of " + std::to_string(elements_.size()) +
                                   " elements has no element " + std::to_string(number));
        }
        return static_cast<std::size_t>(number - 1);
    }

    std::vector<Element> elements_;
    bool grown_ = false;
};

}  // namespace base
