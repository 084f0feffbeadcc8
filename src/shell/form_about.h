#pragma once

#include <QWidget>

namespace base {
class EventBoundary;
}
namespace platform {
class ShellServices;
}

namespace shell {

/// Says what the program is and who made it. A click on the link opens the maker's page in the
/// system's browser; whether that worked is not asked.
class FormAbout : public QWidget {
  public:
    /// Both must outlive the window.
    FormAbout(platform::ShellServices& shell, base::EventBoundary& boundary);
};

}  // namespace shell
