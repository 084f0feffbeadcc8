#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "search/local_time.h"
#include "search/query.h"
#include "search/query_lexer.h"

namespace search {

/// What stands before a word and says how it is meant.
struct WordModifiers {
    FoldOptions fold;
    bool isWhole = false;
    bool isStart = false;
    bool isEnd = false;
    bool isExpression = false;
    std::optional<TextTarget> target;
    std::vector<Node> flags;  ///< conditions of their own: "file:", "folder:", "dup:"

    friend bool operator==(const WordModifiers&, const WordModifiers&) = default;
};

/// Reads the words of a query line, one after the other: what each is a condition for. What is
/// wrong with one, and the result words "sort:" and "limit:", land in the query.
class TermReader {
  public:
    /// `query` must outlive this.
    TermReader(Query& query, LocalTime now) : query_(query), now_(now) {}

    /// The condition; none where the word has none (yet). Modifiers with no word behind them wait
    /// for the next one.
    std::optional<Node> read(const QueryToken& token);
    bool isWaiting() const {
        WordModifiers none;
        none.flags = modifiers_.flags;
        return modifiers_ != none;
    }
    /// There is no next word.
    std::optional<Node> endWaiting();

  private:
    bool readModifier(std::string_view name);
    std::optional<Node> withFlags(std::optional<Node> node);
    std::optional<Node> readPlain(const QueryWord& word);
    std::optional<Node> readField(const QueryWord& value);
    std::optional<Node> readText(TextTarget target, QueryWord word);
    std::optional<Node> readExpression(TextTarget target, const QueryWord& word);
    std::optional<Node> readNumber(const QueryWord& value);
    std::optional<Node> readMedia(const QueryWord& value);
    std::optional<Node> readDriveKind(const QueryWord& value);
    std::optional<Node> readExtensions(const QueryWord& value);
    std::optional<Node> readType(const QueryWord& value);
    std::optional<Node> readHas(const QueryWord& value);
    void readSort(const QueryWord& value);
    void readLimit(const QueryWord& value);

    TextMatch matchOfModifiers() const;
    std::string_view whatIsMissing() const;
    std::string_view exampleOf() const;
    void noteMissing(std::string_view what, std::string_view example);
    void note(Notice::Kind kind, std::string text);

    Query& query_;
    LocalTime now_;
    QueryToken token_;   ///< that is being read
    std::string field_;  ///< the last field or modifier in it
    WordModifiers modifiers_;
};

}  // namespace search
