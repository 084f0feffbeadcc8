#include "cli/earlier_rows.h"

#include <algorithm>

#include "cli/interruption.h"
#include "cli/row_filter.h"
#include "jet/connection.h"

namespace cli {
namespace {

void openRows(jet::Recordset& rows, jet::Connection& connection, std::int32_t mediaId,
              jet::LockType lock) {
    rows.open("main", connection, jet::CursorType::Dynamic, lock, jet::CommandType::Table);
    rows.setFilter(mediumFilter(mediaId));
}

}  // namespace

void EarlierRows::collect(jet::Connection& connection, std::int32_t mediaId) {
    jet::Recordset rows;
    openRows(rows, connection, mediaId, jet::LockType::ReadOnly);
    for (; !rows.endOfFile(); rows.moveNext()) {
        note(rows.place());
    }
}

void EarlierRows::remove(jet::Connection& connection, std::int32_t mediaId,
                         const Interruption& interruption) {
    jet::Recordset rows;
    openRows(rows, connection, mediaId, jet::LockType::Optimistic);
    for (; count_ > 0 && !rows.endOfFile(); rows.moveNext()) {
        throwIfRequested(interruption);
        if (holds(rows.place())) {
            rows.deleteCurrent();
            --count_;
        }
    }
}

/// A recordset delivers rows in the order of their places.
void EarlierRows::note(jet::RowPlace place) {
    if (pages_.empty() || pages_.back().page != place.page) {
        pages_.push_back({place.page, {}});
    }
    pages_.back().slots.set(place.slot);
    ++count_;
}

bool EarlierRows::holds(jet::RowPlace place) const {
    const auto page = std::ranges::lower_bound(pages_, place.page, {}, &PageRows::page);
    return page != pages_.end() && page->page == place.page && page->slots.test(place.slot);
}

}  // namespace cli
