#include "open/form_tab_strip.h"

#include <QMouseEvent>
#include <QWheelEvent>

namespace open {

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    connect(this, &QTabBar::currentChanged, this, [this] {
        if (!pressed_) {
            click();
        }
    });
}

void TabStrip::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton && tabAt(event->position().toPoint()) >= 0;
    QTabBar::mousePressEvent(event);
}

void TabStrip::mouseReleaseEvent(QMouseEvent* event) {
    QTabBar::mouseReleaseEvent(event);
    if (pressed_ && event->button() == Qt::LeftButton) {
        pressed_ = false;
        click();
    }
}

void TabStrip::wheelEvent(QWheelEvent* event) { event->ignore(); }

void TabStrip::click() {
    if (action_) {
        action_(currentIndex());
    }
}

}  // namespace open
