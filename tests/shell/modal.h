#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <functional>

namespace support {

/// Lets `user` act on the modal window of that kind as soon as it is there. To be called before
/// what shows the window.
template <typename Window>
void whenModal(std::function<void(Window&)> user, int attempts = 500) {
    QTimer::singleShot(1, [user = std::move(user), attempts] {
        auto* window = dynamic_cast<Window*>(QApplication::activeModalWidget());
        if (window != nullptr && window->isVisible()) {
            user(*window);
        } else if (attempts > 0) {
            whenModal<Window>(user, attempts - 1);
        } else {
            ADD_FAILURE() << "no modal window came";
        }
    });
}

}  // namespace support
