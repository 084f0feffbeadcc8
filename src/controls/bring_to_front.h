#pragma once

#include <QWidget>

namespace controls {

/// Shows a window in front of the others and gives it the keys.
inline void bringToFront(QWidget& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace controls
