#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "search/budget.h"
#include "search/index.h"

namespace search {

/// By what entries are counted together.
enum class Grouping { Medium, Extension, Year, SizeClass, Keywords };

/// One group: a facet at the side of the results, or a line of the statistics.
struct BreakdownLine {
    std::string label;        ///< "7: Holiday", "jpg", "2004", "1 MB to 10 MB"
    std::string term;         ///< the query term that finds the group: "medium:7", "ext:jpg"
    std::size_t entries = 0;  ///< files and folders
    std::size_t files = 0;
    std::int64_t bytes = 0;  ///< at least, where isExact is false
    bool isExact = true;     ///< the sizes of all its files are known exactly
    friend bool operator==(const BreakdownLine&, const BreakdownLine&) = default;
};

/// Counts rows by several groupings at once, in steps. Folders count as entries without bytes.
/// Groups without entries do not appear, nor do entries without extension, date or keywords in the
/// groupings by these. Files alone are counted by extension and size class.
class Breakdown {
  public:
    /// `index` and `rows` must outlive this.
    Breakdown(const Index& index, std::span<const Row> rows, std::vector<Grouping> groupings);

    /// Counts on until all rows are counted or the budget is spent; true when all are.
    bool run(const Budget& budget);
    std::size_t done() const { return next_; }

    /// The groups of one of the groupings, so far: media by number, years and size classes
    /// ascending, extensions and keywords by falling number of entries, then by label.
    std::vector<BreakdownLine> lines(Grouping grouping) const;
    /// All rows together; label and term are empty.
    const BreakdownLine& total() const { return total_; }
    /// Media that the rows lie on.
    std::size_t mediaTouched() const;

  private:
    struct Count {
        std::size_t entries = 0;
        std::size_t files = 0;
        std::int64_t bytes = 0;
        bool isExact = true;
    };
    using Counts = std::vector<Count>;

    void count(Row row);
    static void add(Count& count, const Index& index, Row row);
    Counts& countsOf(Grouping grouping);
    const Counts& countsOf(Grouping grouping) const;
    bool isAsked(Grouping grouping) const;
    BreakdownLine lineOf(Grouping grouping, std::size_t group, const Count& count) const;

    const Index& index_;
    std::span<const Row> rows_;
    std::vector<Grouping> groupings_;
    std::vector<Counts> counts_;  ///< by grouping, then by group
    BreakdownLine total_;
    std::size_t next_ = 0;
};

}  // namespace search
