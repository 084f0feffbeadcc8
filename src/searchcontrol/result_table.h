#pragma once

#include <QTableView>
#include <vector>

#include "searchcontrol/result_model.h"

namespace searchcontrol {

/// The table of the hits. What is typed in it goes to the query line; the header's menu hides and
/// shows columns; a click on a heading, or Ctrl and a column's digit, asks for another order.
class ResultTable : public QTableView {
    Q_OBJECT

  public:
    explicit ResultTable(QWidget* parent);

    ResultModel& results() { return model_; }
    const ResultModel& results() const { return model_; }
    /// The entries selected, in the order of the table; where none is, the current one.
    std::vector<search::Row> chosen() const;
    std::vector<search::Row> selected() const;
    /// The selected rows of the table as stretches: the first and the last row of each, ascending.
    std::vector<std::pair<int, int>> selectedStretches() const;
    /// Columns that are shown, in the order in which they are shown.
    std::vector<search::ResultColumn> shownColumns() const;
    /// Shows hits, keeping the current entry and the place where the table was, as far as possible.
    void show(std::shared_ptr<const search::Index> index, ResultModel::Hits hits);
    /// The mark of the column that the hits are in the order of; none for -1.
    void showOrder(int column, bool isDescending);

  signals:
    /// Text that was typed here; "\b" takes a character away.
    void typed(const QString& text);
    /// Enter, or a double click.
    void entered();
    /// The up key in the first row.
    void leftUpwards();
    void orderWanted(search::ResultColumn column);
    void columnsChanged();
    void selectionMoved();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    void prepareHeaders();
    void showColumnMenu(const QPoint& place);
    void scrollSideways(int direction);

    ResultModel model_;
    bool isResetting_ = false;
};

}  // namespace searchcontrol
