#include "search/copies.h"

#include <algorithm>
#include <functional>

namespace search {
namespace {

constexpr Row rowsAtOnce = 16384;

std::uint32_t hashOf(const Index& index, Row row) {
    const std::size_t name = std::hash<std::string_view>{}(index.foldedName(row));
    const std::uint64_t rest = static_cast<std::uint32_t>(index.size(row)) * std::uint64_t{2} +
                               (index.isFolder(row) ? 1 : 0);
    const std::uint64_t mixed = (name ^ rest) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint32_t>(mixed >> 32);
}

bool areCopies(const Index& index, Row left, Row right) {
    return index.size(left) == index.size(right) && index.isFolder(left) == index.isFolder(right) &&
           index.foldedName(left) == index.foldedName(right);
}

}  // namespace

bool CopyTable::advance() {
    const std::lock_guard lock(mutex_);
    if (isFinished()) {
        return true;
    }
    if (next_ == 0) {
        begin();
    }
    if (next_ == index_.size() && next_ > 0) {
        // Giving much memory back takes a step of its own.
        std::vector<Row>().swap(firsts_);
        std::vector<std::uint32_t>().swap(hashes_);
        isFinished_.store(true, std::memory_order_release);
        return true;
    }
    const Row end = std::min<Row>(index_.size(), next_ + rowsAtOnce);
    for (; next_ < end; ++next_) {
        place(next_);
    }
    if (next_ == index_.size()) {
        table_ = {};
    }
    isFinished_.store(index_.size() == 0, std::memory_order_release);
    return isFinished();
}

void CopyTable::begin() {
    // Memory that is not written to costs nothing, and lists that grow must be copied.
    groups_.reserve(index_.size());
    counts_.reserve(index_.size());
    firsts_.reserve(index_.size());
    hashes_.reserve(index_.size());
    table_ = ZeroedNumbers::slotsFor(index_.size());
}

void CopyTable::place(Row row) {
    const std::uint32_t hash = hashOf(index_, row);
    const std::size_t mask = table_.mask();
    std::size_t slot = hash & mask;
    for (; table_[slot] != 0; slot = (slot + 1) & mask) {
        const Group group = table_[slot] - 1;
        if (hashes_[group] == hash && areCopies(index_, firsts_[group], row)) {
            ++counts_[group];
            groups_.push_back(group);
            return;
        }
    }
    const auto group = static_cast<Group>(counts_.size());
    table_[slot] = group + 1;
    hashes_.push_back(hash);
    firsts_.push_back(row);
    counts_.push_back(1);
    groups_.push_back(group);
}

std::vector<Row> CopyTable::copiesOf(Row row) const {
    std::vector<Row> rows;
    for (Row other = 0; other < groups_.size(); ++other) {
        if (groups_[other] == groups_[row]) {
            rows.push_back(other);
        }
    }
    return rows;
}

}  // namespace search
