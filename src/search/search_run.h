#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "search/budget.h"
#include "search/index.h"
#include "search/query.h"

namespace search {

class Ordering;
class Predicate;
struct Slice;

/// One search: an index, a query, and the hits found so far. It goes on as often as run() is
/// called, a few thousand entries at a time, and may be dropped at any moment. It is used by one
/// thread at a time; any number of runs may share the index.
class SearchRun {
  public:
    SearchRun(std::shared_ptr<const Index> index, Query query);
    /// The same, but where the query can only find what the finished run `earlier` has found (one
    /// more letter, one more word), only that is looked through. `earlier` is not kept.
    SearchRun(std::shared_ptr<const Index> index, Query query, const SearchRun& earlier);
    SearchRun(const SearchRun&) = delete;
    SearchRun& operator=(const SearchRun&) = delete;
    ~SearchRun();

    const Index& index() const { return *index_; }
    const std::shared_ptr<const Index>& sharedIndex() const { return index_; }
    const Query& query() const { return query_; }

    /// Searches on until everything is found and in order, or the budget is spent; true when all is
    /// done.
    bool run(const Budget& budget);
    bool isFinished() const { return phase_ == Phase::Finished; }

    /// The hits: in the order of the table while the search goes on, in the order that the query
    /// asks for (by rank where it asks for none), and cut to its limit, once it is finished. Valid
    /// until the next run() or sortBy().
    std::span<const Row> hits() const;
    /// The hits of a finished run, to be kept beyond it; null before.
    std::shared_ptr<const std::vector<Row>> sharedHits() const;
    /// The same in the order of the table.
    std::shared_ptr<const std::vector<Row>> ascendingHits() const;
    /// How many there are without the limit.
    std::size_t found() const { return found_; }
    /// Entries looked at so far, of the number to look at.
    std::size_t done() const;
    std::size_t expected() const;
    /// True when only the hits of an earlier run are looked through.
    bool isWithinEarlier() const { return isWithinEarlier_; }

    /// Puts the hits of a finished run into another order, in steps as run(); an empty one is the
    /// order by rank. The query's own limit is kept to: what was cut off is sorted in.
    void sortBy(std::vector<SortKey> sort);

  private:
    enum class Phase { Copies, Matching, Ordering, Finished };

    void begin();
    bool advance();
    void prepareCopies();
    void match();
    void matchEarlier();
    void matchSlice(Slice& slice);
    void beginOrdering();
    void order();

    std::shared_ptr<const Index> index_;
    Query query_;
    std::vector<SortKey> sort_;
    std::unique_ptr<Predicate> predicate_;
    std::unique_ptr<Ordering> ordering_;
    Phase phase_ = Phase::Matching;
    /// Lists are shared with later runs and whoever shows them: copying millions of rows would take
    /// longer than a step may.
    std::shared_ptr<const std::vector<Row>> candidates_;  ///< hits of the earlier run, ascending
    bool isWithinEarlier_ = false;
    std::size_t next_ = 0;                   ///< row, or position in candidates_, to look at next
    std::shared_ptr<std::vector<Row>> all_;  ///< every hit, ascending
    std::shared_ptr<const std::vector<Row>> hits_;  ///< what hits() shows of a finished run
    std::size_t found_ = 0;
};

/// The whole of a search at one go.
std::vector<Row> findRows(const std::shared_ptr<const Index>& index, const Query& query);

}  // namespace search
