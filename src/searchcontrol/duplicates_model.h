#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <vector>

#include "search/duplicates.h"
#include "search/step_sort.h"
#include "searchcontrol/slices.h"

namespace searchcontrol {

/// Groups of duplicates as a table, a row for each. Identical folders stay in front of the files,
/// whatever the order. There may be millions, so that they are sorted piece by piece.
class DuplicatesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { Name, Kind, Entries, Media, Size, Wasted, ColumnCount };

    explicit DuplicatesModel(base::EventBoundary& boundary);

    /// `groups` must stay as long as it is shown.
    void show(std::shared_ptr<const search::Index> index,
              const std::vector<search::DuplicateGroup>* groups);
    void clear() { show(nullptr, nullptr); }
    bool isSorting() const { return slices_.isRunning(); }
    const search::DuplicateGroup& group(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    /// Groups by a column, by their places in groups_.
    struct Before {
        const DuplicatesModel* model;
        int column;
        Qt::SortOrder order;
        bool operator()(std::uint32_t left, std::uint32_t right) const;
    };
    using Sorting = search::StepSort<std::uint32_t, Before>;

    std::int64_t compare(const search::DuplicateGroup& left, const search::DuplicateGroup& right,
                         int column) const;
    void takeOrder(std::vector<std::uint32_t> order);
    QString cell(const search::DuplicateGroup& group, int column) const;

    std::shared_ptr<const search::Index> index_;
    const std::vector<search::DuplicateGroup>* groups_ = nullptr;
    std::vector<std::uint32_t> order_;
    Slices slices_;
};

}  // namespace searchcontrol
