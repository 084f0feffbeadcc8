#pragma once

#include <memory>

#include "search/index.h"
#include "search/query.h"
#include "search/slice.h"

namespace search {

/// A condition ready to be put to the rows of one index. It remembers what it has found out about
/// folders, types and keywords, so each search has its own. The index must outlive it.
class Predicate {
  public:
    virtual ~Predicate() = default;
    /// Clears the rows of the slice that do not fulfil the condition.
    virtual void filter(Slice& slice) = 0;
    /// About how long one row takes, compared with a number's 1. Parts of an "and" are asked in
    /// the order of their costs.
    virtual int cost() const = 0;
};

std::unique_ptr<Predicate> makePredicate(const Index& index, const Node& node);

/// True when the condition asks about copies, so that the CopyTable must be finished first.
bool needsCopies(const Node& node);

}  // namespace search
