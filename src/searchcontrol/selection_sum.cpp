#include "searchcontrol/selection_sum.h"

#include <algorithm>

#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr std::size_t rowsOfStep = 4096;

}  // namespace

bool SelectionSum::run(const search::Budget& budget) {
    while (next_ < selected_.size()) {
        const std::size_t end = std::min(selected_.size(), next_ + rowsOfStep);
        for (; next_ < end; ++next_) {
            const search::Row row = selected_.rows[next_];
            if (!selected_.index->isFolder(row)) {
                bytes_ += selected_.index->leastSize(row);
                isExact_ = isExact_ && selected_.index->isSizeKnown(row);
            }
        }
        if (budget.isSpent()) {
            return next_ == selected_.size();
        }
    }
    return true;
}

QString SelectionSum::text() const {
    return selected_.isEmpty() ? QString()
                               : countText(static_cast<std::int64_t>(selected_.size())) +
                                     " selected, " + sizeText(bytes_, isExact_);
}

}  // namespace searchcontrol
