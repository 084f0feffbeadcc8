#include "searchcontrol/index_releaser.h"

#include <QPointer>
#include <utility>

namespace searchcontrol {

IndexReleaser::IndexReleaser(base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), slices_(boundary, this) {}

std::shared_ptr<const search::Index> IndexReleaser::shared(std::shared_ptr<search::Index> index) {
    const search::Index* const shown = index.get();
    return {shown, [index = std::move(index),
                    self = QPointer<IndexReleaser>(this)](const search::Index*) mutable {
                if (self != nullptr) {
                    self->release(std::move(index));
                }
            }};
}

void IndexReleaser::release(std::shared_ptr<search::Index> index) {
    released_.emplace_back(std::move(index));
    slices_.start([this](const search::Budget& budget) { return releaseOn(budget); });
}

bool IndexReleaser::releaseOn(const search::Budget& budget) {
    while (!released_.empty() && !budget.isSpent()) {
        if (released_.front().advance()) {
            released_.pop_front();
        }
    }
    return released_.empty();
}

}  // namespace searchcontrol
