#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "search/step_sort.h"

namespace search {

/// For each text of a list its place among all of them in order, equal ones at the same place. Made
/// in steps: an archive may have a million folders.
class TextOrder {
  public:
    /// `foldedTextOf` gives each of the `count` texts in its folded form, as a copy that is kept
    /// until the order is made.
    using TextOf = std::function<std::string(std::uint32_t)>;
    TextOrder(std::size_t count, TextOf foldedTextOf);
    TextOrder(const TextOrder&) = delete;
    TextOrder& operator=(const TextOrder&) = delete;

    /// One step; true when all places are known.
    bool advance();
    std::uint32_t placeOf(std::uint32_t text) const { return places_[text]; }

  private:
    struct ByText {
        const std::vector<std::string>* texts;
        bool operator()(std::uint32_t left, std::uint32_t right) const {
            const int order = (*texts)[left].compare((*texts)[right]);
            return order != 0 ? order < 0 : left < right;
        }
    };
    enum class Phase { Folding, Sorting, Numbering, Finished };

    void fold();
    void number();

    std::size_t count_;
    TextOf textOf_;
    Phase phase_ = Phase::Folding;
    std::vector<std::string> texts_;
    StepSort<std::uint32_t, ByText> sort_;
    std::size_t next_ = 0;
    std::uint32_t place_ = 0;
    std::vector<std::uint32_t> places_;
};

}  // namespace search
