#pragma once

#include <string>

#include "base/random_access_file.h"

namespace platform::posix {

/// Opens regular files, links followed. Folders, pipes and devices are refused without being
/// opened, so that nothing waits for the other end of a pipe. A new file's name is on the disk once
/// sync() returned.
class PosixFileOpener : public base::FileOpener {
  public:
    Opened open(const std::string& path, Mode mode) override;
    void pause(int milliseconds) override;
};

}  // namespace platform::posix
