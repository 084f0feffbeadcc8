#pragma once

#include <cstdint>
#include <functional>
#include <string>

class QWidget;

namespace base {
class EventBoundary;
class MessageBox;
}  // namespace base
namespace jet {
class Engine;
}
namespace platform {
class Platform;
}

// What crosses the border between the program and the search component, which lies in a library of
// its own beside the program and is loaded at run time. Whoever changes anything here, or anything
// that is reachable through it, raises searchInterface.

namespace search {

/// An entry of the archive, named as the archive's tree and record list name it.
struct FoundEntry {
    std::int32_t mediaId = 0;
    std::string path;  ///< of the folder that holds it, as stored: "7:\photos"
    std::string name;
    bool isFolder = false;
    friend bool operator==(const FoundEntry&, const FoundEntry&) = default;
};

/// The program, as the search component sees it. Copied; what it refers to outlives the component.
struct SearchHost {
    base::EventBoundary& boundary;
    base::MessageBox& messages;
    /// The program's one engine, so that windows which write and the search see the same pages.
    jet::Engine& engine;
    platform::Platform& platform;
    /// Opens the entry's medium and folder in the main window's tree and selects the entry.
    std::function<void(const FoundEntry&)> showEntry;
    /// Opens a file or a folder, by its full path on this machine, as its desktop does.
    std::function<void(const std::string&)> openFile;
};

constexpr int searchInterface = 1;

}  // namespace search

// The library's functions. The first is asked before the second is called.
extern "C" {
/// The searchInterface that the library was built with.
int verdolinSearchInterface();
/// A new component without a parent, which the caller owns; never null.
QWidget* verdolinCreateSearchControl(const search::SearchHost* host);
}
