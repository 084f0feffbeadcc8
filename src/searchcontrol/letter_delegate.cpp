#include "searchcontrol/letter_delegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// Ranges of bytes as ranges of UTF-16 units, in bold, up to `end` units.
QList<QTextLayout::FormatRange> formatsOf(const std::string& whole,
                                          const std::vector<search::TextRange>& ranges, int end) {
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QList<QTextLayout::FormatRange> formats;
    for (const search::TextRange& range : ranges) {
        const std::string_view bytes = whole;
        const int start = static_cast<int>(text(bytes.substr(0, range.start)).size());
        const int length = static_cast<int>(text(bytes.substr(range.start, range.length)).size());
        if (start < end) {
            formats.append({start, std::min(length, end - start), bold});
        }
    }
    return formats;
}

void drawLine(QPainter& painter, const QRect& place, const QString& line, const QFont& font,
              const QList<QTextLayout::FormatRange>& formats) {
    QTextLayout layout(line, font);
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine laid = layout.createLine();
    layout.endLayout();
    if (laid.isValid()) {
        const qreal top = place.top() + (place.height() - laid.height()) / 2;
        layout.draw(&painter, QPointF(place.left(), qRound(top)));
    }
}

QPalette::ColorGroup colorsOf(const QStyleOptionViewItem& option) {
    if ((option.state & QStyle::State_Enabled) == 0) {
        return QPalette::Disabled;
    }
    return (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
}

}  // namespace

void LetterDelegate::setQuery(const search::Query& query) {
    highlighter_ = std::make_unique<search::Highlighter>(query);
}

std::vector<search::TextRange> LetterDelegate::rangesIn(const std::string& text, int column) const {
    using search::ResultColumn;
    if (highlighter_ == nullptr || text.empty()) {
        return {};
    }
    switch (search::allResultColumns[static_cast<std::size_t>(column)]) {
        case ResultColumn::Name:
            return highlighter_->inName(text);
        case ResultColumn::Folder:
            return highlighter_->inPath(text);
        case ResultColumn::Type:
            return highlighter_->inType(text);
        case ResultColumn::Keywords:
            return highlighter_->inKeywords(text);
        case ResultColumn::Notes1:
        case ResultColumn::Notes2:
            return highlighter_->inNotes(text);
        default:
            return {};
    }
}

void LetterDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const std::string whole = item.text.toStdString();
    const auto ranges = rangesIn(whole, index.column());
    if (ranges.empty()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QStyle* style = item.widget != nullptr ? item.widget->style() : QApplication::style();
    const QString all = item.text;
    item.text.clear();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const QRect place = item.rect.adjusted(margin, 0, -margin, 0);
    const QString line = item.fontMetrics.elidedText(all, Qt::ElideRight, place.width());
    const int end = static_cast<int>(line == all ? all.size() : line.size() - 1);
    const bool isSelected = (item.state & QStyle::State_Selected) != 0;
    painter->save();
    painter->setClipRect(place);
    painter->setPen(item.palette.color(colorsOf(item),
                                       isSelected ? QPalette::HighlightedText : QPalette::Text));
    drawLine(*painter, place, line, item.font, formatsOf(whole, ranges, end));
    painter->restore();
}

}  // namespace searchcontrol
