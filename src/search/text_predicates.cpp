#include "search/text_predicates.h"

#include <algorithm>
#include <string>
#include <vector>

#include "search/text_test.h"

namespace search {
namespace {

constexpr int sequenceCost = 10;
constexpr int textCost = 20;
constexpr int storedTextCost = 40;
constexpr int expressionCost = 100;

int costOf(const TextTest& test, const TextCondition& condition) {
    if (condition.match == TextMatch::Expression) {
        return expressionCost;
    }
    return test.isPlain() ? sequenceCost : test.needsFoldedOnly() ? textCost : storedTextCost;
}

/// The answers to a test on things that many rows share; each is found out when it is first asked
/// for.
class Answers {
  public:
    explicit Answers(std::size_t count) : answers_(count, Answer::Unknown) {}

    template <typename Test>
    bool of(std::size_t thing, Test test) {
        if (answers_[thing] == Answer::Unknown) {
            answers_[thing] = test() ? Answer::Yes : Answer::No;
        }
        return answers_[thing] == Answer::Yes;
    }

  private:
    enum class Answer : std::uint8_t { Unknown, No, Yes };
    std::vector<Answer> answers_;
};

/// Looks at the names of a slice.
class NameFilter {
  public:
    NameFilter(const Index& index, const TextTest& test) : index_(index), test_(test) {}

    void filter(Slice& slice) const {
        // The block is faster where most names of it are in question, the single name where few
        // are.
        if (test_.isPlain() && slice.count() > Slice::rows / 16) {
            filterBlock(slice);
        } else {
            slice.keep([&](Row row) { return matches(row); });
        }
    }

    bool matches(Row row) const { return test_.matches(index_.foldedName(row), index_.name(row)); }

  private:
    void filterBlock(Slice& slice) const {
        const std::vector<std::uint32_t>& starts = index_.foldedNameStarts();
        const Row end = std::min<Row>(index_.size(), slice.first + Slice::rows);
        const std::string_view block = index_.foldedNameBlock().substr(0, starts[end]);
        Slice found(slice.first);
        std::size_t place = test_.sequence().find(block, starts[slice.first]);
        auto row = starts.begin() + slice.first;
        while (place != ByteSearch::npos) {
            row = std::upper_bound(row, starts.begin() + end, place);
            found.set(static_cast<Row>(row - starts.begin()) - 1);
            place = *row < block.size() ? test_.sequence().find(block, *row) : ByteSearch::npos;
        }
        for (std::size_t i = 0; i < slice.words.size(); ++i) {
            slice.words[i] &= found.words[i];
        }
    }

    const Index& index_;
    const TextTest& test_;
};

class NamePredicate final : public Predicate {
  public:
    NamePredicate(const Index& index, const TextCondition& condition)
        : test_(condition), names_(index, test_), cost_(costOf(test_, condition)) {}
    void filter(Slice& slice) override { names_.filter(slice); }
    int cost() const override { return cost_; }

  private:
    TextTest test_;
    NameFilter names_;
    int cost_;
};

/// What stands behind the medium at the head of a stored path.
std::string_view pathOnMedium(std::string_view path) {
    const std::size_t colon = path.find(':');
    return colon == std::string_view::npos ? path : path.substr(colon + 1);
}

class NameOrPathPredicate final : public Predicate {
  public:
    NameOrPathPredicate(const Index& index, const TextCondition& condition)
        : index_(index),
          test_(condition),
          names_(index, test_),
          paths_(index.pathCount()),
          cost_(costOf(test_, condition)) {}

    void filter(Slice& slice) override {
        Slice found = slice;
        found.keep([&](Row row) { return matchesPath(index_.pathId(row)); });
        slice.remove(found);
        if (!slice.isEmpty()) {
            names_.filter(slice);
        }
        slice.add(found);
    }
    int cost() const override { return cost_; }

  private:
    bool matchesPath(Index::PathId path) {
        return paths_.of(path, [&] {
            return test_.matches(index_.foldedPathOnMedium(path),
                                 pathOnMedium(index_.pathText(path)));
        });
    }

    const Index& index_;
    TextTest test_;
    NameFilter names_;
    Answers paths_;
    int cost_;
};

/// A test on path and name together.
class WholePathPredicate final : public Predicate {
  public:
    WholePathPredicate(const Index& index, const TextCondition& condition)
        : index_(index),
          test_(condition),
          paths_(test_.isPlain() ? index.pathCount() : 0),
          borders_(test_.isPlain() ? index.pathCount() : 0),
          cost_(costOf(test_, condition) + textCost) {}

    void filter(Slice& slice) override {
        slice.keep([&](Row row) { return test_.isPlain() ? holds(row) : matches(row); });
    }
    int cost() const override { return cost_; }

