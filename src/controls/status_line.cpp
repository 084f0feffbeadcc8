#include "controls/status_line.h"

#include <QEvent>
#include <QHelpEvent>
#include <QStyle>
#include <QStylePainter>
#include <QToolTip>

#include "controls/tip_text.h"

namespace controls {

StatusLine::StatusLine(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setMargin(style()->pixelMetric(QStyle::PM_FocusFrameHMargin));
}

QString StatusLine::shownText() const {
    return fontMetrics().elidedText(text(), elideMode_, contentsRect().width() - 2 * margin());
}

bool StatusLine::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const bool whole = shownText() == text();
    QToolTip::showText(help->globalPos(), whole ? QString() : tipText(text()), this);
    return true;
}

void StatusLine::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const QRect place = contentsRect().adjusted(margin(), 0, -margin(), 0);
    painter.drawItemText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(),
                         isEnabled(), shownText(), foregroundRole());
}

}  // namespace controls
