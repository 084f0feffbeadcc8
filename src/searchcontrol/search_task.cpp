#include "searchcontrol/search_task.h"

#include <algorithm>
#include <span>
#include <utility>

namespace searchcontrol {

namespace {

/// How often the hits found so far are shown, in milliseconds.
constexpr int restOfShowing = 100;
/// Hits that are shown before all are found: as many as nobody looks through meanwhile, and as are
/// copied at once.
constexpr std::size_t mostEarlyHits = 20000;

}  // namespace

SearchTask::SearchTask(base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), slices_(boundary, this) {}

void SearchTask::start(std::shared_ptr<const search::Index> index, search::Query query) {
    const std::unique_ptr<search::SearchRun> earlier = std::move(run_);
    const bool mayNarrow =
        earlier != nullptr && earlier->isFinished() && earlier->sharedIndex() == index;
    run_ = mayNarrow
               ? std::make_unique<search::SearchRun>(std::move(index), std::move(query), *earlier)
               : std::make_unique<search::SearchRun>(std::move(index), std::move(query));
    time_.start();
    hasShown_ = false;
    slices_.startNow([this](const search::Budget& budget) { return searchOn(budget); });
}

void SearchTask::stop() {
    slices_.stop();
    run_.reset();
}

std::shared_ptr<const std::vector<search::Row>> SearchTask::hits() const {
    if (run_->isFinished()) {
        return run_->sharedHits();
    }
    const std::span<const search::Row> found = run_->hits();
    const auto early = found.first(std::min(found.size(), mostEarlyHits));
    return std::make_shared<const std::vector<search::Row>>(early.begin(), early.end());
}

bool SearchTask::searchOn(const search::Budget& budget) {
    const bool isDone = run_->run(budget);
    milliseconds_ = time_.elapsed();
    if (isDone) {
        emit finished();
        return true;
    }
    if (!run_->hits().empty() && (!hasShown_ || sinceShown_.elapsed() >= restOfShowing)) {
        hasShown_ = true;
        sinceShown_.start();
        emit foundMore();
    }
    return false;
}

}  // namespace searchcontrol