  private:
    /// The sequence stands in the path, or in the name, or across the border between them.
    bool holds(Row row) {
        const Index::PathId path = index_.pathId(row);
        const std::string_view folded = index_.foldedPath(path);
        if (paths_.of(path, [&] { return test_.sequence().isIn(folded); })) {
            return true;
        }
        if (borders_.of(path, [&] { return mayReachBeyond(folded); }) &&
            holdsAcross(folded, index_.foldedName(row))) {
            return true;
        }
        return test_.sequence().isIn(index_.foldedName(row));
    }

    /// The path ends as the sequence begins, up to one of its separators.
    bool mayReachBeyond(std::string_view path) const {
        const std::string& text = test_.text();
        for (std::size_t place = text.find('\\'); place != std::string::npos;
             place = text.find('\\', place + 1)) {
            if (path.ends_with(std::string_view(text).substr(0, place))) {
                return true;
            }
        }
        return false;
    }

    bool holdsAcross(std::string_view path, std::string_view name) const {
        const std::string_view text = test_.text();
        for (std::size_t place = text.find('\\'); place != std::string_view::npos;
             place = text.find('\\', place + 1)) {
            if (path.ends_with(text.substr(0, place)) && name.starts_with(text.substr(place + 1))) {
                return true;
            }
        }
        return false;
    }

    bool matches(Row row) {
        folded_.assign(index_.foldedPath(index_.pathId(row)));
        folded_ += '\\';
        folded_ += index_.foldedName(row);
        if (!test_.needsFoldedOnly()) {
            stored_.assign(index_.path(row));
            stored_ += '\\';
            stored_ += index_.name(row);
        }
        return test_.matches(folded_, stored_);
    }

    const Index& index_;
    TextTest test_;
    Answers paths_;
    Answers borders_;
    int cost_;
    std::string folded_;
    std::string stored_;
};

/// A test on something that many rows share and that is tested once each.
template <typename IdOf, typename Test>
class SharedPredicate final : public Predicate {
  public:
    SharedPredicate(std::size_t count, IdOf idOf, Test test)
        : answers_(count), idOf_(std::move(idOf)), test_(std::move(test)) {}
    void filter(Slice& slice) override {
        slice.keep([&](Row row) {
            const auto id = idOf_(row);
            return answers_.of(id, [&] { return test_(id); });
        });
    }
    int cost() const override { return 2; }

  private:
    Answers answers_;
    IdOf idOf_;
    Test test_;
};

template <typename IdOf, typename Test>
std::unique_ptr<Predicate> sharedPredicate(std::size_t count, IdOf idOf, Test test) {
    return std::make_unique<SharedPredicate<IdOf, Test>>(count, std::move(idOf), std::move(test));
}

std::unique_ptr<Predicate> makeFolderPredicate(const Index& index, const TextCondition& condition) {
    return sharedPredicate(
        index.pathCount(), [&index](Row row) { return index.pathId(row); },
        [&index, test = std::make_shared<TextTest>(condition)](Index::PathId path) {
            return test->matches(index.foldedPath(path), index.pathText(path));
        });
}

std::unique_ptr<Predicate> makeTypePredicate(const Index& index, const TextCondition& condition) {
    return sharedPredicate(
        index.types().size(), [&index](Row row) { return index.typeId(row); },
        [&index, test = std::make_shared<TextTest>(condition)](Index::TypeId type) {
            const std::string_view text = index.types()[type];
            return test->matches(foldedText(text), text);
        });
}

std::unique_ptr<Predicate> makeAnnotationPredicate(const Index& index,
                                                   const TextCondition& condition) {
    return sharedPredicate(
        index.annotationCount(), [&index](Row row) { return index.annotationId(row); },
        [&index, test = std::make_shared<TextTest>(condition),
         isKeywords = condition.target == TextTarget::Keywords](Index::AnnotationId id) {
            const Index::Annotation& annotation = index.annotation(id);
            const auto matches = [&](TextPool::Id text) {
                const std::string_view stored = index.annotationTexts()[text];
                return test->matches(foldedText(stored), stored);
            };
            return isKeywords ? matches(annotation.keywords)
                              : matches(annotation.notes1) || matches(annotation.notes2);
        });
}

}  // namespace

std::unique_ptr<Predicate> makeTextPredicate(const Index& index, const TextCondition& condition) {
    switch (condition.target) {
        case TextTarget::NameOrPath:
            return std::make_unique<NameOrPathPredicate>(index, condition);
        case TextTarget::Name:
            return std::make_unique<NamePredicate>(index, condition);
        case TextTarget::WholePath:
            return std::make_unique<WholePathPredicate>(index, condition);
        case TextTarget::Folder:
            return makeFolderPredicate(index, condition);
        case TextTarget::Type:
            return makeTypePredicate(index, condition);
        case TextTarget::Keywords:
        case TextTarget::Notes:
            break;
    }
    return makeAnnotationPredicate(index, condition);
}

}  // namespace search
