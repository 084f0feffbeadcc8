#include "controls/plain_frame.h"

#include <QLayout>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

#include "controls/tip_text.h"

namespace controls {

namespace {

constexpr int marginBesideCaption = 12;

QString withoutMnemonics(const QString& text) { return QString(text).replace("&", "&&"); }

}  // namespace

void PlainFrame::setCaption(const QString& caption) {
    caption_ = caption;
    setTitle(withoutMnemonics(caption));
    setAccessibleName(caption);
    setToolTip(tipText(caption));
}

QSize PlainFrame::minimumSizeHint() const {
    const QSize whole = QGroupBox::minimumSizeHint();
    return layout() == nullptr ? whole
                               : QSize(layout()->totalMinimumSize().width(), whole.height());
}

void PlainFrame::paintEvent(QPaintEvent*) {
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    const int room = width() - 2 * marginBesideCaption;
    option.text = withoutMnemonics(option.fontMetrics.elidedText(caption_, Qt::ElideMiddle, room));
    QStylePainter(this).drawComplexControl(QStyle::CC_GroupBox, option);
}

}  // namespace controls
