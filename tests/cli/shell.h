#pragma once

#include <string>

#include "tests/support/temporary_folder.h"

namespace support {

/// What a shell command gave.
struct ShellResult {
    int code = -1;
    std::string out;
    std::string err;
};

/// Runs commands of the shell in a folder, where $VDLN is the companion that was built.
class Shell {
  public:
    explicit Shell(TemporaryFolder& folder) : folder_(folder) {}

    ShellResult run(const std::string& command);

  private:
    TemporaryFolder& folder_;
};

}  // namespace support
