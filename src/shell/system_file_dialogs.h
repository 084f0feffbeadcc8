#pragma once

#include <QStringList>
#include <string_view>

#include "open/file_dialogs.h"

class QFileDialog;

namespace shell {

/// "Archives|*.mdb|All Files|*.*" as the window system takes it: one text for each pair. "*.*"
/// stands for all names, also for those without a full stop.
QStringList nameFilters(std::string_view filter);

/// The platform's own file dialogs, modal to the window that is active. The dialog's object name is
/// "comDialog".
class SystemFileDialogs : public open::FileDialogs {
  public:
    std::optional<std::string> showOpen(const open::FileDialogRequest& request) override;
    std::optional<std::string> showSave(const open::FileDialogRequest& request) override;

  private:
    static std::optional<std::string> show(QFileDialog& dialog,
                                           const open::FileDialogRequest& request);
};

}  // namespace shell
