#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/program_state.h"

// What stands where in the settings file: shared by the reader and the writer.

namespace settings {

constexpr std::string_view archivesSection = "recentarchives";
constexpr std::string_view currentKey = "current";
/// Keys of the recent archives 1 to 5, at the places of their numbers; place 0 is never used.
constexpr std::array<std::string_view, base::ProgramState::recentCount + 1> recentKeys = {
    "", "recent1", "recent2", "recent3", "recent4", "recent5"};

/// What a missing key reads as. It cannot be told from a file named so.
constexpr std::string_view missingValue = "none";
/// Size of the buffer that receives a value, its terminator included: longer paths are cut to 254
/// characters.
constexpr std::size_t valueBufferSize = 255;

}  // namespace settings
