#include "search/form_search.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace search {

namespace {

constexpr QSize firstSize(1080, 700);
constexpr QSize smallestSize(480, 320);

}  // namespace

FormSearch::FormSearch(std::function<MadeControl()> make)
    : make_(std::move(make)), labelObstacle_(new QLabel(this)) {
    setObjectName("form_search");
    setWindowTitle("Search");
    setMinimumSize(smallestSize);
    resize(firstSize.boundedTo(screen()->availableSize()));
    labelObstacle_->setObjectName("labelObstacle");
    labelObstacle_->setTextFormat(Qt::PlainText);
    labelObstacle_->setAlignment(Qt::AlignCenter);
    labelObstacle_->setWordWrap(true);
    labelObstacle_->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                            Qt::TextSelectableByKeyboard);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(labelObstacle_);
    makeControl();
}

void FormSearch::makeControl() {
    const MadeControl made = make_();
    labelObstacle_->setText(QString::fromStdString(
        "Searching is not possible: " + made.obstacle +
        ".\n\nThe rest of the program works without it. Searching comes back when the whole "
        "program folder is installed again."));
    labelObstacle_->setVisible(made.control == nullptr);
    control_ = made.control;
    if (control_ != nullptr) {
        layout()->addWidget(control_);
        setFocusProxy(control_);
    }
}

void FormSearch::showWindow() {
    if (control_ == nullptr) {
        makeControl();
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (control_ != nullptr) {
        control_->setFocus(Qt::OtherFocusReason);
    }
}

void FormSearch::setArchivePath(const std::string& path) {
    if (control_ != nullptr) {
        control_->setProperty("archivePath", QString::fromStdString(path));
    }
}

void FormSearch::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

}  // namespace search
