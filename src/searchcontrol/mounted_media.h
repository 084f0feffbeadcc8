#pragma once

#include <string>

#include "search/index.h"

namespace platform {
class Drives;
}

namespace searchcontrol {

/// Where an entry lies on this machine now: its full path in the machine's own form; "" where its
/// medium is in no drive, or is there without the entry. A drive is taken for the medium when its
/// label is the medium's and the entry is found on it.
std::string nativePlaceOf(const search::Index& index, search::Row row, platform::Drives& drives);

/// "7: Holiday 2001, label CD_HOL01": what to look for on the shelf.
std::string mediumToFetch(const base::MediaInfo& medium);

}  // namespace searchcontrol
