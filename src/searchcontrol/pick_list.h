#pragma once

#include <QString>
#include <span>

#include "search/index.h"

namespace searchcontrol {

/// Files of a pick list at most; the list says how many are left out.
constexpr std::size_t mostPicked = 5000;

/// The media to fetch, one after the other, and below each the files wanted from it, folder by
/// folder, with a box to tick: a page to be printed.
QString pickListHtml(const search::Index& index, std::span<const search::Row> rows);

}  // namespace searchcontrol
