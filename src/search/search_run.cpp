#include "search/search_run.h"

#include <algorithm>
#include <utility>

#include "search/copies.h"
#include "search/narrowing.h"
#include "search/ordering.h"
#include "search/predicate.h"
#include "search/rank.h"
#include "search/slice.h"

namespace search {
namespace {

bool sortsByCopies(const std::vector<SortKey>& sort) {
    return std::ranges::any_of(
        sort, [](const SortKey& key) { return key.column == ResultColumn::Copies; });
}

}  // namespace

SearchRun::SearchRun(std::shared_ptr<const Index> index, Query query)
    : index_(std::move(index)), query_(std::move(query)), sort_(query_.sort) {
    begin();
}

SearchRun::SearchRun(std::shared_ptr<const Index> index, Query query, const SearchRun& earlier)
    : index_(std::move(index)), query_(std::move(query)), sort_(query_.sort) {
    if (earlier.index_ == index_ && earlier.isFinished() &&
        narrows(query_.condition, earlier.query_.condition)) {
        candidates_ = earlier.all_;
        isWithinEarlier_ = true;
    }
    begin();
}

SearchRun::~SearchRun() = default;

void SearchRun::begin() {
    const bool needsTable = needsCopies(query_.condition) || sortsByCopies(sort_);
    phase_ = needsTable ? Phase::Copies : Phase::Matching;
    all_ = std::make_shared<std::vector<Row>>();
    // Memory that is not written to costs nothing, and a list that grows must be copied.
    all_->reserve(expected());
}

bool SearchRun::run(const Budget& budget) {
    while (!advance()) {
        if (budget.isSpent()) {
            return isFinished();
        }
    }
    return true;
}

bool SearchRun::advance() {
    switch (phase_) {
        case Phase::Copies:
            prepareCopies();
            break;
        case Phase::Matching:
            match();
            break;
        case Phase::Ordering:
            order();
            break;
        case Phase::Finished:
            break;
    }
    return isFinished();
}

void SearchRun::prepareCopies() {
    if (index_->copies().advance()) {
        // The sort of a finished search may be what wants the table.
        phase_ = done() == expected() && predicate_ ? Phase::Ordering : Phase::Matching;
        if (phase_ == Phase::Ordering) {
            beginOrdering();
        }
    }
}

std::size_t SearchRun::expected() const {
    return isWithinEarlier_ ? candidates_->size() : index_->size();
}

std::size_t SearchRun::done() const { return next_; }

void SearchRun::match() {
    if (!predicate_) {
        predicate_ = makePredicate(*index_, query_.condition);
    }
    if (next_ < expected()) {
        if (isWithinEarlier_) {
            matchEarlier();
        } else {
            const Row first = static_cast<Row>(next_);
            Slice slice(first);
            slice.setFront(std::min<Row>(Slice::rows, index_->size() - first));
            next_ += std::min<std::size_t>(Slice::rows, index_->size() - first);
            matchSlice(slice);
        }
    }
    if (next_ == expected()) {
        found_ = all_->size();
        beginOrdering();
    }
}

void SearchRun::matchEarlier() {
    // As many slices as hold about as many candidates as a full one.
    const std::vector<Row>& candidates = *candidates_;
    for (std::size_t end = next_ + Slice::rows; next_ < candidates.size() && next_ < end;) {
        Slice slice(candidates[next_] / Slice::rows * Slice::rows);
        while (next_ < candidates.size() && candidates[next_] - slice.first < Slice::rows) {
            slice.set(candidates[next_++]);
        }
        matchSlice(slice);
    }
}

void SearchRun::matchSlice(Slice& slice) {
    predicate_->filter(slice);
    slice.forEach([this](Row row) { all_->push_back(row); });
    found_ = all_->size();
}

std::span<const Row> SearchRun::hits() const { return isFinished() ? *hits_ : *all_; }

std::shared_ptr<const std::vector<Row>> SearchRun::sharedHits() const {
    return isFinished() ? hits_ : nullptr;
}

std::shared_ptr<const std::vector<Row>> SearchRun::ascendingHits() const {
    if (!isFinished() || hits_->size() == all_->size()) {
        return isFinished() ? all_ : nullptr;
    }
    auto rows = std::make_shared<std::vector<Row>>(*hits_);
    std::ranges::sort(*rows);
    return rows;
}

void SearchRun::sortBy(std::vector<SortKey> sort) {
    sort_ = std::move(sort);
    if (!isFinished()) {
        return;
    }
    if (sortsByCopies(sort_) && !index_->copies().isFinished()) {
        phase_ = Phase::Copies;
    } else {
        beginOrdering();
    }
}

void SearchRun::beginOrdering() {
    ordering_ = std::make_unique<Ordering>(*index_, all_, sort_, Rank(query_.condition));
    phase_ = Phase::Ordering;
}

void SearchRun::order() {
    if (!ordering_->advance()) {
        return;
    }
    std::vector<Row> hits = ordering_->take();
    if (query_.limit && hits.size() > *query_.limit) {
        hits.resize(*query_.limit);
    }
    hits_ = std::make_shared<const std::vector<Row>>(std::move(hits));
    ordering_.reset();
    phase_ = Phase::Finished;
}

std::vector<Row> findRows(const std::shared_ptr<const Index>& index, const Query& query) {
    SearchRun run(index, query);
    run.run(Budget::unlimited());
    return {run.hits().begin(), run.hits().end()};
}

}  // namespace search
