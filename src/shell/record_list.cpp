#include "shell/record_list.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QShortcut>
#include <algorithm>

#include "controls/roomy_rows.h"
#include "shell/workspace_layout.h"

namespace shell {

namespace {

constexpr int columnsWithKeys = 10;

/// Headings that do not fit end in dots.
class Headings : public QHeaderView {
  public:
    explicit Headings(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

  protected:
    /// The header's own way measures the texts by the width of the whole header.
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        int besideText = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, option, this);
        if (isSortIndicatorShown() && sortIndicatorSection() == section) {
            besideText += style()->pixelMetric(QStyle::PM_HeaderMarkSize, option, this);
        }
        option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight,
                                                      sectionSize(section) - besideText);
    }
};

}  // namespace

RecordList::RecordList(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    // Without this every row would be measured before the first one is shown.
    setUniformRowHeights(true);
    setItemDelegate(new controls::RoomyRows(this));
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setHeader(new Headings(this));
    setModel(&model_);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connectColumns();
}

void RecordList::connectColumns() {
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int section) { clickColumn(section + 1); });
    for (int column = 1; column <= columnsWithKeys; ++column) {
        const auto digit = static_cast<Qt::Key>(Qt::Key_0 + column % columnsWithKeys);
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | digit), this);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, column] { clickColumn(column); });
    }
}

void RecordList::clickColumn(int column) {
    if (columnClick_ && column <= model_.columnCount()) {
        columnClick_(column);
    }
}

void RecordList::appendColumn(const QString& heading, double width) {
    const int section = model_.columnCount();
    model_.insertColumnAt(section + 1, heading);
    header()->resizeSection(section, static_cast<int>(this->width() * width));
    showSorting();
}

int RecordList::widthInTwips() const { return twipsFromPixels(width(), logicalDpiX()); }

void RecordList::insertColumn(int position, const std::string& heading, int widthInTwips) {
    model_.insertColumnAt(position, QString::fromStdString(heading));
    header()->resizeSection(position - 1, pixelsFromTwips(widthInTwips, logicalDpiX()));
    // The list stays sorted by the same text, which now stands below another column.
    showSorting();
}

std::vector<std::int64_t> RecordList::selectedPositions() const {
    std::vector<std::int64_t> positions;
    // Ranges, not rows: everything may be selected.
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            positions.push_back(row + 1);
        }
    }
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    return positions;
}

void RecordList::selectRow(const std::string& text) {
    clearSelection();
    const QString wanted = QString::fromStdString(text);
    for (int row = 0; row < model_.rowCount(); ++row) {
        const QModelIndex index = model_.index(row, 0);
        if (!text.empty() && index.data().toString() == wanted) {
            setCurrentIndex(index);
            scrollTo(index);
            return;
        }
    }
}

void RecordList::sortBy(int sortKey, RecordModel::Order order) {
    model_.setSorted(sortKey, order);
    showSorting();
}

void RecordList::showSorting() {
    if (model_.isSorted()) {
        const bool ascending = model_.sortOrder() == RecordModel::Order::Ascending;
        header()->setSortIndicatorShown(true);
        header()->setSortIndicator(model_.sortKey(),
                                   ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

}  // namespace shell
