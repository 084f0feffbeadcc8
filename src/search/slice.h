#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "search/index.h"

namespace search {

/// A few thousand neighbouring rows and, as one bit each, which of them are still in question.
struct Slice {
    static constexpr Row rows = 4096;

    explicit Slice(Row firstRow) : first(firstRow) {}

    void set(Row row) { words[(row - first) / 64] |= bit(row); }
    void clear(Row row) { words[(row - first) / 64] &= ~bit(row); }
    bool holds(Row row) const { return (words[(row - first) / 64] & bit(row)) != 0; }
    void setFront(Row count) {
        for (Row row = first; row < first + count; ++row) {
            set(row);
        }
    }
    std::size_t count() const {
        std::size_t result = 0;
        for (const std::uint64_t word : words) {
            result += static_cast<std::size_t>(std::popcount(word));
        }
        return result;
    }
    bool isEmpty() const {
        std::uint64_t all = 0;
        for (const std::uint64_t word : words) {
            all |= word;
        }
        return all == 0;
    }
    /// Keeps the rows that `other`, of the same first row, does not hold.
    void remove(const Slice& other) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            words[i] &= ~other.words[i];
        }
    }
    void add(const Slice& other) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            words[i] |= other.words[i];
        }
    }
    /// Calls `use` for each row that is set, ascending; `use` may clear that row.
    template <typename Use>
    void forEach(Use use) const {
        for (std::size_t i = 0; i < words.size(); ++i) {
            for (std::uint64_t word = words[i]; word != 0; word &= word - 1) {
                use(first + static_cast<Row>(64 * i) + static_cast<Row>(std::countr_zero(word)));
            }
        }
    }
    /// Keeps the rows for which `test` is true.
    template <typename Test>
    void keep(Test test) {
        forEach([&](Row row) {
            if (!test(row)) {
                clear(row);
            }
        });
    }

    Row first;  ///< a multiple of `rows`
    std::array<std::uint64_t, rows / 64> words{};

  private:
    std::uint64_t bit(Row row) const { return std::uint64_t{1} << ((row - first) % 64); }
};

}  // namespace search
