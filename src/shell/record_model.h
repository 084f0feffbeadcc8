#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <cstdint>
#include <string>
#include <vector>

namespace shell {

/// The rows and columns of a list in report style. The view asks for the cells that it shows, so
/// the number of rows costs memory only.
///
/// A row is its own text and its sub-items; columns only say which of them are shown under which
/// heading, so inserting a column in front moves no text. Positions of rows and columns count
/// from 1, the model's own indexes from 0.
///
/// Once sorted, the list stays so: rows that are added go to their places, behind those that are
/// equal. Order is that of the texts, case ignored; rows of equal text keep their order.
class RecordModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// The row's own text and its sub-items; missing ones are empty.
    using Row = std::vector<std::string>;
    enum class Order { Ascending = 0, Descending = 1 };

    using QAbstractTableModel::QAbstractTableModel;

    /// Inserts a column at `position`, 1 to columnCount() + 1.
    void insertColumnAt(int position, const QString& heading);
    /// Rows keep their texts, as columns only show them.
    void removeAllColumns();
    void removeAllRows();
    void appendRow(Row row);
    /// Many rows at once; the list is then as if they had been appended one by one.
    void appendRows(std::vector<Row> rows);
    /// Replaces one text of the row at `position`; the row stays where it is.
    void setText(std::int64_t position, int column, std::string text);
    /// Replaces the texts from `firstColumn` on, as setText() does.
    void setTexts(std::int64_t position, int firstColumn, std::vector<std::string> texts);
    /// The text in a column of the row at `position`; empty where the row has none.
    const std::string& text(std::int64_t position, int column) const;

    /// Sorts by the texts at `sortKey`, 0 being the row's own text, and keeps the list sorted.
    void setSorted(int sortKey, Order order);
    bool isSorted() const { return sorted_; }
    int sortKey() const { return sortKey_; }
    Order sortOrder() const { return order_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    void sort();
    void moveRows(const std::vector<std::size_t>& order);
    std::size_t placeFor(const Row& row) const;
    std::string keyOf(const Row& row) const;
    bool comesBefore(const std::string& left, const std::string& right) const;
    Row& rowAt(std::int64_t position);

    QStringList headings_;
    std::vector<Row> rows_;
    bool sorted_ = false;
    int sortKey_ = 0;
    Order order_ = Order::Ascending;
};

}  // namespace shell
