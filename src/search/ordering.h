#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "search/index.h"
#include "search/query.h"
#include "search/rank.h"
#include "search/step_sort.h"
#include "search/text_order.h"

namespace search {

/// Brings rows into an order, in steps that each take about a millisecond: the order of texts that
/// many rows share, keys, a merge sort, the rows. Rows that are equal in every key stay in the
/// order of the table.
class Ordering {
  public:
    using Rows = std::shared_ptr<const std::vector<Row>>;

    /// An empty `sort` orders by rank, then folders before files, then the newest first. `rows`
    /// are ascending. `index` must outlive this; a sort by copies needs a finished CopyTable.
    Ordering(const Index& index, Rows rows, std::vector<SortKey> sort, Rank rank);
    Ordering(const Ordering&) = delete;
    Ordering& operator=(const Ordering&) = delete;

    /// One step; true when all is in order.
    bool advance();
    /// The rows in their order, once that is so.
    std::vector<Row> take() { return std::move(ordered_); }

  private:
    struct Element {
        std::uint64_t key = 0;  ///< decides, as far as it tells
        Row row = 0;
    };
    struct Before {
        const Ordering* ordering;
        bool operator()(const Element& left, const Element& right) const {
            return ordering->isBefore(left, right);
        }
    };
    enum class Phase { Texts, Keys, Sorting, Tidying, Rows, Finished };

    void orderTexts();
    void makeKeys();
    void collectRows();
    std::unique_ptr<TextOrder> textOrderOf(ResultColumn column) const;
    bool isBefore(const Element& left, const Element& right) const;
    bool isBeforeByKeys(const Element& left, const Element& right) const;
    std::uint64_t keyOf(Row row) const;
    std::uint64_t rankKey(Row row) const;
    std::uint64_t columnKey(Row row, const SortKey& sort) const;
    int compare(Row left, Row right, const SortKey& sort) const;

    const Index& index_;
    std::vector<SortKey> sort_;
    Rank rank_;
    Rows rows_;
    Phase phase_ = Phase::Texts;
    std::size_t nextText_ = 0;  ///< position in sort_
    std::vector<Element> elements_;
    StepSort<Element, Before> sorting_;
    std::vector<Row> ordered_;
    /// By column, of those whose texts many rows share.
    std::vector<std::unique_ptr<TextOrder>> textOrders_;
};

}  // namespace search
