#include "shell/record_model.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "controls/tip_text.h"

namespace shell {

namespace {

const std::string noText;

const std::string& textOf(const RecordModel::Row& row, int column) {
    const auto place = static_cast<std::size_t>(column);
    return place < row.size() ? row[place] : noText;
}

}  // namespace

void RecordModel::insertColumnAt(int position, const QString& heading) {
    if (position < 1 || position > headings_.size() + 1) {
        throw base::SubscriptFailure("a list has no place for a column " +
                                     std::to_string(position));
    }
    beginInsertColumns({}, position - 1, position - 1);
    headings_.insert(position - 1, heading);
    endInsertColumns();
}

void RecordModel::removeAllColumns() {
    if (headings_.isEmpty()) {
        return;
    }
    beginRemoveColumns({}, 0, columnCount() - 1);
    headings_.clear();
    endRemoveColumns();
}

void RecordModel::removeAllRows() {
    beginResetModel();
    rows_.clear();
    endResetModel();
}

void RecordModel::appendRow(Row row) {
    const std::size_t place = sorted_ ? placeFor(row) : rows_.size();
    beginInsertRows({}, static_cast<int>(place), static_cast<int>(place));
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place), std::move(row));
    endInsertRows();
}

void RecordModel::appendRows(std::vector<Row> rows) {
    if (rows.empty()) {
        return;
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    std::move(rows.begin(), rows.end(), std::back_inserter(rows_));
    endInsertRows();
    if (sorted_) {
        sort();
    }
}

void RecordModel::setText(std::int64_t position, int column, std::string text) {
    Row& row = rowAt(position);
    const auto place = static_cast<std::size_t>(column - 1);
    if (place >= row.size()) {
        row.resize(place + 1);
    }
    row[place] = std::move(text);
    const QModelIndex cell = index(static_cast<int>(position - 1), column - 1);
    emit dataChanged(cell, cell);
}

void RecordModel::setTexts(std::int64_t position, int firstColumn, std::vector<std::string> texts) {
    Row& row = rowAt(position);
    const auto first = static_cast<std::size_t>(firstColumn - 1);
    row.resize(std::max(row.size(), first + texts.size()));
    std::move(texts.begin(), texts.end(), row.begin() + static_cast<std::ptrdiff_t>(first));
    if (columnCount() > 0) {
        // The whole row: for a single cell the view searches its place among all rows.
        const int line = static_cast<int>(position - 1);
        emit dataChanged(index(line, 0), index(line, columnCount() - 1));
    }
}

const std::string& RecordModel::text(std::int64_t position, int column) const {
    return textOf(const_cast<RecordModel*>(this)->rowAt(position), column - 1);
}

RecordModel::Row& RecordModel::rowAt(std::int64_t position) {
    if (position < 1 || static_cast<std::uint64_t>(position) > rows_.size()) {
        throw base::SubscriptFailure("the list has no row " + std::to_string(position));
    }
    return rows_[static_cast<std::size_t>(position - 1)];
}

void RecordModel::setSorted(int sortKey, Order order) {
    sorted_ = true;
    sortKey_ = sortKey;
    order_ = order;
    sort();
}

std::string RecordModel::keyOf(const Row& row) const {
    return base::foldedCase(textOf(row, sortKey_));
}

bool RecordModel::comesBefore(const std::string& left, const std::string& right) const {
    return order_ == Order::Ascending ? left < right : right < left;
}

std::size_t RecordModel::placeFor(const Row& row) const {
    const auto before = [this](const std::string& key, const Row& other) {
        return comesBefore(key, keyOf(other));
    };
    const auto place = std::upper_bound(rows_.begin(), rows_.end(), keyOf(row), before);
    return static_cast<std::size_t>(place - rows_.begin());
}

void RecordModel::sort() {
    std::vector<std::string> keys;
    keys.reserve(rows_.size());
    for (const Row& row : rows_) {
        keys.push_back(keyOf(row));
    }
    std::vector<std::size_t> order(rows_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        return comesBefore(keys[left], keys[right]);
    });
    moveRows(order);
}

/// Puts the row that stood at order[p] at place p; selected rows stay selected.
void RecordModel::moveRows(const std::vector<std::size_t>& order) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<Row> moved(rows_.size());
    std::vector<int> newPlace(rows_.size());
    for (std::size_t place = 0; place < order.size(); ++place) {
        moved[place] = std::move(rows_[order[place]]);
        newPlace[order[place]] = static_cast<int>(place);
    }
    rows_ = std::move(moved);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& old : before) {
        after.append(index(newPlace[static_cast<std::size_t>(old.row())], old.column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

int RecordModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const QString cell = QString::fromStdString(
        textOf(rows_[static_cast<std::size_t>(index.row())], index.column()));
    return role == Qt::ToolTipRole ? controls::tipText(cell) : cell;
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= headings_.size()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (role == Qt::ToolTipRole) {
        return controls::tipText(headings_[section]);
    }
    return role == Qt::DisplayRole ? QVariant(headings_[section]) : QVariant();
}

}  // namespace shell
