#pragma once

#include <string>
#include <vector>

#include "platform/mount_rules.h"

namespace platform::posix {

/// What is mounted at this moment, in the order of mounting. base::FileFailure when the system does
/// not tell.
std::vector<Mount> readMountTable();

/// What the device of a mount says of itself. What cannot be found out stays empty.
DeviceFacts deviceFactsOf(const Mount& mount);

}  // namespace platform::posix
