#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "search/text_block.h"

namespace search {

/// Texts that are each kept once and named by a number, counted from 0 in the order of their first
/// coming. The text of a number is valid until the next intern().
class TextPool {
  public:
    using Id = std::uint32_t;

    /// The number of `text`, a new one where it has not been seen before. base::OverflowFailure
    /// when all texts together pass 4 GiB.
    Id intern(std::string_view text);
    Id size() const { return static_cast<Id>(starts_.size() - 1); }
    std::string_view operator[](Id id) const {
        return block_.view().substr(starts_[id], starts_[id + 1] - starts_[id]);
    }
    /// Gives back the memory that only intern() needs; after it nothing is interned any more.
    void seal();
    /// Bytes of all texts, and of everything together.
    std::size_t textSize() const { return block_.size(); }
    std::size_t memory() const;

  private:
    void widen();

    TextBlock block_;
    std::vector<std::uint32_t> starts_{0};
    std::vector<Id> slots_;              ///< open addressing; the number plus one, 0 where free
    std::vector<std::uint32_t> hashes_;  ///< by number, so that slots are filled anew in no time
};

}  // namespace search
