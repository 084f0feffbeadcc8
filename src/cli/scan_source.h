#pragma once

#include <string>
#include <string_view>

#include "platform/drives.h"

namespace platform {
class Platform;
}

namespace cli {

/// What is scanned: a drive of the machine, or a folder that is made one for this run. A walk calls
/// it by its letter; messages call it as the user did.
class ScanSource {
  public:
    /// `what` is a letter and a colon ("d:", "D:\") or a folder in the machine's own form. A drive
    /// or folder that is not there is a base::FileFailure.
    ScanSource(platform::Platform& platform, std::string what);

    /// "d:": letter and colon, lower case.
    std::string drive() const;

    /// A base::FileFailure when the drive cannot be read (any more), or when its letter has gone to
    /// another one.
    void requireReadable() const;

    /// "d:\dir\name" of a walk as a message shows it.
    std::string shownPath(std::string_view walkPath) const;

  private:
    platform::Platform& platform_;
    std::string what_;
    char letter_ = 0;
    std::string root_;  ///< where the drive's root lay at first
};

}  // namespace cli
