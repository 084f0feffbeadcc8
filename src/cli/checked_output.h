#pragma once

#include <ostream>
#include <string_view>

namespace cli {

/// Writes results. A stream that refuses them (a full disk, a pipe that nobody reads any more) is a
/// base::FileFailure "standard output: reason".
void writeChecked(std::ostream& stream, std::string_view text);
void flushChecked(std::ostream& stream);

}  // namespace cli
