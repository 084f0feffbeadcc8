#include "search/query_parser.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "search/query_lexer.h"
#include "search/query_terms.h"

namespace search {
namespace {

using Kind = QueryToken::Kind;

/// Alternatives of sequences of terms. Each operation reads one of them and gives its condition, or
/// none where there is nothing (yet) that could be one.
class Parser {
  public:
    Parser(std::string_view line, LocalTime now)
        : tokens_(queryTokens(line)), terms_(query_, now) {}

    Query run() {
        std::vector<Node> parts;
        while (place_ < tokens_.size()) {
            if (auto node = readAlternatives()) {
                parts.push_back(std::move(*node));
            }
            // What ended the alternatives belongs to nothing.
            place_ += place_ < tokens_.size() ? 1 : 0;
        }
        if (!parts.empty()) {
            query_.condition = Node::joined(Node::Kind::And, std::move(parts));
        }
        return std::move(query_);
    }

  private:
    /// Groups within groups that are still told apart. Deeper ones are read as if their parentheses
    /// were not there.
    static constexpr int deepest = 100;

    bool isNext(Kind kind) const { return place_ < tokens_.size() && tokens_[place_].kind == kind; }

    std::optional<Node> readAlternatives() {
        std::vector<Node> parts;
        for (;;) {
            if (auto node = readSequence()) {
                parts.push_back(std::move(*node));
            }
            if (!isNext(Kind::Or)) {
                break;
            }
            noteIfLast();
            ++place_;
        }
        return parts.empty() ? std::nullopt
                             : std::optional(Node::joined(Node::Kind::Or, std::move(parts)));
    }

    std::optional<Node> readSequence() {
        std::vector<Node> parts;
        while (place_ < tokens_.size() && !isNext(Kind::Or) && !isNext(Kind::Close)) {
            if (isNext(Kind::And)) {
                noteIfLast();
                ++place_;
            } else if (auto node = readTerm()) {
                parts.push_back(std::move(*node));
            }
        }
        return parts.empty() ? std::nullopt
                             : std::optional(Node::joined(Node::Kind::And, std::move(parts)));
    }

    std::optional<Node> readTerm() {
        bool isNegated = false;
        for (; isNext(Kind::Not); ++place_) {
            noteIfLast();
            isNegated = !isNegated;
        }
        std::optional<Node> node;
        if (isNext(Kind::Open)) {
            node = readGroup();
        } else if (isNext(Kind::Word)) {
            node = readWord();
        }
        if (!node || !isNegated) {
            return node;
        }
        return negated(*std::move(node));
    }

    static Node negated(Node part) {
        Node node;
        node.kind = Node::Kind::Not;
        node.parts.push_back(std::move(part));
        return node;
    }

    std::optional<Node> readGroup() {
        const QueryToken& open = tokens_[place_++];
        if (depth_ == deepest) {
            return std::nullopt;
        }
        ++depth_;
        std::optional<Node> node = readAlternatives();
        --depth_;
        if (isNext(Kind::Close)) {
            ++place_;
        } else {
            note("the closing parenthesis is missing", open);
        }
        return node;
    }

    std::optional<Node> readWord() {
        std::optional<Node> node = terms_.read(tokens_[place_++]);
        while (terms_.isWaiting()) {
            node = isNext(Kind::Word) ? terms_.read(tokens_[place_++]) : terms_.endWaiting();
        }
        return node;
    }

    void noteIfLast() {
        const QueryToken& token = tokens_[place_];
        if (token.isAtEnd) {
            note(token.kind == Kind::Not ? "what is not wanted is still to come"
                                         : "the other word is still to come",
                 token);
        }
    }

    void note(std::string text, const QueryToken& token) {
        query_.notices.push_back(
            {Notice::Kind::Incomplete, std::move(text), token.position, token.length});
    }

    std::vector<QueryToken> tokens_;
    Query query_;
    TermReader terms_;
    std::size_t place_ = 0;
    int depth_ = 0;
};

/// A byte without a meaning of its own anywhere in a query line.
bool isPlainByte(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || byte == '_' || static_cast<unsigned char>(byte) >= 0x80;
}

}  // namespace

Query parseQuery(std::string_view line, LocalTime now) { return Parser(line, now).run(); }

std::string quotedForQuery(std::string_view text) {
    const bool isPlain = !text.empty() && text != "AND" && text != "OR" && text != "NOT" &&
                         text.find("\u3000") == std::string_view::npos &&
                         std::ranges::all_of(text, isPlainByte);
    if (isPlain) {
        return std::string(text);
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted += '"';
}

}  // namespace search
