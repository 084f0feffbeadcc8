#include "search/duplicates.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <utility>

#include "search/folder_tree.h"
#include "search/step_sort.h"
#include "search/zeroed_numbers.h"

namespace search {
namespace {

constexpr std::size_t rowsAtOnce = 16384;
constexpr std::size_t pathsAtOnce = 4096;
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
    Work(const Index& index, std::shared_ptr<const std::vector<Row>> rows, SameBy sameBy)
        : index_(index), shared_(std::move(rows)), rows_(*shared_), sameBy_(sameBy), tree_(index) {}

    bool advance() {
        switch (phase_) {
            case Phase::Tree:
                if (tree_.advance()) {
                    contents_.resize(index_.pathCount());
                    depths_.reserve(index_.pathCount());
                    phase_ = Phase::Depths;
                }
                break;
            case Phase::Depths:
                findDepths();
                break;
            case Phase::Counting:
                countDepths();
                break;
            case Phase::Placing:
                placeByDepth();
                break;
            case Phase::Contents:
                addContents();
                break;
            case Phase::Grouping:
                group();
                break;
            case Phase::Members:
                collectMembers();
                break;
            case Phase::Collecting:
                collect();
                break;
            case Phase::Sorting:
                if (sorting_.advance()) {
                    groups_ = sorting_.take();
                    sorting_.dropSpare();
                    phase_ = Phase::Finished;
                }
                break;
            case Phase::Finished:
                break;
        }
        return phase_ == Phase::Finished;
    }

    const std::vector<DuplicateGroup>& groups() const { return groups_; }
    std::int64_t wasted() const { return wasted_; }

  private:
    enum class Phase {
        Tree,
        Depths,
        Counting,
        Placing,
        Contents,
        Grouping,
        Members,
        Collecting,
        Sorting,
        Finished
    };
    /// Folders first, then by the bytes wasted; the rows of two groups never begin with the same.
    struct Worse {
        bool operator()(const DuplicateGroup& left, const DuplicateGroup& right) const {
            if (left.isFolder != right.isFolder) {
                return left.isFolder;
            }
            return left.wasted != right.wasted ? left.wasted > right.wasted
                                               : left.rows.front() < right.rows.front();
        }
    };

    // The rows by their paths, the deepest paths first, so that a folder's contents are known when
    // the folder itself is counted in its own.

    void findDepths() {
        const std::size_t end = std::min<std::size_t>(index_.pathCount(), next_ + pathsAtOnce);
        for (; next_ < end; ++next_) {
            const std::string_view text = index_.pathText(static_cast<Index::PathId>(next_));
            depths_.push_back(static_cast<std::uint16_t>(
                std::min<std::ptrdiff_t>(UINT16_MAX, std::count(text.begin(), text.end(), '\\'))));
            deepest_ = std::max<std::size_t>(deepest_, depths_.back());
        }
        if (next_ == index_.pathCount()) {
            next_ = 0;
            depthStarts_.assign(deepest_ + 2, 0);
            phase_ = Phase::Counting;
        }
    }

    /// The deepest paths are at 0.
    std::size_t heightOf(Row row) const { return deepest_ - depths_[index_.pathId(row)]; }

    void countDepths() {
        const std::size_t end = std::min<std::size_t>(index_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            ++depthStarts_[heightOf(static_cast<Row>(next_)) + 1];
        }
        if (next_ == index_.size()) {
            next_ = 0;
            std::partial_sum(depthStarts_.begin(), depthStarts_.end(), depthStarts_.begin());
            order_ = ZeroedNumbers(index_.size());
            phase_ = Phase::Placing;
        }
    }

    void placeByDepth() {
        const std::size_t end = std::min<std::size_t>(index_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            const Row row = static_cast<Row>(next_);
            order_[depthStarts_[heightOf(row)]++] = row;
        }
        if (next_ == index_.size()) {
            next_ = 0;
            phase_ = Phase::Contents;
        }
    }

