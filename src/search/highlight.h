#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "search/query.h"

namespace search {

/// A part of a text, in bytes; whole characters.
struct TextRange {
    std::size_t start = 0;
    std::size_t length = 0;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// Finds what in the texts of a hit made it one, so that it can be emphasised: the places of the
/// words that the query asks for (not of those that it excludes). Ranges are ascending and do not
/// touch one another. Used by one thread.
class Highlighter {
  public:
    explicit Highlighter(const Query& query);
    Highlighter(const Highlighter&) = delete;
    Highlighter& operator=(const Highlighter&) = delete;
    ~Highlighter();

    // The texts are those of the index, as stored.
    std::vector<TextRange> inName(std::string_view name) const;
    std::vector<TextRange> inPath(std::string_view path) const;
    std::vector<TextRange> inType(std::string_view type) const;
    std::vector<TextRange> inKeywords(std::string_view keywords) const;
    std::vector<TextRange> inNotes(std::string_view notes) const;

  private:
    void add(const Node& node);
    template <typename Counts>
    std::vector<TextRange> rangesIn(std::string_view text, Counts counts) const;

    struct Word;
    std::vector<Word> words_;
};

}  // namespace search
