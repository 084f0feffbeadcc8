#include "search/ordering.h"

#include <algorithm>
#include <string>
#include <utility>

#include "search/copies.h"
#include "search/result_column.h"
#include "search/text_fold.h"

namespace search {
namespace {

constexpr std::size_t keysAtOnce = 8192;
constexpr std::size_t rowsAtOnce = 65536;
constexpr std::size_t columns = allResultColumns.size();

/// The front of a text as a number that compares as the text does.
std::uint64_t frontOf(std::string_view text) {
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < 8; ++i) {
        key = key << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
    }
    return key;
}

/// A number with a sign as one without that compares the same way.
std::uint64_t shifted(std::int64_t number) {
    return static_cast<std::uint64_t>(number) ^ (std::uint64_t{1} << 63);
}

std::uint32_t textIdOf(const Index& index, Row row, ResultColumn column) {
    switch (column) {
        case ResultColumn::Folder:
            return index.pathId(row);
        case ResultColumn::Type:
            return index.typeId(row);
        case ResultColumn::Keywords:
            return index.annotation(index.annotationId(row)).keywords;
        case ResultColumn::Notes1:
            return index.annotation(index.annotationId(row)).notes1;
        default:
            return index.annotation(index.annotationId(row)).notes2;
    }
}

}  // namespace

Ordering::Ordering(const Index& index, Rows rows, std::vector<SortKey> sort, Rank rank)
    : index_(index),
      sort_(std::move(sort)),
      rank_(std::move(rank)),
      rows_(std::move(rows)),
      sorting_(Before{this}),
      textOrders_(columns) {
    elements_.reserve(rows_->size());
}

bool Ordering::advance() {
    switch (phase_) {
        case Phase::Texts:
            orderTexts();
            break;
        case Phase::Keys:
            makeKeys();
            break;
        case Phase::Sorting:
            if (sorting_.advance()) {
                phase_ = Phase::Tidying;
            }
            break;
        case Phase::Tidying:
            sorting_.dropSpare();
            ordered_.reserve(rows_->size());
            phase_ = Phase::Rows;
            break;
        case Phase::Rows:
            collectRows();
            break;
        case Phase::Finished:
            break;
    }
    return phase_ == Phase::Finished;
}

void Ordering::orderTexts() {
    if (nextText_ == sort_.size()) {
        phase_ = Phase::Keys;
        return;
    }
    const ResultColumn column = sort_[nextText_].column;
    std::unique_ptr<TextOrder>& order = textOrders_[static_cast<std::size_t>(column)];
    if (order == nullptr) {
        order = textOrderOf(column);
    }
    if (order == nullptr || order->advance()) {
        ++nextText_;
    }
}

/// Null where a row's own value is compared.
std::unique_ptr<TextOrder> Ordering::textOrderOf(ResultColumn column) const {
    switch (column) {
        case ResultColumn::Folder:
            return std::make_unique<TextOrder>(index_.pathCount(), [this](std::uint32_t i) {
                return std::string(index_.foldedPath(i));
            });
        case ResultColumn::Type:
            return std::make_unique<TextOrder>(index_.types().size(), [this](std::uint32_t i) {
                return foldedText(index_.types()[i]);
            });
        case ResultColumn::Keywords:
        case ResultColumn::Notes1:
        case ResultColumn::Notes2:
            return std::make_unique<TextOrder>(
                index_.annotationTexts().size(),
                [this](std::uint32_t i) { return foldedText(index_.annotationTexts()[i]); });
        default:
            return nullptr;
    }
}

void Ordering::makeKeys() {
    const std::size_t end = std::min(rows_->size(), elements_.size() + keysAtOnce);
    for (std::size_t i = elements_.size(); i < end; ++i) {
        elements_.push_back({keyOf((*rows_)[i]), (*rows_)[i]});
    }
    if (elements_.size() == rows_->size()) {
        sorting_.start(std::move(elements_));
        phase_ = Phase::Sorting;
    }
}

void Ordering::collectRows() {
    const std::vector<Element>& sorted = sorting_.elements();
    const std::size_t end = std::min(sorted.size(), ordered_.size() + rowsAtOnce);
    for (std::size_t i = ordered_.size(); i < end; ++i) {
        ordered_.push_back(sorted[i].row);
    }
    if (ordered_.size() == sorted.size()) {
        phase_ = Phase::Finished;
    }
}

bool Ordering::isBefore(const Element& left, const Element& right) const {
    if (left.key != right.key) {
        return left.key < right.key;
    }
    return sort_.empty() ? left.row < right.row : isBeforeByKeys(left, right);
}

bool Ordering::isBeforeByKeys(const Element& left, const Element& right) const {
    for (const SortKey& key : sort_) {
        const int order = compare(left.row, right.row, key);
        if (order != 0) {
            return key.isDescending ? order > 0 : order < 0;
        }
    }
    return left.row < right.row;
}

std::uint64_t Ordering::keyOf(Row row) const {
    if (sort_.empty()) {
        return rankKey(row);
    }
    const std::uint64_t key = columnKey(row, sort_.front());
    return sort_.front().isDescending ? ~key : key;
}

std::uint64_t Ordering::rankKey(Row row) const {
    // A time takes 39 bits; that of an entry without one is the lowest.
    const LocalTime time = index_.modified(row);
    const std::uint64_t age = time == unknownTime
                                  ? (std::uint64_t{1} << 60) - 1
                                  : (std::uint64_t{1} << 59) - static_cast<std::uint64_t>(time);
    return static_cast<std::uint64_t>(rank_.of(index_, row)) << 62 |
           (index_.isFolder(row) ? 0u : std::uint64_t{1} << 61) | age;
}

std::uint64_t Ordering::columnKey(Row row, const SortKey& sort) const {
    switch (sort.column) {
        case ResultColumn::Name:
            return frontOf(index_.foldedName(row));
        case ResultColumn::Medium:
            return shifted(index_.medium(row).mediaId);
        case ResultColumn::Size:
            // Folders first; sizes that are not known exactly behind all others.
            return shifted(index_.isFolder(row) ? -1 : index_.leastSize(row));
        case ResultColumn::Modified:
            return shifted(index_.modified(row));
        case ResultColumn::Created:
            return shifted(index_.created(row));
        case ResultColumn::Copies:
            return index_.copies().isFinished() ? index_.copies().copies(row) : 0;
        default:
            return textOrders_[static_cast<std::size_t>(sort.column)]->placeOf(
                textIdOf(index_, row, sort.column));
    }
}

int Ordering::compare(Row left, Row right, const SortKey& sort) const {
    if (sort.column == ResultColumn::Name) {
        const int order = index_.foldedName(left).compare(index_.foldedName(right));
        return order != 0 ? order : index_.name(left).compare(index_.name(right));
    }
    const std::uint64_t leftKey = columnKey(left, sort);
    const std::uint64_t rightKey = columnKey(right, sort);
    return leftKey < rightKey ? -1 : leftKey > rightKey ? 1 : 0;
}

}  // namespace search
