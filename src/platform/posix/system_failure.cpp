#include "platform/posix/system_failure.h"

#include <cstring>

#include "base/failure.h"

namespace platform::posix {

std::string systemReason(int errorNumber) {
    const char* const words = ::strerrordesc_np(errorNumber);
    return words != nullptr ? words : "error " + std::to_string(errorNumber);
}

void failWith(const std::string& subject, int errorNumber) {
    throw base::FileFailure(subject + ": " + systemReason(errorNumber));
}

}  // namespace platform::posix
