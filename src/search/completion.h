#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "search/index.h"

namespace search {

/// One way to go on at the cursor of a query line.
struct Completion {
    std::string text;       ///< takes the place of the bytes named below
    std::string meaning;    ///< a few words for the list of completions
    std::size_t start = 0;  ///< of the query line
    std::size_t length = 0;
    friend bool operator==(const Completion&, const Completion&) = default;
};

/// What the word before the cursor may become: a field, or after a field one of its values that the
/// archive holds (media by number and name, extensions, keywords, types, kinds of drives, columns).
/// At most `most`, the likeliest first; none where the word is empty.
std::vector<Completion> completionsAt(const Index& index, std::string_view line, std::size_t cursor,
                                      std::size_t most);

}  // namespace search
