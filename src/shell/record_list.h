#pragma once

#include <QTreeView>
#include <cstdint>
#include <functional>
#include <vector>

#include "explore/explore_controls.h"
#include "shell/record_model.h"

namespace shell {

/// The list of records, in report style; several rows may be selected. Columns and rows are the
/// model's.
class RecordList : public QTreeView, public explore::ListControl {
  public:
    explicit RecordList(QWidget* parent);

    RecordModel& records() { return model_; }

    /// Adds a column behind the others, as wide as that fraction of the list.
    void appendColumn(const QString& heading, double width);

    int widthInTwips() const override;
    void insertColumn(int position, const std::string& heading, int widthInTwips) override;
    void removeAllRows() override { model_.removeAllRows(); }
    void appendRows(std::vector<Row> rows) override { model_.appendRows(std::move(rows)); }

    /// Positions of the selected rows, from 1, in list order.
    std::vector<std::int64_t> selectedPositions() const;
    /// Selects the first row of that own text alone, and brings it into view; without such a row
    /// nothing is selected.
    void selectRow(const std::string& text);
    /// Sorts by a column and shows by which, and in which direction.
    void sortBy(int sortKey, RecordModel::Order order);

    /// What a click on the header of column `column`, from 1, does. With the keys it is Ctrl and
    /// the column's digit, 0 for the tenth.
    void onColumnClick(std::function<void(int column)> action) { columnClick_ = std::move(action); }

  private:
    void connectColumns();
    void clickColumn(int column);
    void showSorting();

    RecordModel model_;
    std::function<void(int)> columnClick_;
};

}  // namespace shell
