#pragma once

#include <cstdint>
#include <string>

#include "base/failure.h"

namespace jet {

/// Throws the failure for a page whose bytes contradict the format.
[[noreturn]] inline void failDamaged(std::uint32_t page, const std::string& cause) {
    throw base::EngineFailure(base::EngineFault::Damaged, "the database is damaged: page " +
                                                              std::to_string(page) + ": " + cause);
}

}  // namespace jet
