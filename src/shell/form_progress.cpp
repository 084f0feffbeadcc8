#include "shell/form_progress.h"

#include <QLabel>
#include <QProgressBar>
#include <QStyleOptionProgressBar>
#include <QTimerEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "controls/progress_line.h"

namespace shell {

namespace {

constexpr int smallestWidth = 420;
constexpr int millisecondsToTheLast = 400;

/// Has its text made and measured only where it is painted: a bar does so for every number
/// otherwise, and that takes longer than reading a record.
class Bar : public QProgressBar {
  public:
    using QProgressBar::QProgressBar;
    QString text() const override { return updatesEnabled() ? QProgressBar::text() : QString(); }

  protected:
    void initStyleOption(QStyleOptionProgressBar* option) const override {
        QProgressBar::initStyleOption(option);
        option->textVisible = option->textVisible && updatesEnabled();
    }
};

/// The bar's numbers are narrower than the count of an archive's records may be.
int barNumber(std::int64_t number) {
    return static_cast<int>(std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

}  // namespace

FormProgress::FormProgress() {
    setObjectName("form_progress");
    setWindowTitle("Loading . . .");
    auto* label1 = new QLabel("Please wait while the archive is read.", this);
    label1->setObjectName("Label1");
    progressInit_ = new Bar(this);
    progressInit_->setObjectName("progressInit");
    progressInit_->setAccessibleName("Progress");
    line_ = new controls::ProgressLine("displayProgress", this);

    auto* layout = new QVBoxLayout(this);
    layout->addStrut(smallestWidth);
    layout->addWidget(label1);
    layout->addWidget(progressInit_);
    layout->addWidget(line_);
    layout->addStretch();
}

void FormProgress::setRange(std::int64_t minimum, std::int64_t maximum) {
    progressInit_->setRange(barNumber(minimum), barNumber(maximum));
    progressInit_->setValue(barNumber(minimum));
}

void FormProgress::setPosition(std::int64_t position) {
    if (isVisible()) {
        progressInit_->setUpdatesEnabled(false);
        paintLastSoon();
    }
    progressInit_->setValue(barNumber(position));
    paintBar();
}

void FormProgress::setText(const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (isVisible()) {
        line_->setRunningText(shown);
        paintLastSoon();
    } else {
        line_->setText(shown);
    }
}

void FormProgress::showProgress() {
    show();
    raise();
}

void FormProgress::paintBar() {
    if (!isVisible() ||
        (sinceBarPainted_.isValid() &&
         !sinceBarPainted_.hasExpired(controls::ProgressLine::millisecondsBetweenPaintings))) {
        return;
    }
    sinceBarPainted_.start();
    progressInit_->setUpdatesEnabled(true);
    progressInit_->repaint();
    progressInit_->setUpdatesEnabled(false);
}

void FormProgress::paintLastSoon() {
    if (!endOfRun_.isActive()) {
        endOfRun_.start(millisecondsToTheLast, this);
    }
}

void FormProgress::endRun() {
    endOfRun_.stop();
    line_->endRun();
    sinceBarPainted_.invalidate();
    progressInit_->setUpdatesEnabled(true);
}

void FormProgress::timerEvent(QTimerEvent* event) {
    if (event->timerId() == endOfRun_.timerId()) {
        endRun();
    }
}

void FormProgress::hideEvent(QHideEvent* event) {
    endRun();
    QWidget::hideEvent(event);
}

}  // namespace shell
