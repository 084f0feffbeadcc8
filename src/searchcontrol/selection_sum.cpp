#include "searchcontrol/selection_sum.h"

#include <algorithm>

#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr int rowsOfStep = 4096;

}  // namespace

SelectionSum::SelectionSum(std::shared_ptr<const search::Index> index,
                           std::shared_ptr<const std::vector<search::Row>> hits,
                           std::vector<std::pair<int, int>> stretches)
    : index_(std::move(index)), hits_(std::move(hits)), stretches_(std::move(stretches)) {}

void SelectionSum::add(search::Row row) {
    ++count_;
    if (!index_->isFolder(row)) {
        bytes_ += index_->leastSize(row);
        isExact_ = isExact_ && index_->isSizeKnown(row);
    }
}

bool SelectionSum::run(const search::Budget& budget) {
    int rest = rowsOfStep;
    while (stretch_ < stretches_.size()) {
        const auto [first, last] = stretches_[stretch_];
        next_ = std::max(next_, first);
        const int end = std::min(last + 1, next_ + rest);
        rest -= end - next_;
        for (; next_ < end; ++next_) {
            add((*hits_)[static_cast<std::size_t>(next_)]);
        }
        stretch_ += next_ > last ? 1 : 0;
        if (rest == 0) {
            if (budget.isSpent()) {
                return stretch_ == stretches_.size();
            }
            rest = rowsOfStep;
        }
    }
    return true;
}

QString SelectionSum::text() const {
    return count_ == 0 ? QString() : countText(count_) + " selected, " + sizeText(bytes_, isExact_);
}

}  // namespace searchcontrol
