#include "controls/progress_line.h"

#include <QEvent>
#include <QResizeEvent>

#include "controls/status_line.h"

namespace controls {

ProgressLine::ProgressLine(const char* labelName, QWidget* parent)
    : QWidget(parent), label_(new StatusLine({}, this)) {
    label_->setObjectName(labelName);
    label_->setMargin(0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressLine::setText(const QString& text) {
    label_->setText(text);
    endRun();
}

void ProgressLine::setRunningText(const QString& text) {
    label_->setText(text);
    if (sincePainted_.isValid() && sincePainted_.elapsed() < millisecondsBetweenPaintings) {
        return;
    }
    sincePainted_.start();
    label_->setUpdatesEnabled(true);
    // At once: not every window system would get to it before the next text.
    label_->repaint();
    label_->setUpdatesEnabled(false);
}

void ProgressLine::endRun() {
    sincePainted_.invalidate();
    label_->setUpdatesEnabled(true);
}

QSize ProgressLine::sizeHint() const { return {0, label_->sizeHint().height()}; }

QSize ProgressLine::minimumSizeHint() const { return sizeHint(); }

/// The label's size is fixed, so that a new text lays nothing out.
void ProgressLine::resizeEvent(QResizeEvent* event) { label_->setFixedSize(event->size()); }

void ProgressLine::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
    }
}

}  // namespace controls
