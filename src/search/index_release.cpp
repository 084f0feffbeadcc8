#include "search/index_release.h"

#include <array>

#include "search/copies.h"

namespace search {
namespace {

template <typename Column>
void drop(Column& column) {
    Column().swap(column);
}

}  // namespace

bool IndexRelease::advance() {
    static constexpr std::array<void (*)(Index&), 14> steps{
        [](Index& index) { index.copies_.reset(); },
        [](Index& index) { index.names_ = {}; },
        [](Index& index) { index.foldedNames_ = {}; },
        [](Index& index) { drop(index.nameStarts_); },
        [](Index& index) { drop(index.foldedStarts_); },
        [](Index& index) { drop(index.pathIds_); },
        [](Index& index) { drop(index.sizes_); },
        [](Index& index) { drop(index.modified_); },
        [](Index& index) { drop(index.created_); },
        [](Index& index) { drop(index.typeIds_); },
        [](Index& index) { drop(index.extensionIds_); },
        [](Index& index) { drop(index.annotationIds_); },
        [](Index& index) { drop(index.mediumPositions_); },
        [](Index& index) { drop(index.pages_); }};
    if (next_ < steps.size()) {
        steps[next_++](*index_);
        return false;
    }
    index_.reset();
    return true;
}

}  // namespace search
