#pragma once

#include <vector>

#include "search/index.h"
#include "search/query.h"

namespace search {

/// Which media of the index a query means by these names, by their positions in Index::media(): a
/// number is an id; a text is a whole name or label or, where no medium has that, a part of one.
/// A number that is no medium's id is taken as a text.
std::vector<bool> mediaNamed(const Index& index, const std::vector<MediumName>& names);

}  // namespace search
