#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "search/index.h"
#include "search/query.h"
#include "search/rank.h"

namespace search {

/// Brings rows into an order, in steps that each take about a millisecond: keys, then short sorted
/// stretches, then stretches merged two by two. Rows that are equal in every key stay in the order
/// of the table.
class Ordering {
  public:
    /// An empty `sort` orders by rank, then folders before files, then the newest first. `rows`
    /// are ascending. `index` must outlive this; a sort by copies needs a finished CopyTable.
    Ordering(const Index& index, std::vector<Row> rows, std::vector<SortKey> sort, Rank rank);

    /// One step; true when all is in order.
    bool advance();
    /// The rows in their order, once that is so.
    std::vector<Row> take() const;

  private:
    struct Element {
        std::uint64_t key = 0;  ///< decides, as far as it tells
        Row row = 0;
    };

    void makeKeys();
    void sortStretch();
    void merge();
    bool isBefore(const Element& left, const Element& right) const;
    bool isBeforeByKeys(const Element& left, const Element& right) const;
    std::uint64_t keyOf(Row row) const;
    std::uint64_t rankKey(Row row) const;
    std::uint64_t columnKey(Row row, const SortKey& sort) const;
    int compare(Row left, Row right, const SortKey& sort) const;
    void orderTexts(ResultColumn column);

    const Index& index_;
    std::vector<SortKey> sort_;
    Rank rank_;
    std::vector<Row> rows_;
    std::vector<Element> elements_;
    std::vector<Element> merged_;
    std::size_t sorted_ = 0;  ///< elements that lie in sorted stretches
    std::size_t width_;       ///< of the stretches that are being merged
    std::size_t start_ = 0;   ///< where the pair of stretches begins
    bool isMerging_ = false;  ///< the pair has been begun
    std::size_t left_ = 0;    ///< next elements of the two
    std::size_t right_ = 0;
    /// Places of the texts of a column that many rows share, among each other.
    std::vector<std::vector<std::uint32_t>> textOrders_;
};

}  // namespace search
