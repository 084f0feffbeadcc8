#include "platform/drives.h"

namespace platform {

std::string DriveListEntry::text() const { return std::string(1, letter) + ": [" + label + "]"; }

}  // namespace platform
