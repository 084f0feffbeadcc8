#pragma once

#include <string>
#include <string_view>

#include "search/local_time.h"
#include "search/query.h"

namespace search {

/// Reads a query line, finished or half-typed: never a failure. What cannot be understood (yet) is
/// left out or taken as plain text, and a notice says so. `now` is what "today" and "last90days"
/// count from. The language is described in docs/searching.md.
Query parseQuery(std::string_view line, LocalTime now);

/// `text` as a query line that finds just this text: in quotation marks where it needs them.
std::string quotedForQuery(std::string_view text);

}  // namespace search
