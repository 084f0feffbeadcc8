#pragma once

#include <functional>
#include <string>

namespace open {

/// What the choice of an archive sets off outside this folder. Whoever builds the program connects
/// the commands; one that is not connected does nothing.
struct OpenCommands {
    std::function<void()> showMainWindow;
    std::function<void(const std::string& caption)> setMainCaption;
    /// Collects the keywords and notes of the current archive; its failures pass through.
    std::function<void()> initKeywords;
    /// Hides the window in which that collection shows how far it is.
    std::function<void()> hideProgress;
};

}  // namespace open
