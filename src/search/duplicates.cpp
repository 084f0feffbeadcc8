#include "search/duplicates.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <utility>

#include "search/folder_tree.h"

namespace search {
namespace {

constexpr std::size_t rowsAtOnce = 16384;
constexpr std::uint32_t none = UINT32_MAX;

std::uint64_t mixed(std::uint64_t number) {
    number ^= number >> 32;
    number *= 0xD6E8FEB86659FD93u;
    number ^= number >> 32;
    number *= 0xD6E8FEB86659FD93u;
    return number ^ number >> 32;
}

/// What is in a folder, whatever the order of its entries: two sums of 64 bits, and what they
/// weigh.
struct Contents {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    std::uint64_t entries = 0;
    std::int64_t bytes = 0;
    bool isExact = true;

    bool isSame(const Contents& other) const {
        return first == other.first && second == other.second && entries == other.entries;
    }
};

}  // namespace

/// The steps of the search, one after the other.
class DuplicateSearch::Work {
  public:
    Work(const Index& index, std::vector<Row> rows, SameBy sameBy)
        : index_(index), rows_(std::move(rows)), sameBy_(sameBy), tree_(index) {}

    bool advance() {
        switch (phase_) {
            case Phase::Tree:
                if (tree_.advance()) {
                    orderPaths();
                    phase_ = Phase::Contents;
                }
                break;
            case Phase::Contents:
                addContents();
                break;
            case Phase::Grouping:
                group();
                break;
            case Phase::Collecting:
                collect();
                break;
            case Phase::Finished:
                break;
        }
        return phase_ == Phase::Finished;
    }

    const std::vector<DuplicateGroup>& groups() const { return groups_; }

  private:
    enum class Phase { Tree, Contents, Grouping, Collecting, Finished };

    /// The rows by their paths, the deepest paths first, so that a folder's contents are known when
    /// the folder itself is counted in its own.
    void orderPaths() {
        std::vector<std::uint16_t> depths(index_.pathCount());
        std::size_t deepest = 0;
        for (Index::PathId path = 0; path < index_.pathCount(); ++path) {
            const std::string_view text = index_.pathText(path);
            depths[path] = static_cast<std::uint16_t>(
                std::min<std::ptrdiff_t>(UINT16_MAX, std::count(text.begin(), text.end(), '\\')));
            deepest = std::max<std::size_t>(deepest, depths[path]);
        }
        std::vector<std::size_t> starts(deepest + 2);
        for (Row row = 0; row < index_.size(); ++row) {
            ++starts[deepest - depths[index_.pathId(row)] + 1];
        }
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        order_.resize(index_.size());
        for (Row row = 0; row < index_.size(); ++row) {
            order_[starts[deepest - depths[index_.pathId(row)]]++] = row;
        }
        contents_.resize(index_.pathCount());
    }

    void addContents() {
        const std::size_t end = std::min(order_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            addToFolder(order_[next_]);
        }
        if (next_ == order_.size()) {
            std::vector<Row>().swap(order_);
            next_ = 0;
            beginGrouping();
            phase_ = Phase::Grouping;
        }
    }

    void addToFolder(Row row) {
        std::uint64_t hash = index_.isFolder(row) ? 1 : 2;
        if (sameBy_.name) {
            hash = mixed(hash ^ std::hash<std::string_view>{}(index_.foldedName(row)));
        }
        if (sameBy_.size) {
            hash = mixed(hash + static_cast<std::uint32_t>(index_.size(row)));
        }
        if (sameBy_.date && !index_.isFolder(row)) {
            hash = mixed(hash + static_cast<std::uint64_t>(index_.modified(row)));
        }
        Contents& folder = contents_[index_.pathId(row)];
        if (const Contents* const inner = contentsOf(row)) {
            hash = mixed(hash ^ inner->first) + mixed(inner->second + inner->entries);
            folder.entries += inner->entries;
            folder.bytes += inner->bytes;
            folder.isExact = folder.isExact && inner->isExact;
        }
        folder.first += mixed(hash);
        folder.second += mixed(~hash * 0x9E3779B97F4A7C15u);
        ++folder.entries;
        if (!index_.isFolder(row)) {
            folder.bytes += index_.leastSize(row);
            folder.isExact = folder.isExact && index_.isSizeKnown(row);
        }
    }

