#include "searchcontrol/duplicates_model.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "controls/tip_text.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

void DuplicatesModel::show(std::shared_ptr<const search::Index> index,
                           const std::vector<search::DuplicateGroup>* groups) {
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
            return static_cast<int>(Qt::AlignVCenter |
                                    (index.column() >= Entries ? Qt::AlignRight : Qt::AlignLeft));
        default:
            return {};
    }
}

QVariant DuplicatesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const char* const titles[] = {"Name", "Kind", "Copies", "Media", "Size", "Wasted"};
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return QString(titles[section]);
    }
    return {};
}

void DuplicatesModel::sort(int column, Qt::SortOrder order) {
    if (groups_ == nullptr) {
        return;
    }
    const auto compare = [&](std::uint32_t left, std::uint32_t right) -> std::int64_t {
        const search::DuplicateGroup& a = (*groups_)[left];
        const search::DuplicateGroup& b = (*groups_)[right];
        switch (column) {
            case Name:
                return index_->foldedName(a.rows.front())
                    .compare(index_->foldedName(b.rows.front()));
            case Entries:
                return static_cast<std::int64_t>(a.rows.size()) -
                       static_cast<std::int64_t>(b.rows.size());
            case Media:
                return std::int64_t{a.media} - std::int64_t{b.media};
            case Size:
                return a.bytes - b.bytes;
            case Wasted:
                return a.wasted - b.wasted;
            default:
                return 0;
        }
    };
    emit layoutAboutToBeChanged();
    std::sort(order_.begin(), order_.end(), [&](std::uint32_t left, std::uint32_t right) {
        const bool isFolder = (*groups_)[left].isFolder;
        if (isFolder != (*groups_)[right].isFolder) {
            return isFolder;
        }
        const std::int64_t difference = compare(left, right);
        if (difference != 0) {
            return order == Qt::AscendingOrder ? difference < 0 : difference > 0;
        }
        return left < right;
    });
    emit layoutChanged();
}

}  // namespace searchcontrol
