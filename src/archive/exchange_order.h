#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace archive {

/// The order in which an exchange sort by level leaves its elements. That sort goes through the
/// list from the front and exchanges the element in hand with every later one of a smaller level:
///
///     for i from 1 to last, for j from i to last: if level(i) > level(j), exchange i and j
///
/// It is not stable, so its order among equal levels is one of its own, which archives are shown
/// in.
///
/// One pass of the outer loop carries the element at i along a chain: to the first position of a
/// smaller level, whose element goes on to the next position of a smaller level still, and so on;
/// the last of the chain, the first of the smallest level, lands at i. The chain therefore consists
/// of first positions: those of the levels below level(i) that lie before the first position of
/// every smaller level. An element that a pass moves, other than the one that lands at i, moves
/// towards the end and takes the place of one of a smaller level, so the first position of a level
/// never comes back towards the front, and following it through all passes costs one walk along the
/// list for each level. The whole order takes time of the number of elements times the number of
/// different levels.
///
/// The passes are separate calls so that the caller may do something between them.
class ExchangeOrder {
  public:
    explicit ExchangeOrder(const std::vector<std::int16_t>& levels);

    /// True after as many passes as there are elements.
    bool finished() const { return pass_ == elements_.size(); }
    /// One pass of the outer loop. Must not be called when finished.
    void nextPass();
    /// All passes that are left.
    void finish();

    /// For each position of the sorted list, counted from 0, where its element stood in the list
    /// given.
    const std::vector<std::uint32_t>& elements() const { return elements_; }

  private:
    using Rank = std::uint16_t;

    void collectChain(Rank held);
    void exchangeAlongChain();
    void advanceFirst(Rank rank);

    std::vector<std::uint32_t> elements_;  // by position: number of the element there, from 0
    std::vector<Rank> ranks_;         // by position: rank of its level among the different ones
    std::vector<std::size_t> first_;  // by rank: first position not before pass_, or past the end
    std::vector<Rank> chain_;         // of this pass: its ranks, from the farthest place on
    std::size_t pass_ = 0;
    Rank smallest_ = 0;  // smallest rank not before pass_
};

}  // namespace archive