    /// What is in a folder; null for files and empty folders.
    const Contents* contentsOf(Row row) const {
        const Index::PathId path = tree_.pathOf(row);
        return path == FolderTree::none || tree_.folderOf(path) != row ? nullptr : &contents_[path];
    }

    // Rows that are the same get the same number.

    bool counts(Row row) const {
        if (index_.isFolder(row)) {
            const Contents* const contents = contentsOf(row);
            return contents != nullptr && (contents->bytes > 0 || !sameBy_.size);
        }
        return index_.size(row) != 0 || !sameBy_.size;
    }

    std::uint32_t hashOf(Row row) const {
        std::uint64_t hash = 3;
        if (index_.isFolder(row)) {
            const Contents& contents = *contentsOf(row);
            hash = contents.first + mixed(contents.second);
        } else {
            if (sameBy_.name) {
                hash = std::hash<std::string_view>{}(index_.foldedName(row));
            }
            if (sameBy_.size) {
                hash = mixed(hash + static_cast<std::uint32_t>(index_.size(row)));
            }
            if (sameBy_.date) {
                hash = mixed(hash + static_cast<std::uint64_t>(index_.modified(row)));
            }
        }
        return static_cast<std::uint32_t>(mixed(hash));
    }

    bool areSame(Row left, Row right) const {
        if (index_.isFolder(left) != index_.isFolder(right)) {
            return false;
        }
        if (index_.isFolder(left)) {
            return contentsOf(left)->isSame(*contentsOf(right));
        }
        return (!sameBy_.name || index_.foldedName(left) == index_.foldedName(right)) &&
               (!sameBy_.size || index_.size(left) == index_.size(right)) &&
               (!sameBy_.date || index_.modified(left) == index_.modified(right));
    }

    void beginGrouping() {
        std::size_t slots = 64;
        while (slots < 2 * rows_.size()) {
            slots *= 2;
        }
        table_.assign(slots, 0);
        numbers_.assign(rows_.size(), none);
        groupOfFolder_.assign(index_.pathCount(), none);
    }

    void group() {
        const std::size_t end = std::min(rows_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            if (counts(rows_[next_])) {
                place(next_);
            }
        }
        if (next_ == rows_.size()) {
            next_ = 0;
            collectMembers();
            phase_ = Phase::Collecting;
        }
    }

    void place(std::size_t position) {
        const Row row = rows_[position];
        const std::uint32_t hash = hashOf(row);
        const std::size_t mask = table_.size() - 1;
        std::size_t slot = hash & mask;
        for (; table_[slot] != 0; slot = (slot + 1) & mask) {
            const std::uint32_t number = table_[slot] - 1;
            if (hashes_[number] == hash && areSame(firsts_[number], row)) {
                numbers_[position] = number;
                ++sizes_[number];
                return;
            }
        }
        const auto number = static_cast<std::uint32_t>(firsts_.size());
        table_[slot] = number + 1;
        firsts_.push_back(row);
        hashes_.push_back(hash);
        sizes_.push_back(1);
        numbers_[position] = number;
    }

    /// The rows of each number that has several, one after the other.
    void collectMembers() {
        std::vector<std::uint32_t>().swap(table_);
        std::vector<std::uint32_t>().swap(hashes_);
        starts_.assign(sizes_.size() + 1, 0);
        for (std::size_t number = 0; number < sizes_.size(); ++number) {
            starts_[number + 1] = starts_[number] + (sizes_[number] > 1 ? sizes_[number] : 0);
        }
        members_.resize(starts_.back());
        std::vector<std::size_t> ends(starts_.begin(), starts_.end() - 1);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const std::uint32_t number = numbers_[i];
            if (number != none && sizes_[number] > 1) {
                members_[ends[number]++] = rows_[i];
                if (index_.isFolder(rows_[i])) {
                    groupOfFolder_[tree_.pathOf(rows_[i])] = number;
                }
            }
        }
    }

