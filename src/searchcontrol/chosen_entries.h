#pragma once

#include <memory>
#include <vector>

#include "search/index.h"

namespace searchcontrol {

/// Entries that somebody has chosen, with the index whose rows they are: it stays while they are in
/// use, also when the archive is read anew meanwhile.
struct ChosenEntries {
    std::shared_ptr<const search::Index> index;
    std::vector<search::Row> rows;

    bool isEmpty() const { return rows.empty(); }
    std::size_t size() const { return rows.size(); }
};

}  // namespace searchcontrol
