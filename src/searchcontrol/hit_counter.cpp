#include "searchcontrol/hit_counter.h"

#include <utility>

namespace searchcontrol {

HitCounter::HitCounter(base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), slices_(boundary, this) {}

void HitCounter::start(std::shared_ptr<const search::Index> index,
                       std::span<const search::Row> hits) {
    using search::Grouping;
    stop();
    index_ = std::move(index);
    counts_ = std::make_unique<search::Breakdown>(
        *index_, hits,
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
}

}  // namespace searchcontrol
