#pragma once

#include <QTabBar>
#include <functional>

namespace open {

/// Tabs that report a click also when it is on the tab in front. Choosing a tab with the keys is a
/// click; turning the mouse wheel is none.
class TabStrip : public QTabBar {
  public:
    explicit TabStrip(QWidget* parent);

    /// What a click on tab number `tab`, from 0, does. It runs when the mouse button has been
    /// released, as it may open another window.
    void onClick(std::function<void(int tab)> action) { action_ = std::move(action); }

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void click();

    std::function<void(int)> action_;
    bool pressed_ = false;
};

}  // namespace open
