#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <vector>

#include "search/index.h"
#include "search/result_column.h"

namespace searchcontrol {

/// The hits of a search as a table, a row for each and a column for each search::ResultColumn. It
/// makes no cell before somebody looks at it.
class ResultModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using Hits = std::shared_ptr<const std::vector<search::Row>>;

    ResultModel();

    /// Both null: nothing is shown.
    void show(std::shared_ptr<const search::Index> index, Hits hits);

    /// Null where nothing is shown.
    const std::shared_ptr<const search::Index>& index() const { return index_; }
    using QAbstractTableModel::index;
    const std::vector<search::Row>& hits() const { return *hits_; }
    const Hits& sharedHits() const { return hits_; }
    search::Row hit(int row) const { return (*hits_)[static_cast<std::size_t>(row)]; }
    /// The place of an entry among the hits; -1 where it is none.
    int placeOf(search::Row hit) const;
    /// The copies of each entry have been counted by now.
    void copiesCounted();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::shared_ptr<const search::Index> index_;
    Hits hits_;  ///< never null
};

}  // namespace searchcontrol
