#pragma once

#include "search/query.h"

namespace search {

/// True only when it is certain that, in every archive, whatever fulfils `later` fulfils `earlier`
/// too. A search for `later` may then look through the hits of `earlier` alone. False means "not
/// known".
bool narrows(const Node& later, const Node& earlier);

}  // namespace search
