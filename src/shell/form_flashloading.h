#pragma once

#include <QWidget>

namespace platform {
class ShellServices;
}

namespace shell {

class MovieOpener;

/// A movie that runs while an archive's records are read. Whoever reads them shows and hides the
/// window; it does nothing itself, and closing it only hides it.
class FormFlashLoading : public QWidget {
  public:
    /// `movies` must outlive the window.
    FormFlashLoading(platform::ShellServices& shell, MovieOpener& movies);
};

}  // namespace shell
