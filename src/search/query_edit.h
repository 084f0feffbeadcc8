#pragma once

#include <string>
#include <string_view>

namespace search {

/// The query line that finds what `line` finds and `term` too: the term at its end. Where the line
/// has alternatives they are put in parentheses first. A term that stands there already is not
/// added again, and one that is excluded there is not any more.
std::string lineWith(std::string_view line, std::string_view term);
/// The query line that finds what `line` finds but not `term`.
std::string lineWithout(std::string_view line, std::string_view term);
/// The query line with "sort:" in it as the only one; an empty `column` takes it out.
std::string lineSortedBy(std::string_view line, std::string_view column);

}  // namespace search
