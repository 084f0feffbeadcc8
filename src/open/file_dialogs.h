#pragma once

#include <optional>
#include <string>
#include <string_view>

// The file dialogs as the logic sees them. Nothing here knows a window system.

namespace open {

/// How a file dialog is set up.
struct FileDialogRequest {
    /// What may be chosen: texts and patterns in turn, separated by "|".
    std::string_view filter;
    std::string initialFolder;
    /// Completes a typed name that has no extension; begins with a full stop.
    std::string_view defaultExtension;
};

/// Asks the user for a file. The desktop brings the platform's own dialogs, a test a list of
/// answers.
class FileDialogs {
  public:
    virtual ~FileDialogs() = default;
    /// The full path of a file to open; none when the user cancelled. Pending window events run
    /// meanwhile. A dialog that cannot be shown is a base::FileFailure.
    virtual std::optional<std::string> showOpen(const FileDialogRequest& request) = 0;
    /// The full path of a file to write, which may exist already; nothing is asked about that.
    virtual std::optional<std::string> showSave(const FileDialogRequest& request) = 0;
};

}  // namespace open
