#include "shell/common_dialog.h"

#include <exception>

namespace shell {

void CommonDialog::showHelp() {
    if (helpCommand_ != OpenHelpFile) {
        return;
    }
    try {
        viewer_.showHelpFile(helpFile_);
    } catch (const std::exception&) {
        if (cancelError_) {
            throw;
        }
    }
}

}  // namespace shell
