#pragma once

#include <exception>

#include "base/message_box.h"

namespace shell {

/// What the user is told of a failure that no operation handled: what happened, what was kept, and
/// what to do now.
base::Message failureReport(const std::exception& failure);
/// The same for something thrown that is no exception of the standard family.
base::Message unknownFailureReport();

}  // namespace shell
