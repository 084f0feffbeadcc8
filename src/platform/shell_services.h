#pragma once

#include <string>

namespace platform {

/// Small services of the machine's shell.
class ShellServices {
  public:
    virtual ~ShellServices() = default;
    /// The folder of the running executable, without a final separator.
    virtual std::string programFolder() = 0;
    /// The character that separates folders in this machine's own paths.
    virtual char pathSeparator() const = 0;
    /// Opens `address` in the system's browser; whether that worked is not told.
    virtual void openWebPage(const std::string& address) = 0;
};

}  // namespace platform