    void addContents() {
        const std::size_t end = std::min<std::size_t>(index_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            addToFolder(order_[next_]);
        }
        if (next_ == index_.size()) {
            order_ = {};
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
        table_ = ZeroedNumbers::slotsFor(rows_.size());
        // Memory that is not written to costs nothing, and lists that grow must be copied.
        numbers_.reserve(rows_.size());
        firsts_.reserve(rows_.size());
        hashes_.reserve(rows_.size());
        sizes_.reserve(rows_.size());
        groupOfFolder_.assign(index_.pathCount(), none);
    }

    void group() {
        const std::size_t end = std::min(rows_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            numbers_.push_back(counts(rows_[next_]) ? numberOf(rows_[next_]) : none);
        }
        if (next_ == rows_.size()) {
            next_ = 0;
            table_ = {};
            starts_.reserve(sizes_.size() + 1);
            starts_.push_back(0);
            phase_ = Phase::Members;
        }
    }

    std::uint32_t numberOf(Row row) {
        const std::uint32_t hash = hashOf(row);
        std::size_t slot = hash & table_.mask();
        for (; table_[slot] != 0; slot = (slot + 1) & table_.mask()) {
            const std::uint32_t number = table_[slot] - 1;
            if (hashes_[number] == hash && areSame(firsts_[number], row)) {
                ++sizes_[number];
                return number;
            }
        }
        const auto number = static_cast<std::uint32_t>(firsts_.size());
        table_[slot] = number + 1;
        firsts_.push_back(row);
        hashes_.push_back(hash);
        sizes_.push_back(1);
        return number;
    }

    /// The rows of each number that has several, one after the other: first where those of each
    /// begin, then the rows.
    void collectMembers() {
        if (starts_.size() <= sizes_.size()) {
            const std::size_t end = std::min(sizes_.size(), starts_.size() - 1 + rowsAtOnce);
            for (std::size_t number = starts_.size() - 1; number < end; ++number) {
                starts_.push_back(starts_.back() + (sizes_[number] > 1 ? sizes_[number] : 0));
            }
            return;
        }
        if (next_ == 0) {
            members_ = ZeroedNumbers(starts_.back());
            filled_ = ZeroedNumbers(sizes_.size());
        }
        const std::size_t end = std::min(rows_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            const std::uint32_t number = numbers_[next_];
            if (number != none && sizes_[number] > 1) {
                members_[starts_[number] + filled_[number]++] = rows_[next_];
                if (index_.isFolder(rows_[next_])) {
                    groupOfFolder_[tree_.pathOf(rows_[next_])] = number;
                }
            }
        }
        if (next_ == rows_.size()) {
            next_ = 0;
            phase_ = Phase::Collecting;
        }
    }

    void collect() {
        const std::size_t end = std::min(sizes_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            const std::size_t count = starts_[next_ + 1] - starts_[next_];
            if (count == 0) {
                continue;
            }
            const std::span<const Row> rows(&members_[starts_[next_]], count);
            if (!isInSameFolders(rows)) {
                groups_.push_back(groupOf(rows));
                wasted_ += groups_.back().wasted;
            }
        }
        if (next_ == sizes_.size()) {
            sorting_.start(std::move(groups_));
            phase_ = Phase::Sorting;
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
        group.rows = rows;
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
    std::shared_ptr<const std::vector<Row>> shared_;
    std::span<const Row> rows_;
    SameBy sameBy_;
    FolderTree tree_;
    Phase phase_ = Phase::Tree;
    std::size_t next_ = 0;
    std::vector<std::uint16_t> depths_;  ///< by path
    std::size_t deepest_ = 0;
    std::vector<std::size_t> depthStarts_;
    ZeroedNumbers order_;
    std::vector<Contents> contents_;            ///< by path
    ZeroedNumbers table_;                       ///< open addressing; the number plus one
    std::vector<std::uint32_t> hashes_;         ///< by number
    std::vector<Row> firsts_;                   ///< by number
    std::vector<std::uint32_t> sizes_;          ///< by number
    std::vector<std::uint32_t> numbers_;        ///< by position in rows_
    std::vector<std::uint32_t> groupOfFolder_;  ///< by path: the number of the folder it belongs to
    std::vector<std::size_t> starts_;           ///< by number, in members_
    ZeroedNumbers members_;
    ZeroedNumbers filled_;  ///< by number: its rows that are in members_ already
    std::vector<Index::PathId> parents_;
    std::vector<std::uint32_t> media_;
    std::vector<DuplicateGroup> groups_;
    StepSort<DuplicateGroup, Worse> sorting_{Worse()};
    std::int64_t wasted_ = 0;
};

DuplicateSearch::DuplicateSearch(const Index& index, std::shared_ptr<const std::vector<Row>> rows,
                                 SameBy sameBy)
    : work_(std::make_unique<Work>(index, std::move(rows), sameBy)) {}
DuplicateSearch::DuplicateSearch(const Index& index, std::vector<Row> rows, SameBy sameBy)
    : DuplicateSearch(index, std::make_shared<const std::vector<Row>>(std::move(rows)), sameBy) {}
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

std::int64_t DuplicateSearch::wasted() const { return work_->wasted(); }

}  // namespace search
