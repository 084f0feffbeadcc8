#pragma once

#include <QPointer>
#include <memory>
#include <vector>

namespace shell {

/// The place of a controls::PassingWindow: the window that is there at present, if any. One that
/// has gone may still live for a while, until its handlers have ended, and then deletes itself;
/// what is left at the end goes with this.
template <typename Window>
class WindowPlace {
  public:
    WindowPlace() = default;
    WindowPlace(const WindowPlace&) = delete;
    WindowPlace& operator=(const WindowPlace&) = delete;
    ~WindowPlace() {
        for (const QPointer<Window>& window : gone_) {
            delete window.data();
        }
    }

    Window* get() const { return window_.get(); }
    void put(std::unique_ptr<Window> window) { window_ = std::move(window); }
    /// To be called when the window has been unloaded.
    void letGo() {
        std::erase_if(gone_, [](const QPointer<Window>& window) { return window.isNull(); });
        gone_.emplace_back(window_.release());
    }

  private:
    std::unique_ptr<Window> window_;
    std::vector<QPointer<Window>> gone_;
};

}  // namespace shell
