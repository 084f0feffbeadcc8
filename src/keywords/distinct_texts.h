#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>

namespace keywords {

/// The different ones among the texts that were appended, in the order in which each came first,
/// and how many were appended altogether. Texts are equal when their bytes are. An append costs the
/// same however many texts are known, and a text that is known takes no memory.
class DistinctTexts {
  public:
    DistinctTexts() = default;
    DistinctTexts(const DistinctTexts&) = delete;
    DistinctTexts& operator=(const DistinctTexts&) = delete;

    void append(std::string_view text);

    /// Number of calls of append().
    std::int64_t appended() const { return appended_; }
    const std::deque<std::string>& texts() const { return texts_; }

  private:
    // A deque never moves its elements when it grows at its end, so the views stay good.
    std::deque<std::string> texts_;
    std::unordered_set<std::string_view> known_;
    std::int64_t appended_ = 0;
};

}  // namespace keywords
