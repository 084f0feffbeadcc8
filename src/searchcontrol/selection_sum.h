#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "search/budget.h"
#include "search/index.h"

namespace searchcontrol {

/// Adds up what is selected, in steps: millions of entries lie anywhere in memory.
class SelectionSum {
  public:
    /// Of `hits` the selected stretches, each with the places of its first and last one.
    SelectionSum(std::shared_ptr<const search::Index> index,
                 std::shared_ptr<const std::vector<search::Row>> hits,
                 std::vector<std::pair<int, int>> stretches);

    /// Adds on until all is added or the budget is spent; true when all is.
    bool run(const search::Budget& budget);
    /// "12 selected, 3.4 MB"; "" where nothing is.
    QString text() const;

  private:
    void add(search::Row row);

    std::shared_ptr<const search::Index> index_;
    std::shared_ptr<const std::vector<search::Row>> hits_;
    std::vector<std::pair<int, int>> stretches_;
    std::size_t stretch_ = 0;
    int next_ = 0;  ///< place of the next hit, where it is in the stretch already
    std::int64_t count_ = 0;
    std::int64_t bytes_ = 0;
    bool isExact_ = true;
};

}  // namespace searchcontrol
