#include "search/predicate.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "search/copies.h"
#include "search/medium_match.h"
#include "search/text_predicates.h"

namespace search {
namespace {

using Parts = std::vector<std::unique_ptr<Predicate>>;

Parts makeParts(const Index& index, const std::vector<Node>& nodes) {
    Parts parts;
    parts.reserve(nodes.size());
    for (const Node& node : nodes) {
        parts.push_back(makePredicate(index, node));
    }
    std::ranges::stable_sort(parts, {}, [](const auto& part) { return part->cost(); });
    return parts;
}

int costOf(const Parts& parts) {
    int cost = 0;
    for (const auto& part : parts) {
        cost += part->cost();
    }
    return cost;
}

class AndPredicate final : public Predicate {
  public:
    explicit AndPredicate(Parts parts) : parts_(std::move(parts)) {}
    void filter(Slice& slice) override {
        for (const auto& part : parts_) {
            if (slice.isEmpty()) {
                return;
            }
            part->filter(slice);
        }
    }
    int cost() const override { return costOf(parts_); }

  private:
    Parts parts_;
};

class OrPredicate final : public Predicate {
  public:
    explicit OrPredicate(Parts parts) : parts_(std::move(parts)) {}
    void filter(Slice& slice) override {
        Slice found(slice.first);
        for (const auto& part : parts_) {
            Slice rest = slice;
            rest.remove(found);
            if (rest.isEmpty()) {
                break;
            }
            part->filter(rest);
            found.add(rest);
        }
        slice = found;
    }
    int cost() const override { return costOf(parts_); }

  private:
    Parts parts_;
};

class NotPredicate final : public Predicate {
  public:
    explicit NotPredicate(std::unique_ptr<Predicate> part) : part_(std::move(part)) {}
    void filter(Slice& slice) override {
        Slice found = slice;
        part_->filter(found);
        slice.remove(found);
    }
    int cost() const override { return part_->cost(); }

  private:
    std::unique_ptr<Predicate> part_;
};

/// A test of one row after the other.
template <typename Test>
class RowPredicate final : public Predicate {
  public:
    RowPredicate(Test test, int cost) : test_(std::move(test)), cost_(cost) {}
    void filter(Slice& slice) override { slice.keep(test_); }
    int cost() const override { return cost_; }

