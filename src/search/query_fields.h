#pragma once

#include <span>
#include <string_view>

namespace search {

/// One word of the query language that ends in ":", for completion and for the syntax card.
struct QueryField {
    std::string_view group;    ///< "name", "size", "dates", ...
    std::string_view word;     ///< "ext:"
    std::string_view meaning;  ///< a few words
    std::string_view example;  ///< a query that uses it
};

/// All of them, group by group.
std::span<const QueryField> queryFields();

}  // namespace search
