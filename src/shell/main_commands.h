#pragma once

#include <functional>
#include <string>

namespace shell {

/// What the main window's menus and its tree set off outside of it. Whoever builds the program
/// connects them; an item whose command is not connected does nothing.
struct MainCommands {
    std::function<void()> openArchive;
    std::function<void()> exitProgram;
    std::function<void()> showKeywords;  ///< returns when the keywords window has been closed
    std::function<void()> exploreArchive;
    std::function<void()> scanForArchive;
    std::function<void()> saveIntoArchive;
    std::function<void()> search;
    std::function<void()> showAbout;
    std::function<void(const std::string& key)> clickNode;  ///< a click in the archive's tree

    // At start-up:
    std::function<void()> createSearchWindow;
    std::function<void()> createLoadingWindow;
};

}  // namespace shell
