#include "shell/form_progress.h"

#include <QLabel>
#include <QProgressBar>
#include <QTimerEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

namespace shell {

namespace {

constexpr int smallestWidth = 420;
constexpr int pictureMilliseconds = 33;

/// The bar's numbers are narrower than the count of an archive's records may be.
int barNumber(std::int64_t number) {
    return static_cast<int>(std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

}  // namespace

FormProgress::FormProgress() {
    setObjectName("form_progress");
    setWindowTitle("Loading . . .");
    setMinimumWidth(smallestWidth);
    auto* label1 = new QLabel("Please wait while the archive is read.", this);
    label1->setObjectName("Label1");
    progressInit_ = new QProgressBar(this);
    progressInit_->setObjectName("progressInit");
    progressInit_->setAccessibleName("Progress");
    displayProgress_ = new QLabel(this);
    displayProgress_->setObjectName("displayProgress");
    displayProgress_->setTextFormat(Qt::PlainText);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label1);
    layout->addWidget(progressInit_);
    layout->addWidget(displayProgress_);
    layout->addStretch();
}

void FormProgress::setRange(std::int64_t minimum, std::int64_t maximum) {
    progressInit_->setRange(barNumber(minimum), barNumber(maximum));
    position_ = minimum;
    drawNow();
}

void FormProgress::setPosition(std::int64_t position) {
    position_ = position;
    drawSoon();
}

void FormProgress::setText(const std::string& text) {
    text_ = text;
    drawSoon();
}

void FormProgress::showProgress() {
    show();
    raise();
}

void FormProgress::drawSoon() {
    if (!isVisible() || sinceDrawn_.hasExpired(pictureMilliseconds)) {
        drawNow();
    } else if (!nextPicture_.isActive()) {
        nextPicture_.start(pictureMilliseconds, this);
    }
}

void FormProgress::drawNow() {
    nextPicture_.stop();
    progressInit_->setValue(barNumber(position_));
    displayProgress_->setText(QString::fromStdString(text_));
    sinceDrawn_.start();
}

void FormProgress::timerEvent(QTimerEvent* event) {
    if (event->timerId() == nextPicture_.timerId()) {
        drawNow();
    }
}

void FormProgress::hideEvent(QHideEvent* event) {
    drawNow();
    QWidget::hideEvent(event);
}

}  // namespace shell
