#pragma once

#include <cstdint>
#include <string>

namespace cli {

/// The condition that lets the rows of one medium through, for a recordset on table `main`. The
/// number stands in quotation marks, as the engine wants it.
inline std::string mediumFilter(std::int32_t mediaId) {
    return "mediaid='" + std::to_string(mediaId) + "'";
}

}  // namespace cli
