#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace jet {

/// A set of page numbers, one bit a page.
class PageSet {
  public:
    bool contains(std::uint32_t page) const {
        return page / 64 < words_.size() && (words_[page / 64] >> (page % 64) & 1) != 0;
    }
    /// False when it was there already.
    bool insert(std::uint32_t page) {
        if (page / 64 >= words_.size()) {
            words_.resize(page / 64 + 1, 0);
        }
        const std::uint64_t bit = std::uint64_t{1} << (page % 64);
        const bool added = (words_[page / 64] & bit) == 0;
        words_[page / 64] |= bit;
        size_ += added ? 1 : 0;
        return added;
    }
    bool erase(std::uint32_t page) {
        if (!contains(page)) {
            return false;
        }
        words_[page / 64] &= ~(std::uint64_t{1} << (page % 64));
        --size_;
        return true;
    }
    std::uint32_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    static constexpr std::uint32_t none = 0xFFFFFFFF;
    /// The smallest member that is `from` or larger; `none` when there is none.
    std::uint32_t next(std::uint32_t from) const {
        std::size_t word = from / 64;
        if (word >= words_.size()) {
            return none;
        }
        std::uint64_t bits = words_[word] & (~std::uint64_t{0} << (from % 64));
        while (bits == 0) {
            if (++word == words_.size()) {
                return none;
            }
            bits = words_[word];
        }
        return static_cast<std::uint32_t>(word * 64 +
                                          static_cast<std::uint32_t>(std::countr_zero(bits)));
    }
    std::uint32_t first() const { return next(0); }
    /// The largest member; `none` when the set is empty.
    std::uint32_t last() const {
        for (std::size_t word = words_.size(); word-- > 0;) {
            if (words_[word] != 0) {
                return static_cast<std::uint32_t>(
                    word * 64 + 63 - static_cast<std::uint32_t>(std::countl_zero(words_[word])));
            }
        }
        return none;
    }

  private:
    std::vector<std::uint64_t> words_;
    std::uint32_t size_ = 0;
};

}  // namespace jet
