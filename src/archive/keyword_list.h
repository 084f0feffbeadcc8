#pragma once

#include <string>
#include <string_view>

namespace archive {

// A keywords text may hold several keywords, with commas between: "holiday,beach". Case does not
// tell keywords apart.

/// The text with the keyword in it: as it was where that is there already, else with "," and the
/// keyword behind it.
std::string withKeyword(std::string_view keywords, std::string_view keyword);
/// The text without the keyword; as it was where that is not there.
std::string withoutKeyword(std::string_view keywords, std::string_view keyword);

}  // namespace archive
