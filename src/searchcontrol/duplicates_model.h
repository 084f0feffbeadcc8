#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <vector>

#include "search/duplicates.h"

namespace searchcontrol {

/// Groups of duplicates as a table, a row for each. Identical folders stay in front of the files,
/// whatever the order.
class DuplicatesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { Name, Kind, Entries, Media, Size, Wasted, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// `groups` must stay as long as it is shown.
    void show(std::shared_ptr<const search::Index> index,
              const std::vector<search::DuplicateGroup>* groups);
    void clear() { show(nullptr, nullptr); }
    const search::DuplicateGroup& group(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    QString cell(const search::DuplicateGroup& group, int column) const;

    std::shared_ptr<const search::Index> index_;
    const std::vector<search::DuplicateGroup>* groups_ = nullptr;
    std::vector<std::uint32_t> order_;
};

}  // namespace searchcontrol
