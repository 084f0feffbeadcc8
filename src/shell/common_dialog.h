#pragma once

#include <QObject>
#include <string>

namespace shell {

/// Shows a help file. What goes wrong is a base::Failure.
class HelpViewer {
  public:
    virtual ~HelpViewer() = default;
    virtual void showHelpFile(const std::string& path) = 0;
};

/// The main window's dialog control, which it uses for help only.
class CommonDialog : public QObject {
  public:
    enum HelpCommand { NoCommand = 0, OpenHelpFile = 9 };

    /// `viewer` must outlive this.
    CommonDialog(HelpViewer& viewer, QObject* parent) : QObject(parent), viewer_(viewer) {}

    /// Whether showHelp() throws what goes wrong, or keeps it to itself.
    void setCancelError(bool raises) { cancelError_ = raises; }
    void setHelpCommand(HelpCommand command) { helpCommand_ = command; }
    void setHelpFile(std::string path) { helpFile_ = std::move(path); }
    void showHelp();

  private:
    HelpViewer& viewer_;
    bool cancelError_ = false;
    HelpCommand helpCommand_ = NoCommand;
    std::string helpFile_;
};

}  // namespace shell