  private:
    Test test_;
    int cost_;
};

template <typename Test>
std::unique_ptr<Predicate> rowPredicate(Test test, int cost = 1) {
    return std::make_unique<RowPredicate<Test>>(std::move(test), cost);
}

/// A size that is not known exactly may be anything from 2 GiB on.
bool sizeIsIn(const Index& index, Row row, const Span& span) {
    if (index.isFolder(row)) {
        return false;
    }
    return index.isSizeKnown(row) ? span.contains(index.size(row))
                                  : span.last >= index.leastSize(row);
}

bool timeIsIn(LocalTime time, const Span& span) {
    return time != unknownTime && span.contains(time);
}

/// The times at which the media were last read in.
std::vector<LocalTime> scanTimes(const Index& index) {
    std::vector<LocalTime> times;
    for (const base::MediaInfo& medium : index.media()) {
        const LocalTime update = parseArchiveDate(medium.archiveUpdate);
        times.push_back(update != unknownTime ? update : parseArchiveDate(medium.archiveDate));
    }
    return times;
}

std::int64_t depthOf(const Index& index, Row row) {
    const std::string_view path = index.path(row);
    return std::count(path.begin(), path.end(), '\\') + 1;
}

std::int64_t lengthOf(const Index& index, Row row) {
    return static_cast<std::int64_t>(base::utf16Length(index.path(row)) + 1 +
                                     base::utf16Length(index.name(row)));
}

std::unique_ptr<Predicate> makeNumberPredicate(const Index& index, const NumberCondition& asked) {
    const Span span = asked.span;
    switch (asked.measure) {
        case Measure::Size:
            return rowPredicate([&index, span](Row row) { return sizeIsIn(index, row, span); });
        case Measure::Modified:
            return rowPredicate(
                [&index, span](Row row) { return timeIsIn(index.modified(row), span); });
        case Measure::Created:
            return rowPredicate(
                [&index, span](Row row) { return timeIsIn(index.created(row), span); });
        case Measure::Scanned:
            return rowPredicate([&index, span, times = scanTimes(index)](Row row) {
                return timeIsIn(times[index.mediumPosition(row)], span);
            });
        case Measure::Depth:
            return rowPredicate(
                [&index, span](Row row) { return span.contains(depthOf(index, row)); }, 3);
        case Measure::Length:
            return rowPredicate(
                [&index, span](Row row) { return span.contains(lengthOf(index, row)); }, 6);
        case Measure::Copies:
            break;
    }
    return rowPredicate([&copies = std::as_const(index.copies()),
                         span](Row row) { return span.contains(copies.copies(row)); },
                        2);
}

std::unique_ptr<Predicate> makeMediumPredicate(const Index& index, const MediumCondition& asked) {
    std::vector<bool> chosen = mediaNamed(index, asked.media);
    if (asked.test == MediumCondition::Test::On) {
        return rowPredicate([&index, chosen = std::move(chosen)](Row row) {
            return chosen[index.mediumPosition(row)];
        });
    }
    // Groups with an entry on one of the chosen media, or on one of the others.
    const bool isOnly = asked.test == MediumCondition::Test::Only;
    const CopyTable& copies = index.copies();
    std::vector<bool> excluded(copies.groupCount());
    for (Row row = 0; row < index.size(); ++row) {
        if (chosen[index.mediumPosition(row)] != isOnly) {
            excluded[copies.group(row)] = true;
        }
    }
    return rowPredicate([&copies, excluded = std::move(excluded)](Row row) {
        return !excluded[copies.group(row)];
    });
}

std::unique_ptr<Predicate> makeDriveKindPredicate(const Index& index,
                                                  const DriveKindCondition& asked) {
    std::vector<bool> chosen;
    for (const base::MediaInfo& medium : index.media()) {
        chosen.push_back(foldedText(medium.mediaType).find(asked.text) != std::string::npos);
    }
    return rowPredicate([&index, chosen = std::move(chosen)](Row row) {
        return chosen[index.mediumPosition(row)];
    });
}

std::unique_ptr<Predicate> makeExtensionPredicate(const Index& index,
                                                  const ExtensionCondition& asked) {
    std::vector<bool> chosen(index.extensions().size());
    for (Index::ExtensionId id = 0; id < index.extensions().size(); ++id) {
        chosen[id] =
            std::ranges::find(asked.extensions, index.extensions()[id]) != asked.extensions.end();
    }
    return rowPredicate([&index, chosen = std::move(chosen)](Row row) {
        return !index.isFolder(row) && chosen[index.extensionId(row)];
    });
}

bool has(const Index& index, Row row, Property property) {
    const Index::Annotation& annotation = index.annotation(index.annotationId(row));
    switch (property) {
        case Property::File:
            return !index.isFolder(row);
        case Property::Folder:
            return index.isFolder(row);
        case Property::Keywords:
            return annotation.keywords != 0;
        case Property::Notes:
            return annotation.notes1 != 0 || annotation.notes2 != 0;
        case Property::Notes1:
            return annotation.notes1 != 0;
        case Property::Notes2:
            return annotation.notes2 != 0;
        case Property::Date:
            return index.modified(row) != unknownTime;
        case Property::Extension:
            return index.extensionId(row) != 0;
    }
    return false;
}

}  // namespace

std::unique_ptr<Predicate> makePredicate(const Index& index, const Node& node) {
    switch (node.kind) {
        case Node::Kind::And:
            return std::make_unique<AndPredicate>(makeParts(index, node.parts));
        case Node::Kind::Or:
            return std::make_unique<OrPredicate>(makeParts(index, node.parts));
        case Node::Kind::Not:
            return std::make_unique<NotPredicate>(makePredicate(index, node.parts.front()));
        case Node::Kind::Text:
            return makeTextPredicate(index, node.text);
        case Node::Kind::Number:
            return makeNumberPredicate(index, node.number);
        case Node::Kind::Medium:
            return makeMediumPredicate(index, node.medium);
        case Node::Kind::DriveKind:
            return makeDriveKindPredicate(index, node.driveKind);
        case Node::Kind::Extension:
            return makeExtensionPredicate(index, node.extension);
        case Node::Kind::Property:
            break;
    }
    return rowPredicate(
        [&index, property = node.property.property](Row row) { return has(index, row, property); });
}

bool needsCopies(const Node& node) {
    switch (node.kind) {
        case Node::Kind::Number:
            return node.number.measure == Measure::Copies;
        case Node::Kind::Medium:
            return node.medium.test != MediumCondition::Test::On;
        default:
            return std::ranges::any_of(node.parts, needsCopies);
    }
}

}  // namespace search
