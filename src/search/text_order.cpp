#include "search/text_order.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace search {
namespace {

constexpr std::size_t textsAtOnce = 1024;

}  // namespace

TextOrder::TextOrder(std::size_t count, TextOf foldedTextOf)
    : count_(count), textOf_(std::move(foldedTextOf)), sort_(ByText{&texts_}) {
    texts_.reserve(count);
}

bool TextOrder::advance() {
    switch (phase_) {
        case Phase::Folding:
            fold();
            break;
        case Phase::Sorting:
            if (sort_.advance()) {
                places_.resize(count_);
                phase_ = Phase::Numbering;
            }
            break;
        case Phase::Numbering:
            number();
            break;
        case Phase::Finished:
            break;
    }
    return phase_ == Phase::Finished;
}

void TextOrder::fold() {
    const std::size_t end = std::min(count_, texts_.size() + textsAtOnce);
    while (texts_.size() < end) {
        texts_.push_back(textOf_(static_cast<std::uint32_t>(texts_.size())));
    }
    if (texts_.size() == count_) {
        std::vector<std::uint32_t> order(count_);
        std::iota(order.begin(), order.end(), 0u);
        sort_.start(std::move(order));
        phase_ = Phase::Sorting;
    }
}

void TextOrder::number() {
    const std::vector<std::uint32_t>& order = sort_.elements();
    const std::size_t end = std::min(count_, next_ + textsAtOnce * 16);
    for (; next_ < end; ++next_) {
        const bool isNew = next_ > 0 && texts_[order[next_]] != texts_[order[next_ - 1]];
        place_ += isNew ? 1 : 0;
        places_[order[next_]] = place_;
    }
    if (next_ == count_) {
        phase_ = Phase::Finished;
    }
}

}  // namespace search
