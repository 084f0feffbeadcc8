#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

#include "search/index.h"
#include "search/zeroed_numbers.h"

namespace search {

/// Which entries are copies of one another: both files or both folders, of the same name (case and
/// accents ignored) and the same stored size. Made on first use, in steps that any thread may call;
/// once finished, it never changes and everybody may ask.
class CopyTable {
  public:
    using Group = std::uint32_t;

    /// `index` must outlive this and be complete.
    explicit CopyTable(const Index& index) : index_(index) {}

    /// Goes on with some ten thousand entries; true when all are done. Other callers wait.
    bool advance();
    bool isFinished() const { return isFinished_.load(std::memory_order_acquire); }
    void finish() {
        while (!advance()) {
        }
    }

    // Once it is finished:
    /// The entry's group; the groups are numbered in the order of their first entries.
    Group group(Row row) const { return groups_[row]; }
    Group groupCount() const { return static_cast<Group>(counts_.size()); }
    /// Number of entries of a group.
    std::uint32_t countOf(Group group) const { return counts_[group]; }
    /// Number of copies of an entry, itself included.
    std::uint32_t copies(Row row) const { return counts_[groups_[row]]; }
    /// All entries of the group of `row`, ascending; looks through the whole index.
    std::vector<Row> copiesOf(Row row) const;

  private:
    void begin();
    void place(Row row);

    const Index& index_;
    std::mutex mutex_;
    std::atomic<bool> isFinished_{false};
    Row next_ = 0;
    std::vector<Group> groups_;
    std::vector<std::uint32_t> counts_;
    std::vector<Row> firsts_;            ///< first entry of each group, while they are made
    std::vector<std::uint32_t> hashes_;  ///< of each group, while they are made
    ZeroedNumbers table_;                ///< open addressing; the group plus one, 0 where free
};

}  // namespace search
