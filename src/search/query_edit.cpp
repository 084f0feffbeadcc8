#include "search/query_edit.h"

#include <algorithm>
#include <vector>

#include "search/query_lexer.h"
#include "search/text_fold.h"

namespace search {
namespace {

using Kind = QueryToken::Kind;

/// A query line that is being changed.
class Line {
  public:
    explicit Line(std::string_view text) : text_(text) { close(); }

    /// Takes out the term where it stands outside of all groups, excluded or not as asked.
    bool takeOut(std::string_view term, bool isExcluded) {
        const std::vector<QueryToken> tokens = queryTokens(text_);
        if (hasAlternatives(tokens)) {
            return false;
        }
        int depth = 0;
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            depth += tokens[i].kind == Kind::Open ? 1 : tokens[i].kind == Kind::Close ? -1 : 0;
            const bool follows = i > 0 && tokens[i - 1].kind == Kind::Not;
            if (depth == 0 && tokens[i].kind == Kind::Word && follows == isExcluded &&
                sourceOf(tokens[i]) == term) {
                const std::size_t start = (follows ? tokens[i - 1] : tokens[i]).position;
                erase(start, tokens[i].position + tokens[i].length);
                return true;
            }
        }
        return false;
    }

    bool holds(std::string_view term, bool isExcluded) const {
        return Line(text_).takeOut(term, isExcluded);
    }

    void takeOutField(std::string_view field) {
        const std::vector<QueryToken> tokens = queryTokens(text_);
        for (auto token = tokens.rbegin(); token != tokens.rend(); ++token) {
            if (token->kind == Kind::Word && foldedText(token->word.text).starts_with(field)) {
                erase(token->position, token->position + token->length);
            }
        }
    }

    void add(std::string_view term) {
        if (hasAlternatives(queryTokens(text_))) {
            text_ = "(" + text_ + ")";
        }
        text_ += text_.empty() ? "" : " ";
        text_ += term;
    }

    const std::string& text() const { return text_; }

  private:
    /// Ends what is half-typed, so that something can follow.
    void close() {
        dropLastNots();
        const std::vector<QueryToken> tokens = queryTokens(text_);
        if (!tokens.empty() && tokens.back().isUnclosed) {
            text_ += '"';
        }
        while (!text_.empty() && text_.back() == ' ') {
            text_.pop_back();
        }
        const auto opened = std::ranges::count(tokens, Kind::Open, &QueryToken::kind);
        const auto closed = std::ranges::count(tokens, Kind::Close, &QueryToken::kind);
        text_.append(static_cast<std::size_t>(opened - closed), ')');
    }

    /// What follows would be excluded by them.
    void dropLastNots() {
        std::vector<QueryToken> tokens = queryTokens(text_);
        while (!tokens.empty() && tokens.back().kind == Kind::Not) {
            text_.resize(tokens.back().position);
            tokens.pop_back();
        }
    }

    static bool hasAlternatives(const std::vector<QueryToken>& tokens) {
        int depth = 0;
        for (const QueryToken& token : tokens) {
            depth += token.kind == Kind::Open ? 1 : token.kind == Kind::Close ? -1 : 0;
            if (depth == 0 && token.kind == Kind::Or) {
                return true;
            }
        }
        return false;
    }

    std::string_view sourceOf(const QueryToken& token) const {
        return std::string_view(text_).substr(token.position, token.length);
    }

    void erase(std::size_t start, std::size_t end) {
        while (end < text_.size() && text_[end] == ' ') {
            ++end;
        }
        text_.erase(start, end - start);
        while (!text_.empty() && text_.back() == ' ') {
            text_.pop_back();
        }
    }

    std::string text_;
};

}  // namespace

std::string lineWith(std::string_view line, std::string_view term) {
    Line result(line);
    result.takeOut(term, true);
    if (!result.holds(term, false)) {
        result.add(term);
    }
    return result.text();
}

std::string lineWithout(std::string_view line, std::string_view term) {
    Line result(line);
    result.takeOut(term, false);
    if (!result.holds(term, true)) {
        result.add("!" + std::string(term));
    }
    return result.text();
}

std::string lineSortedBy(std::string_view line, std::string_view column) {
    Line result(line);
    result.takeOutField("sort:");
    if (column.empty()) {
        return result.text();
    }
    // A result word counts wherever it stands; alternatives need no parentheses for it.
    return result.text() + (result.text().empty() ? "" : " ") + "sort:" + std::string(column);
}

}  // namespace search
