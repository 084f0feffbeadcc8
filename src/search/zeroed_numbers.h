#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

namespace search {

/// A list of numbers, all 0 at first. The system hands a large one out as it is used, so that
/// making it does not take the time of filling it.
class ZeroedNumbers {
  public:
    ZeroedNumbers() = default;
    explicit ZeroedNumbers(std::size_t count)
        : size_(count),
          numbers_(static_cast<std::uint32_t*>(
              std::calloc(std::max<std::size_t>(1, count), sizeof(std::uint32_t)))) {
        if (numbers_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    /// The slots of a hash table with open addressing: twice as many as elements at least, and a
    /// power of two.
    static ZeroedNumbers slotsFor(std::size_t elements) {
        std::size_t count = 64;
        while (count < 2 * elements) {
            count *= 2;
        }
        return ZeroedNumbers(count);
    }

    bool isMade() const { return numbers_ != nullptr; }
    std::uint32_t& operator[](std::size_t place) { return numbers_.get()[place]; }
    std::uint32_t operator[](std::size_t place) const { return numbers_.get()[place]; }
    /// Of slots: the bits of a hash that name one.
    std::size_t mask() const { return size_ - 1; }

  private:
    struct Free {
        void operator()(std::uint32_t* numbers) const { std::free(numbers); }
    };

    std::size_t size_ = 0;
    std::unique_ptr<std::uint32_t, Free> numbers_;
};

}  // namespace search
