#pragma once

#include <string>

#include "platform/shell_services.h"

namespace platform::windows {

/// The running program's folder and the system's browser.
class WindowsShell : public ShellServices {
  public:
    std::string programFolder() override;
    char pathSeparator() const override { return '\\'; }
    /// Only addresses of the web ("http://", "https://") are handed on, so that no program or file
    /// is ever started by them.
    void openWebPage(const std::string& address) override;
};

}  // namespace platform::windows
