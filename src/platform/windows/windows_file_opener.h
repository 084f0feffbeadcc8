#pragma once

#include <string>

#include "base/random_access_file.h"

namespace platform::windows {

/// Opens files of a disk. Folders, pipes and devices are refused. While a file is open, others may
/// read and write it, as its locks allow, but not delete or rename it.
class WindowsFileOpener : public base::FileOpener {
  public:
    Opened open(const std::string& path, Mode mode) override;
    void pause(int milliseconds) override;
};

}  // namespace platform::windows
