#pragma once

#include <QStyledItemDelegate>

namespace shell {

/// Rows with a little room above and below their text, as the system's own lists have.
class RoomyRows : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int room = 6;
        const QSize tight = QStyledItemDelegate::sizeHint(option, index);
        return {tight.width(), qMax(tight.height(), option.fontMetrics.height() + room)};
    }
};

}  // namespace shell
