#include "searchcontrol/duplicates_model.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "controls/tip_text.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

int alignmentOf(int column) {
    return static_cast<int>(Qt::AlignVCenter |
                            (column >= DuplicatesModel::Entries ? Qt::AlignRight : Qt::AlignLeft));
}

}  // namespace

DuplicatesModel::DuplicatesModel(base::EventBoundary& boundary) : slices_(boundary, this) {}

void DuplicatesModel::show(std::shared_ptr<const search::Index> index,
                           const std::vector<search::DuplicateGroup>* groups) {
    slices_.stop();
    beginResetModel();
    index_ = std::move(index);
    groups_ = groups;
    order_.resize(groups == nullptr ? 0 : groups->size());
    std::iota(order_.begin(), order_.end(), 0U);
    endResetModel();
}

const search::DuplicateGroup& DuplicatesModel::group(int row) const {
    return (*groups_)[order_[static_cast<std::size_t>(row)]];
}

int DuplicatesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(order_.size());
}

int DuplicatesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString DuplicatesModel::cell(const search::DuplicateGroup& group, int column) const {
    switch (column) {
        case Name:
            return text(index_->name(group.rows.front()));
        case Kind:
            return group.isFolder ? "identical folders" : "files";
        case Entries:
            return countText(static_cast<std::int64_t>(group.rows.size()));
        case Media:
            return countText(group.media);
        case Size:
            return sizeText(group.bytes, group.isExact);
        case Wasted:
            return sizeText(group.wasted, group.isExact);
        default:
            return {};
    }
}

QVariant DuplicatesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index_ == nullptr) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
            return cell(group(index.row()), index.column());
        case Qt::ToolTipRole:
            return controls::tipText(cell(group(index.row()), index.column()));
        case Qt::TextAlignmentRole:
            return alignmentOf(index.column());
        default:
            return {};
    }
}

QVariant DuplicatesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const char* const titles[] = {"Name", "Kind", "Copies", "Media", "Size", "Wasted"};
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return QString(titles[section]);
    }
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
        return alignmentOf(section);
    }
    return {};
}

std::int64_t DuplicatesModel::compare(const search::DuplicateGroup& left,
                                      const search::DuplicateGroup& right, int column) const {
    switch (column) {
        case Name:
            return index_->foldedName(left.rows.front())
                .compare(index_->foldedName(right.rows.front()));
        case Entries:
            return static_cast<std::int64_t>(left.rows.size()) -
                   static_cast<std::int64_t>(right.rows.size());
        case Media:
            return std::int64_t{left.media} - std::int64_t{right.media};
        case Size:
            return left.bytes - right.bytes;
        case Wasted:
            return left.wasted - right.wasted;
        default:
            return 0;
    }
}

bool DuplicatesModel::Before::operator()(std::uint32_t left, std::uint32_t right) const {
    const search::DuplicateGroup& a = (*model->groups_)[left];
    const search::DuplicateGroup& b = (*model->groups_)[right];
    if (a.isFolder != b.isFolder) {
        return a.isFolder;
    }
    const std::int64_t difference = model->compare(a, b, column);
    if (difference != 0) {
        return order == Qt::AscendingOrder ? difference < 0 : difference > 0;
    }
    return left < right;
}

void DuplicatesModel::sort(int column, Qt::SortOrder order) {
    if (groups_ == nullptr) {
        return;
    }
    const auto sorting = std::make_shared<Sorting>(Before{this, column, order});
    sorting->start(order_);
    slices_.startNow([this, sorting](const search::Budget& budget) {
        while (!sorting->advance()) {
            if (budget.isSpent()) {
                return false;
            }
        }
        takeOrder(sorting->take());
        return true;
    });
}

/// The group that is current stays it.
void DuplicatesModel::takeOrder(std::vector<std::uint32_t> order) {
    emit layoutAboutToBeChanged();
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    for (const QModelIndex& each : from) {
        const std::uint32_t group = order_[static_cast<std::size_t>(each.row())];
        const auto place = std::find(order.begin(), order.end(), group) - order.begin();
        to.append(index(static_cast<int>(place), each.column()));
    }
    order_ = std::move(order);
    changePersistentIndexList(from, to);
    emit layoutChanged();
}

}  // namespace searchcontrol
