#pragma once

#include <QWidget>

namespace platform {
class ShellServices;
}

namespace shell {

/// Says what the program is and who made it. A click on the link opens the maker's page in the
/// system's browser; whether that worked is not asked.
class FormAbout : public QWidget {
  public:
    /// `shell` must outlive the window.
    explicit FormAbout(platform::ShellServices& shell);
};

}  // namespace shell
