#include "searchcontrol/hit_counter.h"

#include <utility>

namespace searchcontrol {

HitCounter::HitCounter(base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), slices_(boundary, this) {}

void HitCounter::start(std::shared_ptr<const search::Index> index,
                       std::shared_ptr<const std::vector<search::Row>> hits) {
    using search::Grouping;
    stop();
    index_ = std::move(index);
    hits_ = std::move(hits);
    counts_ = std::make_unique<search::Breakdown>(
        *index_, *hits_,
        std::vector{Grouping::Medium, Grouping::Extension, Grouping::Year, Grouping::SizeClass,
                    Grouping::Keywords});
    slices_.start([this](const search::Budget& budget) {
        if (!counts_->run(budget)) {
            return false;
        }
        emit counted();
        return true;
    });
}

void HitCounter::stop() {
    slices_.stop();
    counts_.reset();
    hits_.reset();
}

}  // namespace searchcontrol
