#include "searchcontrol/statistics_page.h"

#include <QApplication>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include "controls/tip_text.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

enum Column { Label, Entries, Size, Share, ColumnCount };
constexpr int termRole = Qt::UserRole;
constexpr int shareRole = Qt::UserRole + 1;
constexpr std::size_t mostLines = 1000;

/// A bar as long as its line's part of the longest line.
class BarDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        QRect bar = option.rect.adjusted(4, 3, -4, -3);
        bar.setWidth(static_cast<int>(bar.width() * index.data(shareRole).toDouble()));
        const bool isSelected = (option.state & QStyle::State_Selected) != 0;
        painter->fillRect(bar, option.palette.color(isSelected ? QPalette::HighlightedText
                                                               : QPalette::Highlight));
    }
};

std::int64_t largest(const std::vector<search::BreakdownLine>& lines) {
    std::int64_t result = 0;
    for (const search::BreakdownLine& line : lines) {
        result = std::max(result, line.bytes);
    }
    return result;
}

QTreeWidgetItem* itemOf(const search::BreakdownLine& line, std::int64_t largestBytes) {
    auto* item =
        new QTreeWidgetItem({text(line.label), countText(static_cast<std::int64_t>(line.entries)),
                             sizeText(line.bytes, line.isExact)});
    item->setData(Label, termRole, text(line.term));
    item->setToolTip(Label, controls::tipText(text(line.label)));
    item->setData(Share, shareRole,
                  largestBytes > 0
                      ? static_cast<double>(line.bytes) / static_cast<double>(largestBytes)
                      : 0.0);
    QFont link = item->font(Label);
    link.setUnderline(true);
    for (const Column column : {Label, Entries, Size}) {
        item->setFont(column, link);
        item->setForeground(column, QApplication::palette().link());
    }
    item->setTextAlignment(Entries, Qt::AlignRight | Qt::AlignVCenter);
    item->setTextAlignment(Size, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

}  // namespace

StatisticsPage::StatisticsPage(QWidget* parent) : QWidget(parent) {
    auto* layout = new QGridLayout(this);
    layout->addWidget(createTable("listByMedium", "By medium", search::Grouping::Medium), 0, 0);
    layout->addWidget(createTable("listByExtension", "By extension", search::Grouping::Extension),
                      0, 1);
    layout->addWidget(createTable("listByYear", "By year", search::Grouping::Year), 1, 0);
    layout->addWidget(createTable("listBySize", "By size", search::Grouping::SizeClass), 1, 1);
}

QWidget* StatisticsPage::createTable(const char* name, const QString& title,
                                     search::Grouping grouping) {
    auto* tree = new QTreeWidget(this);
    tree->setObjectName(name);
    tree->setAccessibleName(title);
    tree->setColumnCount(ColumnCount);
    tree->setHeaderLabels({title, "Entries", "Size", ""});
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setTextElideMode(Qt::ElideMiddle);
    tree->setItemDelegateForColumn(Share, new BarDelegate(tree));
    QHeaderView* header = tree->header();
    header->setStretchLastSection(true);
    header->setSectionResizeMode(Label, QHeaderView::Interactive);
    header->resizeSection(Label, fontMetrics().averageCharWidth() * 26);
    header->setSectionResizeMode(Entries, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(Size, QHeaderView::ResizeToContents);
    // The first of the two may already have emptied the table.
    const auto choose = [this](const QTreeWidgetItem* item) {
        if (item != nullptr) {
            emit narrowed(item->data(Label, termRole).toString().toStdString());
        }
    };
    connect(tree, &QTreeWidget::itemClicked, this, [choose](QTreeWidgetItem* item, int column) {
        if (column != Share) {
            choose(item);
        }
    });
    connect(tree, &QTreeWidget::itemActivated, this, choose);
    tables_.push_back({grouping, tree});
    return tree;
}

void StatisticsPage::fill(QTreeWidget& tree, const std::vector<search::BreakdownLine>& lines) {
    tree.clear();
    const std::int64_t largestBytes = largest(lines);
    QList<QTreeWidgetItem*> items;
    for (std::size_t i = 0; i < std::min(lines.size(), mostLines); ++i) {
        items.append(itemOf(lines[i], largestBytes));
    }
    tree.addTopLevelItems(items);
}

void StatisticsPage::show(const search::Breakdown* counts) {
    for (const Table& table : tables_) {
        fill(*table.tree, counts == nullptr ? std::vector<search::BreakdownLine>()
                                            : counts->lines(table.grouping));
    }
}

}  // namespace searchcontrol
