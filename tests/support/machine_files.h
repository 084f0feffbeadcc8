#pragma once

#include <memory>

#include "base/random_access_file.h"

namespace support {

/// The opener of this machine's own files, without the rest of its platform.
std::unique_ptr<base::FileOpener> machineFiles();

}  // namespace support
