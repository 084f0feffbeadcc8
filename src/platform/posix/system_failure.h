#pragma once

#include <string>

namespace platform::posix {

/// The system's words for an error number, in English whatever the locale.
std::string systemReason(int errorNumber);

/// Throws base::FileFailure "subject: reason".
[[noreturn]] void failWith(const std::string& subject, int errorNumber);

}  // namespace platform::posix
