#pragma once

#include <QStyledItemDelegate>
#include <memory>
#include <vector>

#include "search/highlight.h"
#include "search/result_column.h"

namespace searchcontrol {

/// Draws the cells of the results with the letters that the query has met in bold.
class LetterDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setQuery(const search::Query& query);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    std::vector<search::TextRange> rangesIn(const std::string& text, int column) const;

    std::unique_ptr<search::Highlighter> highlighter_;
};

}  // namespace searchcontrol
