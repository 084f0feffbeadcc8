#include "search/query_lexer.h"

#include <utility>

#include "search/text_fold.h"

namespace search {
namespace {

constexpr std::string_view wideBlank = "\u3000";
constexpr std::string_view expressionField = "regex:";

class Lexer {
  public:
    explicit Lexer(std::string_view line) : line_(line) {}

    std::vector<QueryToken> run() {
        while (skipBlanks()) {
            readToken();
        }
        return std::move(tokens_);
    }

  private:
    std::size_t blankAt(std::size_t place) const {
        if (place < line_.size() && (line_[place] == ' ' || line_[place] == '\t' ||
                                     line_[place] == '\n' || line_[place] == '\r')) {
            return 1;
        }
        return line_.substr(std::min(place, line_.size())).starts_with(wideBlank) ? wideBlank.size()
                                                                                  : 0;
    }

    /// False at the end of the line.
    bool skipBlanks() {
        while (const std::size_t length = blankAt(place_)) {
            place_ += length;
        }
        return place_ < line_.size();
    }

    bool isEndAt(std::size_t place) const {
        while (const std::size_t length = blankAt(place)) {
            place += length;
        }
        return place >= line_.size();
    }

    void readToken() {
        switch (line_[place_]) {
            case '|':
                addOperator(QueryToken::Kind::Or);
                return;
            case '!':
                addOperator(QueryToken::Kind::Not);
                return;
            case '-':
                // With a blank behind it it is a dash, as between two parts of a name.
                if (blankAt(place_ + 1) == 0) {
                    addOperator(QueryToken::Kind::Not);
                    return;
                }
                break;
            case '(':
                ++groups_;
                addOperator(QueryToken::Kind::Open);
                return;
            case ')':
                if (groups_ > 0) {
                    --groups_;
                    addOperator(QueryToken::Kind::Close);
                    return;
                }
                break;
            default:
                break;
        }
        readWord();
    }

    void addOperator(QueryToken::Kind kind) {
        QueryToken token;
        token.kind = kind;
        token.position = place_++;
        token.length = 1;
        token.isAtEnd = isEndAt(place_);
        tokens_.push_back(std::move(token));
    }

    void readWord() {
        token_ = {};
        token_.position = place_;
        innerGroups_ = 0;
        while (place_ < line_.size() && !endsWord()) {
            if (line_[place_] == '"') {
                readQuoted();
            } else {
                put(line_[place_++], false);
                if (isExpressionNext()) {
                    readExpression();
                    break;
                }
            }
        }
        token_.length = place_ - token_.position;
        nameOperator();
        tokens_.push_back(std::move(token_));
    }

    bool endsWord() {
        if (blankAt(place_) > 0 || line_[place_] == '|') {
            return true;
        }
        if (line_[place_] == '(') {
            ++innerGroups_;
        } else if (line_[place_] == ')') {
            if (innerGroups_ == 0 && groups_ > 0) {
                return true;
            }
            innerGroups_ -= innerGroups_ > 0 ? 1 : 0;
        }
        return false;
    }

    void put(char byte, bool isQuoted) {
        token_.word.text += byte;
        token_.word.isQuoted.push_back(isQuoted);
    }

    /// Two quotation marks inside stand for one.
    void readQuoted() {
        token_.hadQuotes = true;
        for (++place_; place_ < line_.size(); ++place_) {
            if (line_[place_] == '"') {
                if (place_ + 1 == line_.size() || line_[place_ + 1] != '"') {
                    ++place_;
                    return;
                }
                ++place_;
            }
            put(line_[place_], true);
        }
        token_.isUnclosed = true;
    }

    /// What stands behind "regex:" has signs of its own; it ends at a blank, or with the group in
    /// which it stands.
    bool isExpressionNext() const {
        const std::string& text = token_.word.text;
        if (text.size() < expressionField.size() || text.back() != ':' || token_.hadQuotes) {
            return false;
        }
        const std::size_t start = text.size() - expressionField.size();
        return (start == 0 || text[start - 1] == ':') &&
               foldedText(std::string_view(text).substr(start)) == expressionField;
    }

    void readExpression() {
        if (place_ < line_.size() && line_[place_] == '"') {
            readQuoted();
            return;
        }
        std::size_t inner = 0;
        while (place_ < line_.size() && blankAt(place_) == 0) {
            const char sign = line_[place_];
            if (sign == ')' && inner == 0 && groups_ > 0) {
                return;
            }
            inner += sign == '(' ? 1 : 0;
            inner -= sign == ')' && inner > 0 ? 1 : 0;
            put(sign, true);
            ++place_;
            if (sign == '\\' && place_ < line_.size() && blankAt(place_) == 0) {
                put(line_[place_++], true);
            }
        }
    }

    void nameOperator() {
        if (token_.hadQuotes) {
            return;
        }
        const std::string& text = token_.word.text;
        if (text == "OR") {
            token_.kind = QueryToken::Kind::Or;
        } else if (text == "AND") {
            token_.kind = QueryToken::Kind::And;
        } else if (text == "NOT") {
            token_.kind = QueryToken::Kind::Not;
        }
        token_.isAtEnd = token_.kind != QueryToken::Kind::Word && isEndAt(place_);
    }

    std::string_view line_;
    std::size_t place_ = 0;
    std::size_t groups_ = 0;       ///< that are open
    std::size_t innerGroups_ = 0;  ///< parentheses open inside the word
    QueryToken token_;
    std::vector<QueryToken> tokens_;
};

}  // namespace

QueryWord QueryWord::part(std::size_t start, std::size_t end) const {
    QueryWord result;
    result.text = text.substr(start, end - start);
    result.isQuoted.assign(isQuoted.begin() + static_cast<std::ptrdiff_t>(start),
                           isQuoted.begin() + static_cast<std::ptrdiff_t>(end));
    return result;
}

QueryWord QueryWord::from(std::size_t start) const { return part(start, text.size()); }

std::size_t QueryWord::find(std::string_view characters, std::size_t start) const {
    for (std::size_t i = start; i < text.size(); ++i) {
        if (!isQuoted[i] && characters.find(text[i]) != std::string_view::npos) {
            return i;
        }
    }
    return std::string::npos;
}

std::vector<QueryWord> QueryWord::split(std::string_view characters) const {
    std::vector<QueryWord> parts;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(find(characters, start), text.size());
        if (end > start) {
            parts.push_back(part(start, end));
        }
        start = end + 1;
    }
    return parts;
}

std::vector<QueryToken> queryTokens(std::string_view line) { return Lexer(line).run(); }

}  // namespace search
