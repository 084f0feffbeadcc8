#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/scan_entry.h"

namespace bench {

/// Entries as a scan of a grown home folder gives them: folders of some twenty files, names of 5 to
/// 40 characters (one in twenty in another script), paths of two to eight levels, sizes spread over
/// many powers of two, dates of twenty years. The same `seed` gives the same entries everywhere.
std::vector<base::ScanEntry> realisticEntries(std::size_t count, std::int32_t mediaId,
                                              std::uint64_t seed);

}  // namespace bench
