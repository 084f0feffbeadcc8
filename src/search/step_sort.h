#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace search {

/// A merge sort in steps that each take about a millisecond: short sorted stretches, then
/// stretches merged two by two. `Less` must leave no two elements equal; then the order is the one
/// that any other sort would give.
template <typename Element, typename Less>
class StepSort {
  public:
    explicit StepSort(Less less) : less_(std::move(less)) {}

    /// Begins anew, also in the middle of an earlier sort.
    void start(std::vector<Element> elements) {
        elements_ = std::move(elements);
        merged_.clear();
        sorted_ = 0;
        width_ = stretch;
        start_ = 0;
        isMerging_ = false;
    }

    /// One step; true when all is in order.
    bool advance() {
        if (sorted_ < elements_.size()) {
            sortStretch();
        } else if (width_ < elements_.size()) {
            merge();
        }
        return isSorted();
    }

    /// What is being sorted; in order once advance() has been true.
    const std::vector<Element>& elements() const { return elements_; }
    std::vector<Element> take() { return std::move(elements_); }
    /// Gives the memory of the merging back, which takes a while where much was sorted.
    void dropSpare() { std::vector<Element>().swap(merged_); }

  private:
    static constexpr std::size_t stretch = 8192;
    static constexpr std::size_t mergedAtOnce = 32768;

    bool isSorted() const { return sorted_ == elements_.size() && width_ >= elements_.size(); }

    void sortStretch() {
        const std::size_t end = std::min(elements_.size(), sorted_ + stretch);
        std::sort(elements_.begin() + static_cast<std::ptrdiff_t>(sorted_),
                  elements_.begin() + static_cast<std::ptrdiff_t>(end), less_);
        sorted_ = end;
    }

    /// Goes on with the merging of two neighbouring stretches into `merged_`.
    void merge() {
        const std::size_t count = elements_.size();
        merged_.reserve(count);
        for (std::size_t done = 0; done < mergedAtOnce; ++done) {
            const std::size_t middle = std::min(count, start_ + width_);
            const std::size_t end = std::min(count, start_ + 2 * width_);
            if (!std::exchange(isMerging_, true)) {
                left_ = start_;
                right_ = middle;
            }
            const bool takesLeft =
                left_ < middle && (right_ >= end || !less_(elements_[right_], elements_[left_]));
            merged_.push_back(std::move(elements_[takesLeft ? left_++ : right_++]));
            if (left_ == middle && right_ == end) {
                start_ = end;
                isMerging_ = false;
            }
            if (start_ == count) {
                elements_.swap(merged_);
                merged_.clear();
                start_ = 0;
                width_ *= 2;
                return;
            }
        }
    }

    Less less_;
    std::vector<Element> elements_;
    std::vector<Element> merged_;
    std::size_t sorted_ = 0;       ///< elements that lie in sorted stretches
    std::size_t width_ = stretch;  ///< of the stretches that are being merged
    std::size_t start_ = 0;        ///< where the pair of stretches begins
    bool isMerging_ = false;       ///< the pair has been begun
    std::size_t left_ = 0;         ///< next elements of the two
    std::size_t right_ = 0;
};

}  // namespace search
