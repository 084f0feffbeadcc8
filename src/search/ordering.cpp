#include "search/ordering.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "search/copies.h"
#include "search/result_column.h"
#include "search/text_fold.h"

namespace search {
namespace {

constexpr std::size_t keysAtOnce = 8192;
constexpr std::size_t stretch = 8192;
constexpr std::size_t mergedAtOnce = 32768;
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

/// For each text of a list its place among all of them in order, equal ones at the same place.
std::vector<std::uint32_t> placesOf(const std::vector<std::string>& texts) {
    std::vector<std::uint32_t> order(texts.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::sort(order, {}, [&](std::uint32_t i) -> const std::string& { return texts[i]; });
    std::vector<std::uint32_t> places(texts.size());
    std::uint32_t place = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        place += i > 0 && texts[order[i]] != texts[order[i - 1]] ? 1 : 0;
        places[order[i]] = place;
    }
    return places;
}

std::vector<std::string> foldedTexts(std::size_t count, auto textOf) {
    std::vector<std::string> texts;
    texts.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        texts.push_back(foldedText(textOf(i)));
    }
    return texts;
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

Ordering::Ordering(const Index& index, std::vector<Row> rows, std::vector<SortKey> sort, Rank rank)
    : index_(index),
      sort_(std::move(sort)),
      rank_(std::move(rank)),
      rows_(std::move(rows)),
      width_(stretch),
      textOrders_(columns) {
    elements_.reserve(rows_.size());
    for (const SortKey& key : sort_) {
        orderTexts(key.column);
    }
}

void Ordering::orderTexts(ResultColumn column) {
    std::vector<std::uint32_t>& places = textOrders_[static_cast<std::size_t>(column)];
    switch (column) {
        case ResultColumn::Folder:
            places = placesOf(foldedTexts(index_.pathCount(),
                                          [&](std::uint32_t i) { return index_.pathText(i); }));
            return;
        case ResultColumn::Type:
            places = placesOf(foldedTexts(index_.types().size(),
                                          [&](std::uint32_t i) { return index_.types()[i]; }));
            return;
        case ResultColumn::Keywords:
        case ResultColumn::Notes1:
        case ResultColumn::Notes2:
            places = placesOf(foldedTexts(index_.annotationTexts().size(), [&](std::uint32_t i) {
                return index_.annotationTexts()[i];
            }));
            return;
        default:
            return;
    }
}

bool Ordering::advance() {
    if (elements_.size() < rows_.size()) {
        makeKeys();
    } else if (sorted_ < elements_.size()) {
        sortStretch();
    } else if (width_ < elements_.size()) {
        merge();
    }
    return elements_.size() == rows_.size() && sorted_ == elements_.size() &&
           width_ >= elements_.size();
}

std::vector<Row> Ordering::take() const {
    std::vector<Row> rows;
    rows.reserve(elements_.size());
    for (const Element& element : elements_) {
        rows.push_back(element.row);
    }
    return rows;
}

void Ordering::makeKeys() {
    const std::size_t end = std::min(rows_.size(), elements_.size() + keysAtOnce);
    for (std::size_t i = elements_.size(); i < end; ++i) {
        elements_.push_back({keyOf(rows_[i]), rows_[i]});
    }
}

void Ordering::sortStretch() {
    const std::size_t end = std::min(elements_.size(), sorted_ + stretch);
    std::sort(elements_.begin() + static_cast<std::ptrdiff_t>(sorted_),
              elements_.begin() + static_cast<std::ptrdiff_t>(end),
              [this](const Element& left, const Element& right) { return isBefore(left, right); });
    sorted_ = end;
}

/// Goes on with the merging of two neighbouring stretches into `merged_`.
void Ordering::merge() {
    const std::size_t count = elements_.size();
    merged_.reserve(count);
    for (std::size_t done = 0; done < mergedAtOnce; ++done) {
        const std::size_t middle = std::min(count, start_ + width_);
        const std::size_t end = std::min(count, start_ + 2 * width_);
        if (!std::exchange(isMerging_, true)) {
            left_ = start_;
            right_ = middle;
        }
        const bool takesLeft =
            left_ < middle && (right_ >= end || !isBefore(elements_[right_], elements_[left_]));
        merged_.push_back(elements_[takesLeft ? left_++ : right_++]);
        if (left_ == middle && right_ == end) {
            start_ = end;
            isMerging_ = false;
        }
        if (start_ == count) {
            elements_.swap(merged_);
            merged_.clear();
            start_ = 0;
            width_ *= 2;
            return;
        }
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
            return textOrders_[static_cast<std::size_t>(sort.column)]
                              [textIdOf(index_, row, sort.column)];
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
