#include "search/media_comparison.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "search/text_fold.h"

namespace search {
namespace {

using Kind = Difference::Kind;

struct Item {
    std::string path;   ///< as it is compared
    std::string exact;  ///< as it is
    Row row = 0;
};

std::vector<Item> itemsOf(const ComparedMedium& medium) {
    std::vector<Item> items;
    for (Row row = 0; row < medium.index.size(); ++row) {
        if (medium.index.medium(row).mediaId == medium.mediaId) {
            std::string path = pathOnMedium(medium.index, row);
            items.push_back({foldedText(path, {false, true}), std::move(path), row});
        }
    }
    std::ranges::sort(items, {},
                      [](const Item& item) { return std::tie(item.path, item.exact, item.row); });
    return items;
}

using Place = std::vector<Item>::const_iterator;

/// Behind the last of the items that are compared by the path of `first`.
Place endOfPath(Place first, Place end) {
    return std::find_if(first, end, [&](const Item& item) { return item.path != first->path; });
}

class Comparison {
  public:
    Comparison(const Index& left, const Index& right) : left_(left), right_(right) {}

    void comparePaths(const std::vector<Item>& left, const std::vector<Item>& right) {
        auto here = left.begin();
        auto there = right.begin();
        while (here != left.end() || there != right.end()) {
            const int order = here == left.end()     ? 1
                              : there == right.end() ? -1
                                                     : here->path.compare(there->path);
            if (order < 0) {
                removed_.push_back(*here++);
            } else if (order > 0) {
                added_.push_back(*there++);
            } else {
                const auto hereEnd = endOfPath(here, left.end());
                const auto thereEnd = endOfPath(there, right.end());
                compareSamePath({here, hereEnd}, {there, thereEnd});
                here = hereEnd;
                there = thereEnd;
            }
        }
    }

    /// What is missing here and new there may be the same file.
    void findMoves() {
        std::unordered_multimap<std::string, std::size_t> places;
        for (std::size_t i = removed_.size(); i-- > 0;) {
            places.emplace(identityOf(left_, removed_[i].row), i);
        }
        std::vector<bool> isMoved(removed_.size());
        for (const Item& item : added_) {
            const auto found = right_.isFolder(item.row)
                                   ? places.end()
                                   : places.find(identityOf(right_, item.row));
            if (found == places.end()) {
                add(Kind::Added, item.path, Difference::none, item.row);
                continue;
            }
            isMoved[found->second] = true;
            add(Kind::Moved, item.path, removed_[found->second].row, item.row);
            places.erase(found);
        }
        for (std::size_t i = 0; i < removed_.size(); ++i) {
            if (!isMoved[i]) {
                add(Kind::Removed, removed_[i].path, removed_[i].row, Difference::none);
            }
        }
    }

    std::vector<Difference> take() {
        std::ranges::stable_sort(found_, {}, &Found::path);
        std::vector<Difference> result;
        for (const Found& found : found_) {
            result.push_back(found.difference);
        }
        return result;
    }

  private:
    struct Found {
        std::string path;
        Difference difference;
    };

    /// Entries whose paths differ in case at most, by their exact paths. Each has its like by its
    /// exact path first; only what is left is taken for renamed.
    void compareSamePath(std::span<const Item> left, std::span<const Item> right) {
        std::vector<Item> leftRest;
        std::vector<Item> rightRest;
        auto here = left.begin();
        auto there = right.begin();
        while (here != left.end() && there != right.end()) {
            const int order = here->exact.compare(there->exact);
            if (order == 0) {
                compareEntries(*here++, *there++);
            } else if (order < 0) {
                leftRest.push_back(*here++);
            } else {
                rightRest.push_back(*there++);
            }
        }
        leftRest.insert(leftRest.end(), here, left.end());
        rightRest.insert(rightRest.end(), there, right.end());
        const std::size_t pairs = std::min(leftRest.size(), rightRest.size());
        for (std::size_t i = 0; i < pairs; ++i) {
            compareEntries(leftRest[i], rightRest[i]);
        }
        const auto behindPairs = static_cast<std::ptrdiff_t>(pairs);
        removed_.insert(removed_.end(), leftRest.begin() + behindPairs, leftRest.end());
        added_.insert(added_.end(), rightRest.begin() + behindPairs, rightRest.end());
    }

    void compareEntries(const Item& left, const Item& right) {
        const bool isFolder = left_.isFolder(left.row);
        const bool isOfOtherKind = isFolder != right_.isFolder(right.row);
        const bool isOther = left_.size(left.row) != right_.size(right.row) ||
                             left_.modified(left.row) != right_.modified(right.row);
        if (isOfOtherKind || (!isFolder && isOther)) {
            add(Kind::Changed, left.path, left.row, right.row);
        }
    }

    /// Name, size and date; a folder is like nothing else.
    static std::string identityOf(const Index& index, Row row) {
        if (index.isFolder(row)) {
            return {};
        }
        return foldedText(index.name(row), {false, true}) + Index::border +
               std::to_string(index.size(row)) + Index::border +
               std::to_string(index.modified(row));
    }

    void add(Kind kind, const std::string& path, Row left, Row right) {
        found_.push_back({path, {kind, left, right}});
    }

    const Index& left_;
    const Index& right_;
    std::vector<Item> removed_;
    std::vector<Item> added_;
    std::vector<Found> found_;
};

}  // namespace

std::string pathOnMedium(const Index& index, Row row) {
    const std::string path = index.wholePath(row);
    const std::size_t colon = path.find(':');
    return colon == std::string::npos ? path : path.substr(colon + 1);
}

std::vector<Difference> compareMedia(const ComparedMedium& left, const ComparedMedium& right) {
    Comparison comparison(left.index, right.index);
    comparison.comparePaths(itemsOf(left), itemsOf(right));
    comparison.findMoves();
    return comparison.take();
}

}  // namespace search
