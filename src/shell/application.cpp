#include "shell/application.h"

#include <QIcon>
#include <QKeyEvent>

#include "shell/failure_boundary.h"
#include "shell/pictures.h"

namespace shell {

namespace {

bool isRepeatedEnter(const QEvent& event) {
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName("Verdolin");
    setDesktopFileName("verdolin");
    setWindowIcon(applicationIcon());
    // Which window ends the program is said in one place, by the desktop; the splash window, which
    // stays hidden, must not count.
    setQuitOnLastWindowClosed(false);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    if (isRepeatedEnter(*event)) {
        return true;
    }
    if (boundary_ == nullptr) {
        return QApplication::notify(receiver, event);
    }
    bool consumed = false;
    boundary_->run([&] { consumed = QApplication::notify(receiver, event); });
    return consumed;
}

}  // namespace shell