    void collect() {
        const std::size_t end = std::min(sizes_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            const std::span<const Row> rows(members_.data() + starts_[next_],
                                            starts_[next_ + 1] - starts_[next_]);
            if (!rows.empty() && !isInSameFolders(rows)) {
                groups_.push_back(groupOf(rows));
            }
        }
        if (next_ == sizes_.size()) {
            std::ranges::stable_sort(groups_, [](const auto& left, const auto& right) {
                return left.isFolder != right.isFolder ? left.isFolder : left.wasted > right.wasted;
            });
            phase_ = Phase::Finished;
        }
    }

    /// True when each row lies in another one of the folders of a single group: that group says it
    /// all.
    bool isInSameFolders(std::span<const Row> rows) {
        std::uint32_t group = none;
        parents_.clear();
        for (const Row row : rows) {
            const std::uint32_t own = groupOfFolder_[index_.pathId(row)];
            if (own == none || (group != none && group != own)) {
                return false;
            }
            group = own;
            parents_.push_back(index_.pathId(row));
        }
        std::ranges::sort(parents_);
        return std::ranges::adjacent_find(parents_) == parents_.end();
    }

    DuplicateGroup groupOf(std::span<const Row> rows) {
        DuplicateGroup group;
        group.rows.assign(rows.begin(), rows.end());
        group.isFolder = index_.isFolder(rows.front());
        std::int64_t all = 0;
        media_.clear();
        for (const Row row : rows) {
            const Contents* const contents = group.isFolder ? contentsOf(row) : nullptr;
            const std::int64_t bytes =
                contents != nullptr ? contents->bytes : index_.leastSize(row);
            group.isExact = group.isExact &&
                            (contents != nullptr ? contents->isExact : index_.isSizeKnown(row));
            group.bytes = std::max(group.bytes, bytes);
            all += bytes;
            media_.push_back(index_.mediumPosition(row));
        }
        group.wasted = all - group.bytes;
        std::ranges::sort(media_);
        group.media =
            static_cast<std::uint32_t>(std::unique(media_.begin(), media_.end()) - media_.begin());
        return group;
    }

    const Index& index_;
    std::vector<Row> rows_;
    SameBy sameBy_;
    FolderTree tree_;
    Phase phase_ = Phase::Tree;
    std::size_t next_ = 0;
    std::vector<Row> order_;
    std::vector<Contents> contents_;            ///< by path
    std::vector<std::uint32_t> table_;          ///< open addressing; the number plus one
    std::vector<std::uint32_t> hashes_;         ///< by number
    std::vector<Row> firsts_;                   ///< by number
    std::vector<std::uint32_t> sizes_;          ///< by number
    std::vector<std::uint32_t> numbers_;        ///< by position in rows_
    std::vector<std::uint32_t> groupOfFolder_;  ///< by path: the number of the folder it belongs to
    std::vector<std::size_t> starts_;
    std::vector<Row> members_;
    std::vector<Index::PathId> parents_;
    std::vector<std::uint32_t> media_;
    std::vector<DuplicateGroup> groups_;
};

DuplicateSearch::DuplicateSearch(const Index& index, std::vector<Row> rows, SameBy sameBy)
    : work_(std::make_unique<Work>(index, std::move(rows), sameBy)) {}
DuplicateSearch::~DuplicateSearch() = default;

bool DuplicateSearch::run(const Budget& budget) {
    while (!work_->advance()) {
        if (budget.isSpent()) {
            return false;
        }
    }
    return true;
}

const std::vector<DuplicateGroup>& DuplicateSearch::groups() const { return work_->groups(); }

std::int64_t DuplicateSearch::wasted() const {
    std::int64_t bytes = 0;
    for (const DuplicateGroup& group : groups()) {
        bytes += group.wasted;
    }
    return bytes;
}

}  // namespace search
