#include "keywords/form_info_label.h"

#include <QHelpEvent>
#include <QStylePainter>
#include <QTextDocument>
#include <QToolTip>

namespace keywords {

namespace {

const QString lineEnd = QStringLiteral("\r\n");

}  // namespace

InfoLabel::InfoLabel(int lines, QWidget* parent) : QLabel(parent), lines_(lines) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize InfoLabel::sizeHint() const { return minimumSizeHint(); }

QSize InfoLabel::minimumSizeHint() const {
    const QMargins room = contentsMargins();
    return {0, lines_ * fontMetrics().lineSpacing() + room.top() + room.bottom()};
}

QStringList InfoLabel::shownLines() const {
    QStringList lines = text().split(lineEnd);
    for (QString& line : lines) {
        line = fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width());
    }
    return lines;
}

bool InfoLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const bool whole = shownLines() == text().split(lineEnd);
    QToolTip::showText(help->globalPos(),
                       whole ? QString() : Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal),
                       this);
    return true;
}

void InfoLabel::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QRect place = contentsRect();
    place.setHeight(fontMetrics().lineSpacing());
    for (const QString& line : shownLines()) {
        painter.drawItemText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                             palette(), isEnabled(), line, foregroundRole());
        place.translate(0, place.height());
    }
}

}  // namespace keywords
