#pragma once

#include "shell/application.h"

namespace support {

/// The application around the tests of one executable.
shell::Application& testApplication();

}  // namespace support
