#pragma once

#include <functional>
#include <string>

namespace base {
struct ProgramState;
}

// Module search: the search command of the main window's menu. Changes nothing of the program's
// state.

namespace search {

/// What the command needs of the search window.
class SearchFrame {
  public:
    virtual ~SearchFrame() = default;
    /// Shows the window, which waits for nothing.
    virtual void showWindow() = 0;
    /// Hands the component the archive to search in; an empty path is handed on as well.
    virtual void setArchivePath(const std::string& path) = 0;
};

/// Shows the window, which `window` makes where there is none yet, and hands it the archive that is
/// current at this moment.
void showSearch(const base::ProgramState& state, const std::function<SearchFrame&()>& window);

}  // namespace search
