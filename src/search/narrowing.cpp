#include "search/narrowing.h"

#include <algorithm>

namespace search {
namespace {

bool textNarrows(const TextCondition& later, const TextCondition& earlier) {
    if (later.target != earlier.target || later.fold != earlier.fold) {
        return false;
    }
    // Every one of these ways to meet a text has the text stand there as it is.
    const bool standsThere = later.match == TextMatch::Contains ||
                             later.match == TextMatch::WholeWord ||
                             later.match == TextMatch::Starts || later.match == TextMatch::Ends ||
                             later.match == TextMatch::Equals;
    switch (earlier.match) {
        case TextMatch::Contains:
            return standsThere && later.text.find(earlier.text) != std::string::npos;
        case TextMatch::Starts:
            return (later.match == TextMatch::Starts || later.match == TextMatch::Equals) &&
                   later.text.starts_with(earlier.text);
        case TextMatch::Ends:
            return (later.match == TextMatch::Ends || later.match == TextMatch::Equals) &&
                   later.text.ends_with(earlier.text);
        default:
            return false;
    }
}

bool numberNarrows(const NumberCondition& later, const NumberCondition& earlier) {
    return later.measure == earlier.measure && earlier.span.first <= later.span.first &&
           later.span.last <= earlier.span.last;
}

bool extensionNarrows(const ExtensionCondition& later, const ExtensionCondition& earlier) {
    return std::ranges::all_of(later.extensions, [&](const std::string& extension) {
        return std::ranges::find(earlier.extensions, extension) != earlier.extensions.end();
    });
}

/// Compares two conditions part by part.
class Comparison {
  public:
    bool narrows(const Node& later, const Node& earlier) {
        // Groups within groups can be compared in very many ways; a query of a person needs few.
        if (++steps_ > mostSteps) {
            return false;
        }
        const auto everyPart = [&](const Node& part) { return narrows(later, part); };
        if (earlier.kind == Node::Kind::And && std::ranges::all_of(earlier.parts, everyPart)) {
            return true;
        }
        const auto fromPart = [&](const Node& part) { return narrows(part, earlier); };
        if (later.kind == Node::Kind::And && std::ranges::any_of(later.parts, fromPart)) {
            return true;
        }
        if (later.kind == Node::Kind::Or && std::ranges::all_of(later.parts, fromPart)) {
            return true;
        }
        if (earlier.kind == Node::Kind::Or && std::ranges::any_of(earlier.parts, everyPart)) {
            return true;
        }
        return later == earlier || leafNarrows(later, earlier);
    }

  private:
    static constexpr int mostSteps = 10000;

    bool leafNarrows(const Node& later, const Node& earlier) {
        if (later.kind != earlier.kind) {
            return false;
        }
        switch (later.kind) {
            case Node::Kind::Text:
                return textNarrows(later.text, earlier.text);
            case Node::Kind::Number:
                return numberNarrows(later.number, earlier.number);
            case Node::Kind::Extension:
                return extensionNarrows(later.extension, earlier.extension);
            case Node::Kind::Not:
                return narrows(earlier.parts.front(), later.parts.front());
            default:
                return false;
        }
    }

    int steps_ = 0;
};

}  // namespace

bool narrows(const Node& later, const Node& earlier) {
    return Comparison().narrows(later, earlier);
}

}  // namespace search
