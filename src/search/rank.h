#pragma once

#include <string>
#include <vector>

#include "search/index.h"
#include "search/query.h"

namespace search {

/// How well an entry's name fits the words of a query, from 0, best: the name is what was asked
/// for, starts with it, has a word that starts with it, or has it elsewhere (or its path has). Of
/// several words that must all be there the one that fits worst counts, unless the name is, or
/// starts with, all of them as they stand in the query with blanks between; of alternatives the
/// best one counts.
class Rank {
  public:
    static constexpr int elsewhere = 3;

    explicit Rank(const Node& condition);
    /// True when the query has no words: all entries are of the same rank.
    bool isConstant() const { return isConstant_; }
    int of(const Index& index, Row row) const;

  private:
    struct Part {
        enum class Kind { Word, All, Any };
        Kind kind = Kind::Word;
        std::string word;
        std::vector<Part> parts;
        std::string sequence;  ///< of All: its words with blanks between
    };

    static bool add(const Node& node, Part& part);
    static int rank(std::string_view name, const Part& part);

    Part root_;
    bool isConstant_;
};

}  // namespace search
