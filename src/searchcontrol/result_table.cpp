#include "searchcontrol/result_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr int roomOfRow = 6;
constexpr int columnsWithKeys = 10;

bool isText(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().front().isPrint() &&
           (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

}  // namespace

ResultTable::ResultTable(QWidget* parent) : QTableView(parent) {
    setObjectName("listResults");
    setAccessibleName("Results");
    setModel(&model_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideMiddle);
    setContextMenuPolicy(Qt::CustomContextMenu);
    prepareHeaders();
    connect(this, &QTableView::doubleClicked, this, &ResultTable::entered);
}

void ResultTable::prepareHeaders() {
    verticalHeader()->hide();
    // All rows are as high as the first one, so that none has to be measured.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(fontMetrics().height() + roomOfRow);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + roomOfRow);
    QHeaderView* header = horizontalHeader();
    // A heading does not show what is selected, and with the table's selection it would look
    // through all rows for it whenever it is painted.
    header->setSelectionModel(new QItemSelectionModel(&model_, header));
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, &ResultTable::showColumnMenu);
    connect(header, &QHeaderView::sectionMoved, this, &ResultTable::columnsChanged);
    connect(header, &QHeaderView::sectionResized, this, &ResultTable::columnsChanged);
    connect(header, &QHeaderView::sectionClicked, this, [this](int section) {
        emit orderWanted(search::allResultColumns[static_cast<std::size_t>(section)]);
    });
    for (int place = 1; place <= columnsWithKeys; ++place) {
        const auto digit = static_cast<Qt::Key>(Qt::Key_0 + place % columnsWithKeys);
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | digit), this);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, place] {
            const auto columns = shownColumns();
            if (static_cast<std::size_t>(place) <= columns.size()) {
                emit orderWanted(columns[static_cast<std::size_t>(place - 1)]);
            }
        });
    }
}

std::vector<search::ResultColumn> ResultTable::shownColumns() const {
    std::vector<search::ResultColumn> columns;
    for (int place = 0; place < horizontalHeader()->count(); ++place) {
        const int section = horizontalHeader()->logicalIndex(place);
        if (!isColumnHidden(section)) {
            columns.push_back(search::allResultColumns[static_cast<std::size_t>(section)]);
        }
    }
    return columns;
}

void ResultTable::showColumnMenu(const QPoint& place) {
    QMenu* menu = new QMenu(this);
    menu->setObjectName("menuColumns");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int section = 0; section < model_.columnCount(); ++section) {
        QAction* action =
            menu->addAction(model_.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString());
        action->setCheckable(true);
        action->setChecked(!isColumnHidden(section));
        // Without a column there would be no header to bring one back by.
        action->setEnabled(isColumnHidden(section) || shownColumns().size() > 1);
        connect(action, &QAction::toggled, this, [this, section](bool isShown) {
            setColumnHidden(section, !isShown);
            emit columnsChanged();
        });
    }
    menu->popup(horizontalHeader()->mapToGlobal(place));
}

std::vector<std::pair<int, int>> ResultTable::selectedStretches() const {
    std::vector<std::pair<int, int>> ranges;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        ranges.emplace_back(range.top(), range.bottom());
    }
    std::sort(ranges.begin(), ranges.end());
    std::vector<std::pair<int, int>> stretches;
    int next = 0;
    for (const auto& [top, bottom] : ranges) {
        if (bottom >= next) {
            stretches.emplace_back(std::max(next, top), bottom);
            next = bottom + 1;
        }
    }
    return stretches;
}

std::vector<search::Row> ResultTable::selected() const {
    const std::vector<search::Row>& hits = model_.hits();
    std::vector<search::Row> rows;
    for (const auto& [first, last] : selectedStretches()) {
        rows.insert(rows.end(), hits.begin() + first, hits.begin() + last + 1);
    }
    return rows;
}

std::vector<search::Row> ResultTable::chosen() const {
    std::vector<search::Row> rows = selected();
    if (rows.empty() && currentIndex().isValid()) {
        rows.push_back(model_.hit(currentIndex().row()));
    }
    return rows;
}

void ResultTable::show(std::shared_ptr<const search::Index> index, ResultModel::Hits hits) {
    isResetting_ = true;
    model_.show(std::move(index), std::move(hits));
    isResetting_ = false;
    scrollToTop();
    emit selectionMoved();
}

void ResultTable::showOrder(int column, bool isDescending) {
    horizontalHeader()->setSortIndicatorShown(column >= 0);
    horizontalHeader()->setSortIndicator(column,
                                         isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ResultTable::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (isPlain) {
                emit entered();
                return;
            }
            break;
        case Qt::Key_Backspace:
            emit typed("\b");
            return;
        case Qt::Key_Escape:
            event->ignore();
            return;
        case Qt::Key_Up:
            if (isPlain && currentIndex().row() <= 0) {
                emit leftUpwards();
                return;
            }
            break;
        default:
            break;
    }
    if (isText(*event)) {
        emit typed(event->text());
        return;
    }
    QTableView::keyPressEvent(event);
}

QModelIndex ResultTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int column = std::max(0, horizontalHeader()->logicalIndexAt(0));
    const int rows = model_.rowCount();
    switch (action) {
        case MoveLeft:
            scrollSideways(-1);
            return currentIndex();
        case MoveRight:
            scrollSideways(1);
            return currentIndex();
        case MoveHome:
            return model_.index(0, column);
        case MoveEnd:
            return model_.index(rows - 1, column);
        default:
            return QTableView::moveCursor(action, modifiers);
    }
}

void ResultTable::scrollSideways(int direction) {
    QScrollBar* bar = horizontalScrollBar();
    bar->setValue(bar->value() + direction * 4 * bar->singleStep());
}

void ResultTable::selectionChanged(const QItemSelection& selected,
                                   const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (!isResetting_) {
        emit selectionMoved();
    }
}

void ResultTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!isResetting_) {
        emit selectionMoved();
    }
}

}  // namespace searchcontrol
