#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace search {

/// A word of a query line, with its quotation marks taken off.
struct QueryWord {
    std::string text;
    /// For each byte of the text whether it stood in quotation marks, where nothing has a meaning
    /// of its own.
    std::vector<bool> isQuoted;

    bool isEmpty() const { return text.empty(); }
    QueryWord from(std::size_t start) const;
    QueryWord part(std::size_t start, std::size_t end) const;
    /// First unquoted one of these characters; npos where there is none.
    std::size_t find(std::string_view characters, std::size_t start = 0) const;
    /// The parts between unquoted ones of these characters, empty ones left out.
    std::vector<QueryWord> split(std::string_view characters) const;
};

struct QueryToken {
    enum class Kind { Word, Or, And, Not, Open, Close };

    Kind kind = Kind::Word;
    QueryWord word;
    bool hadQuotes = false;    ///< there were quotation marks, perhaps around nothing
    bool isUnclosed = false;   ///< the closing one is missing
    bool isAtEnd = false;      ///< an operator with nothing at all behind it
    std::size_t position = 0;  ///< of the line, in bytes
    std::size_t length = 0;
};

/// Takes a query line apart. Any bytes will do.
std::vector<QueryToken> queryTokens(std::string_view line);

}  // namespace search
