#pragma once

#include <QStyledItemDelegate>

namespace controls {

/// Rows with a little room above and below their text, as the system's own lists have.
class RoomyRows : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// How high a row of one line of text is at least.
    static int smallestHeight(const QFontMetrics& metrics) {
        constexpr int room = 6;
        return metrics.height() + room;
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize tight = QStyledItemDelegate::sizeHint(option, index);
        return {tight.width(), qMax(tight.height(), smallestHeight(option.fontMetrics))};
    }
};

}  // namespace controls
