#pragma once

#include <QString>
#include <cstdint>
#include <utility>

#include "search/budget.h"
#include "searchcontrol/chosen_entries.h"

namespace searchcontrol {

/// Adds up what is selected, in steps: a million entries lie anywhere in memory.
class SelectionSum {
  public:
    explicit SelectionSum(ChosenEntries selected) : selected_(std::move(selected)) {}

    /// Adds on until all is added or the budget is spent; true when all is.
    bool run(const search::Budget& budget);
    /// "12 selected, 3.4 MB"; "" where nothing is.
    QString text() const;

  private:
    ChosenEntries selected_;
    std::size_t next_ = 0;
    std::int64_t bytes_ = 0;
    bool isExact_ = true;
};

}  // namespace searchcontrol
