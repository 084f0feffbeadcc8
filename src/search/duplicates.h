#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "search/budget.h"
#include "search/index.h"

namespace search {

/// What duplicates have in common, besides being both files or both folders.
struct SameBy {
    bool name = true;  ///< case and accents ignored
    bool size = true;
    bool date = false;  ///< the date of the last change
    friend bool operator==(const SameBy&, const SameBy&) = default;
};

/// Two or more entries that have it in common.
struct DuplicateGroup {
    std::span<const Row> rows;  ///< ascending; as long as the search
    bool isFolder = false;      ///< folders whose whole contents are the same, by names and sizes
    std::int64_t bytes = 0;     ///< of the largest of them, with everything in it
    std::int64_t wasted = 0;    ///< bytes of all but the largest
    bool isExact =
        true;  ///< false: a size is not known exactly, and the bytes are at least so many
    std::uint32_t media = 0;  ///< different media that they lie on
};

/// Looks for duplicates among the given rows, in steps. Folders that are the same in all their
/// contents come first, as one group; what lies in them, once in each, is not listed again. Then
/// follow the groups of files. Both are ordered by the bytes wasted, most first. Empty files and
/// empty folders are no duplicates of anything, unless sizes do not count.
class DuplicateSearch {
  public:
    /// `rows` must be ascending; only groups of at least two of them are found. `index` must
    /// outlive this.
    DuplicateSearch(const Index& index, std::shared_ptr<const std::vector<Row>> rows,
                    SameBy sameBy);
    DuplicateSearch(const Index& index, std::vector<Row> rows, SameBy sameBy);
    DuplicateSearch(const DuplicateSearch&) = delete;
    DuplicateSearch& operator=(const DuplicateSearch&) = delete;
    ~DuplicateSearch();

    bool run(const Budget& budget);
    /// Once run() has been true.
    const std::vector<DuplicateGroup>& groups() const;
    /// Bytes wasted by all groups.
    std::int64_t wasted() const;

  private:
    class Work;
    std::unique_ptr<Work> work_;
};

}  // namespace search
