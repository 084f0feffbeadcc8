#pragma once

#include <cstddef>
#include <string_view>

namespace search {

/// Looks for one sequence of bytes in many texts. Two bytes of it, the rarest in file names and the
/// one farthest from it, are compared at sixteen places at a time; the rest only where both are
/// right.
class ByteSearch {
  public:
    static constexpr std::size_t npos = std::string_view::npos;

    /// `wanted` must outlive this.
    explicit ByteSearch(std::string_view wanted);

    /// The first place at or after `start` where it stands; npos where there is none. An empty
    /// sequence stands everywhere.
    std::size_t find(std::string_view text, std::size_t start = 0) const;
    bool isIn(std::string_view text) const { return find(text) != npos; }
    std::size_t size() const { return wanted_.size(); }

  private:
    std::size_t findPlainly(std::string_view text, std::size_t start) const;

    std::string_view wanted_;
    std::size_t first_ = 0;   ///< offset of the rarest byte
    std::size_t second_ = 0;  ///< offset of the other one
};

}  // namespace search
