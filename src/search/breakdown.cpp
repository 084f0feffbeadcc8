#include "search/breakdown.h"

#include <algorithm>
#include <array>
#include <map>

#include "search/query_parser.h"
#include "search/result_column.h"
#include "search/text_fold.h"

namespace search {
namespace {

constexpr std::size_t rowsAtOnce = 16384;
constexpr std::size_t groupings = 5;
constexpr std::size_t years = 10000;

struct SizeClass {
    std::int64_t first;
    std::string_view label;
    std::string_view term;
};
/// From the smallest on; each ends where the next begins.
constexpr std::array<SizeClass, 9> sizeClasses{
    {{0, "empty", "size:0"},
     {1, "up to 10 KB", "size:1..10239"},
     {std::int64_t{10} << 10, "10 KB to 100 KB", "size:10240..102399"},
     {std::int64_t{100} << 10, "100 KB to 1 MB", "size:102400..1048575"},
     {std::int64_t{1} << 20, "1 MB to 10 MB", "size:1048576..10485759"},
     {std::int64_t{10} << 20, "10 MB to 100 MB", "size:10485760..104857599"},
     {std::int64_t{100} << 20, "100 MB to 1 GB", "size:104857600..1073741823"},
     {std::int64_t{1} << 30, "1 GB to 2 GB", "size:1073741824..2147483647"},
     {std::int64_t{1} << 31, "2 GB and more", "size:>=2gb"}}};

std::size_t sizeClassOf(std::int64_t size) {
    std::size_t found = 0;
    while (found + 1 < sizeClasses.size() && sizeClasses[found + 1].first <= size) {
        ++found;
    }
    return found;
}

std::size_t groupsOf(const Index& index, Grouping grouping) {
    switch (grouping) {
        case Grouping::Medium:
            return index.media().size();
        case Grouping::Extension:
            return index.extensions().size();
        case Grouping::Year:
            return years;
        case Grouping::SizeClass:
            return sizeClasses.size();
        case Grouping::Keywords:
            break;
    }
    return index.annotationTexts().size();
}

bool isBigger(const BreakdownLine& left, const BreakdownLine& right) {
    return left.entries != right.entries ? left.entries > right.entries : left.label < right.label;
}

/// Keywords that differ in case or accents alone are one group, as the query that finds them is.
std::vector<BreakdownLine> mergedKeywords(const std::vector<BreakdownLine>& lines) {
    std::map<std::string, BreakdownLine> groups;
    for (const BreakdownLine& line : lines) {
        const auto [place, isNew] = groups.emplace(foldedText(line.label), line);
        if (!isNew) {
            BreakdownLine& group = place->second;
            group.entries += line.entries;
            group.files += line.files;
            group.bytes += line.bytes;
            group.isExact = group.isExact && line.isExact;
        }
    }
    std::vector<BreakdownLine> result;
    result.reserve(groups.size());
    for (auto& [folded, line] : groups) {
        result.push_back(std::move(line));
    }
    return result;
}

}  // namespace

Breakdown::Breakdown(const Index& index, std::span<const Row> rows, std::vector<Grouping> asked)
    : index_(index), rows_(rows), groupings_(std::move(asked)), counts_(groupings) {
    // The number of media is always told.
    if (!isAsked(Grouping::Medium)) {
        groupings_.push_back(Grouping::Medium);
    }
    for (const Grouping grouping : groupings_) {
        countsOf(grouping).resize(groupsOf(index_, grouping));
    }
}

bool Breakdown::isAsked(Grouping grouping) const {
    return std::ranges::find(groupings_, grouping) != groupings_.end();
}

Breakdown::Counts& Breakdown::countsOf(Grouping grouping) {
    return counts_[static_cast<std::size_t>(grouping)];
}

const Breakdown::Counts& Breakdown::countsOf(Grouping grouping) const {
    return counts_[static_cast<std::size_t>(grouping)];
}

bool Breakdown::run(const Budget& budget) {
    while (next_ < rows_.size()) {
        const std::size_t end = std::min(rows_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            count(rows_[next_]);
        }
        if (budget.isSpent()) {
            break;
        }
    }
    return next_ == rows_.size();
}

void Breakdown::add(Count& count, const Index& index, Row row) {
    ++count.entries;
    if (!index.isFolder(row)) {
        ++count.files;
        count.bytes += index.leastSize(row);
        count.isExact = count.isExact && index.isSizeKnown(row);
    }
}

void Breakdown::count(Row row) {
    Count all{total_.entries, total_.files, total_.bytes, total_.isExact};
    add(all, index_, row);
    total_ = {{}, {}, all.entries, all.files, all.bytes, all.isExact};
    const bool isFile = !index_.isFolder(row);
    for (const Grouping grouping : groupings_) {
        Counts& counts = countsOf(grouping);
        switch (grouping) {
            case Grouping::Medium:
                add(counts[index_.mediumPosition(row)], index_, row);
                break;
            case Grouping::Extension:
                if (isFile && index_.extensionId(row) != 0) {
                    add(counts[index_.extensionId(row)], index_, row);
                }
                break;
            case Grouping::Year:
                if (index_.modified(row) != unknownTime) {
                    add(counts[yearOf(index_.modified(row))], index_, row);
                }
                break;
            case Grouping::SizeClass:
                if (isFile) {
                    add(counts[sizeClassOf(index_.leastSize(row))], index_, row);
                }
                break;
            case Grouping::Keywords: {
                const TextPool::Id text = index_.annotation(index_.annotationId(row)).keywords;
                if (text != 0) {
                    add(counts[text], index_, row);
                }
                break;
            }
        }
    }
}

BreakdownLine Breakdown::lineOf(Grouping grouping, std::size_t group, const Count& count) const {
    BreakdownLine line{{}, {}, count.entries, count.files, count.bytes, count.isExact};
    const auto id = static_cast<TextPool::Id>(group);
    switch (grouping) {
        case Grouping::Medium:
            line.label = mediumTitle(index_.media()[group]);
            line.term = "medium:" + std::to_string(index_.media()[group].mediaId);
            break;
        case Grouping::Extension:
            line.label = index_.extensions()[id];
            line.term = "ext:" + quotedForQuery(line.label);
            break;
        case Grouping::Year:
            line.label = std::to_string(group);
            line.term = "date:" + std::string(4 - line.label.size(), '0') + line.label;
            break;
        case Grouping::SizeClass:
            line.label = sizeClasses[group].label;
            line.term = sizeClasses[group].term;
            break;
        case Grouping::Keywords:
            line.label = index_.annotationTexts()[id];
            line.term = "start:end:kw:" + quotedForQuery(line.label);
            break;
    }
    return line;
}

std::vector<BreakdownLine> Breakdown::lines(Grouping grouping) const {
    std::vector<BreakdownLine> lines;
    const Counts& counts = countsOf(grouping);
    for (std::size_t group = 0; group < counts.size(); ++group) {
        if (counts[group].entries > 0) {
            lines.push_back(lineOf(grouping, group, counts[group]));
        }
    }
    if (grouping == Grouping::Keywords) {
        lines = mergedKeywords(lines);
    }
    if (grouping == Grouping::Medium) {
        std::ranges::sort(lines, {},
                          [](const BreakdownLine& line) { return std::stoll(line.label); });
    } else if (grouping == Grouping::Extension || grouping == Grouping::Keywords) {
        std::ranges::sort(lines, isBigger);
    }
    return lines;
}

std::size_t Breakdown::mediaTouched() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        countsOf(Grouping::Medium), [](const Count& count) { return count.entries > 0; }));
}

}  // namespace search
