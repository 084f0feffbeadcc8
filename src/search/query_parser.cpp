#include "search/query_parser.h"

#include <string>

#include "search/text_fold.h"

namespace search {

Query parseQuery(std::string_view line, LocalTime /*now*/) {
    Query query;
    std::size_t start = 0;
    while (start < line.size()) {
        const std::size_t end = std::min(line.find(' ', start), line.size());
        if (end > start) {
            Node word;
            word.kind = Node::Kind::Text;
            word.text.text = foldedText(line.substr(start, end - start));
            query.condition.parts.push_back(word);
        }
        start = end + 1;
    }
    return query;
}

std::string quotedForQuery(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted += '"';
}

}  // namespace search
