#include "search/rank.h"

#include <algorithm>

#include "search/byte_search.h"
#include "search/text_test.h"

namespace search {
namespace {

constexpr int equal = 0;
constexpr int starts = 1;
constexpr int startsWord = 2;

/// Conditions on the name that consist of a text.
bool isWord(const Node& node) {
    if (node.kind != Node::Kind::Text || node.text.match == TextMatch::Pattern ||
        node.text.match == TextMatch::Expression) {
        return false;
    }
    return node.text.target == TextTarget::NameOrPath || node.text.target == TextTarget::Name;
}

int rankOfWord(std::string_view name, std::string_view word) {
    if (name.starts_with(word)) {
        return name.size() == word.size() ? equal : starts;
    }
    for (std::size_t place = name.find(word); place != std::string_view::npos;
         place = name.find(word, place + 1)) {
        if (!isWordBefore(name, place)) {
            return startsWord;
        }
    }
    return Rank::elsewhere;
}

}  // namespace

Rank::Rank(const Node& condition) : isConstant_(!add(condition, root_)) {}

/// False when there is no word in the node.
bool Rank::add(const Node& node, Part& part) {
    if (isWord(node)) {
        part.word = foldedText(node.text.text);
        return true;
    }
    if (node.kind != Node::Kind::And && node.kind != Node::Kind::Or) {
        return false;
    }
    part.kind = node.kind == Node::Kind::And ? Part::Kind::All : Part::Kind::Any;
    for (const Node& each : node.parts) {
        Part inner;
        if (add(each, inner)) {
            if (inner.kind == Part::Kind::Word) {
                part.sequence += (part.sequence.empty() ? "" : " ") + inner.word;
            }
            part.parts.push_back(std::move(inner));
        }
    }
    return !part.parts.empty();
}

int Rank::of(const Index& index, Row row) const {
    return isConstant_ ? 0 : rank(index.foldedName(row), root_);
}

int Rank::rank(std::string_view name, const Part& part) {
    if (part.kind == Part::Kind::Word) {
        return rankOfWord(name, part.word);
    }
    if (part.kind == Part::Kind::Any) {
        int best = elsewhere;
        for (const Part& each : part.parts) {
            best = std::min(best, rank(name, each));
        }
        return best;
    }
    int worst = equal;
    for (const Part& each : part.parts) {
        worst = std::max(worst, rank(name, each));
    }
    if (worst > equal && !part.sequence.empty() && name.starts_with(part.sequence)) {
        return name.size() == part.sequence.size() ? equal : starts;
    }
    return worst;
}

}  // namespace search
