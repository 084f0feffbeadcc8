#include "searchcontrol/result_model.h"

#include <algorithm>

#include "controls/tip_text.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

search::ResultColumn columnOf(int column) {
    return search::allResultColumns[static_cast<std::size_t>(column)];
}

QString tipOf(const search::Index& index, search::Row row, search::ResultColumn column) {
    if (column == search::ResultColumn::Size && !index.isFolder(row)) {
        return index.isSizeKnown(row)
                   ? countText(index.size(row), "byte", "bytes")
                   : "size not known exactly: the archive holds sizes below 2 GB only";
    }
    return controls::tipText(shownCell(index, row, column));
}

int alignmentOf(search::ResultColumn column) {
    return static_cast<int>(Qt::AlignVCenter |
                            (search::isNumber(column) ? Qt::AlignRight : Qt::AlignLeft));
}

}  // namespace

ResultModel::ResultModel() : hits_(std::make_shared<const std::vector<search::Row>>()) {}

void ResultModel::show(std::shared_ptr<const search::Index> index, Hits hits) {
    beginResetModel();
    index_ = std::move(index);
    hits_ = hits != nullptr ? std::move(hits) : std::make_shared<const std::vector<search::Row>>();
    endResetModel();
}

int ResultModel::placeOf(search::Row hit) const {
    const auto found = std::find(hits_->begin(), hits_->end(), hit);
    return found == hits_->end() ? -1 : static_cast<int>(found - hits_->begin());
}

void ResultModel::copiesCounted() {
    const int column = static_cast<int>(search::ResultColumn::Copies);
    if (!hits_->empty()) {
        emit dataChanged(index(0, column), index(rowCount() - 1, column));
    }
}

int ResultModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(hits_->size());
}

int ResultModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(search::allResultColumns.size());
}

QVariant ResultModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index_ == nullptr) {
        return {};
    }
    const search::ResultColumn column = columnOf(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return shownCell(*index_, hit(index.row()), column);
        case Qt::ToolTipRole:
            return tipOf(*index_, hit(index.row()), column);
        case Qt::TextAlignmentRole:
            return alignmentOf(column);
        default:
            return {};
    }
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return text(search::columnTitle(columnOf(section)));
    }
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
        return alignmentOf(columnOf(section));
    }
    return orientation == Qt::Horizontal
               ? QAbstractTableModel::headerData(section, orientation, role)
               : QVariant();
}

}  // namespace searchcontrol
