#include "archive/exchange_order.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace archive {

ExchangeOrder::ExchangeOrder(const std::vector<std::int16_t>& levels)
    : elements_(levels.size()), ranks_(levels.size()) {
    std::iota(elements_.begin(), elements_.end(), 0U);

    std::vector<std::int16_t> different = levels;
    std::sort(different.begin(), different.end());
    different.erase(std::unique(different.begin(), different.end()), different.end());

    first_.assign(different.size(), levels.size());
    for (std::size_t position = levels.size(); position-- > 0;) {
        const auto found = std::lower_bound(different.begin(), different.end(), levels[position]);
        ranks_[position] = static_cast<Rank>(found - different.begin());
        first_[ranks_[position]] = position;
    }
}

void ExchangeOrder::nextPass() {
    while (first_[smallest_] == ranks_.size()) {
        ++smallest_;
    }
    const Rank held = ranks_[pass_];
    collectChain(held);
    exchangeAlongChain();
    advanceFirst(held);
    for (const Rank rank : chain_) {
        advanceFirst(rank);
    }
    ++pass_;
}

void ExchangeOrder::finish() {
    while (!finished()) {
        nextPass();
    }
}

void ExchangeOrder::collectChain(Rank held) {
    chain_.clear();
    std::size_t nearest = ranks_.size();
    for (Rank rank = smallest_; rank < held; ++rank) {
        if (first_[rank] < nearest) {
            nearest = first_[rank];
            chain_.push_back(rank);
        }
    }
}

/// Nearest place first, as the sort meets them.
void ExchangeOrder::exchangeAlongChain() {
    for (auto rank = chain_.rbegin(); rank != chain_.rend(); ++rank) {
        const std::size_t place = first_[*rank];
        std::swap(elements_[pass_], elements_[place]);
        std::swap(ranks_[pass_], ranks_[place]);
    }
}

void ExchangeOrder::advanceFirst(Rank rank) {
    std::size_t position = first_[rank] + 1;
    while (position < ranks_.size() && ranks_[position] != rank) {
        ++position;
    }
    first_[rank] = position;
}

}  // namespace archive
