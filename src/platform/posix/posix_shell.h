#pragma once

#include <string>

#include "platform/shell_services.h"

namespace platform::posix {

/// The running program's folder and the desktop's browser.
class PosixShell : public ShellServices {
  public:
    std::string programFolder() override;
    char pathSeparator() const override { return '/'; }
    /// Only addresses of the web ("http://", "https://") are handed on, to xdg-open, which runs on
    /// its own and outlives the program.
    void openWebPage(const std::string& address) override;
};

}  // namespace platform::posix
