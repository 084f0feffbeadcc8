#pragma once

#include <string>

#include "platform/windows/windows_api.h"

namespace platform::windows {

/// The system's words for an error number: in English where it has them, else in its own language.
std::string systemReason(DWORD errorNumber);

/// Throws base::FileFailure "subject: reason".
[[noreturn]] void failWith(const std::string& subject, DWORD errorNumber);

}  // namespace platform::windows
