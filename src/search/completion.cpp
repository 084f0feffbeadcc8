#include "search/completion.h"

#include <algorithm>
#include <utility>

#include "search/query_fields.h"
#include "search/query_lexer.h"
#include "search/query_parser.h"
#include "search/result_column.h"
#include "search/text_fold.h"

namespace search {
namespace {

struct Value {
    std::string text;
    std::string meaning;
    std::size_t weight = 0;
};

/// Values of a field that the archive holds, the likeliest first.
std::vector<Value> extensionsOf(const Index& index) {
    std::vector<Value> values;
    for (TextPool::Id id = 1; id < index.extensions().size(); ++id) {
        const std::uint32_t count = index.extensionCount(id);
        values.push_back({std::string(index.extensions()[id]),
                          std::to_string(count) + (count == 1 ? " file" : " files"), count});
    }
    std::ranges::stable_sort(values, std::ranges::greater{}, &Value::weight);
    return values;
}

std::vector<Value> mediaOf(const Index& index) {
    std::vector<Value> values;
    for (const base::MediaInfo& medium : index.media()) {
        values.push_back({std::to_string(medium.mediaId), mediumTitle(medium)});
    }
    for (const base::MediaInfo& medium : index.media()) {
        const std::string& name = medium.mediaName.empty() ? medium.mediaLabel : medium.mediaName;
        if (!name.empty()) {
            values.push_back({name, "medium " + std::to_string(medium.mediaId)});
        }
    }
    return values;
}

std::vector<Value> keywordsOf(const Index& index) {
    std::vector<Value> values;
    for (const std::string_view keyword : index.knownKeywords()) {
        values.push_back({std::string(keyword), "keywords"});
    }
    return values;
}

std::vector<Value> typesOf(const Index& index) {
    std::vector<Value> values;
    for (TextPool::Id id = 0; id < index.types().size(); ++id) {
        if (!index.types()[id].empty()) {
            values.push_back({std::string(index.types()[id]), "type"});
        }
    }
    std::ranges::sort(values, {}, &Value::text);
    return values;
}

std::vector<Value> driveKindsOf(const Index& index) {
    std::vector<Value> values;
    for (const base::MediaInfo& medium : index.media()) {
        const bool isKnown =
            std::ranges::find(values, medium.mediaType, &Value::text) != values.end();
        if (!isKnown && !medium.mediaType.empty()) {
            values.push_back({medium.mediaType, "kind of drive"});
        }
    }
    return values;
}

std::vector<Value> columnValues() {
    std::vector<Value> values;
    for (const ResultColumn column : allResultColumns) {
        values.push_back({std::string(columnKey(column)), std::string(columnTitle(column))});
        values.push_back({"-" + std::string(columnKey(column)),
                          std::string(columnTitle(column)) + ", the other way round"});
    }
    return values;
}

std::vector<Value> valuesOf(const Index& index, std::string_view field) {
    if (field == "ext") {
        return extensionsOf(index);
    }
    if (field == "medium" || field == "only" || field == "missing") {
        return mediaOf(index);
    }
    if (field == "kw") {
        return keywordsOf(index);
    }
    if (field == "type") {
        return typesOf(index);
    }
    if (field == "kind") {
        return driveKindsOf(index);
    }
    if (field == "has") {
        return {{"kw", "has keywords"},
                {"note", "has a note"},
                {"date", "has a date"},
                {"ext", "has an extension"}};
    }
    return field == "sort" ? columnValues() : std::vector<Value>();
}

/// Collects completions of one place.
class List {
  public:
    List(std::size_t start, std::size_t length, std::size_t most)
        : start_(start), length_(length), most_(most) {}

    void add(std::string text, std::string meaning) {
        const bool isKnown = std::ranges::find(found_, text, &Completion::text) != found_.end();
        if (found_.size() < most_ && !isKnown) {
            found_.push_back({std::move(text), std::move(meaning), start_, length_});
        }
    }
    /// Those values that begin with `typed`, then those that hold it elsewhere.
    void addValues(const std::vector<Value>& values, std::string_view before,
                   std::string_view typed) {
        const std::string wanted = foldedText(typed);
        for (const bool fromStart : {true, false}) {
            for (const Value& value : values) {
                const std::size_t place = foldedText(value.text).find(wanted);
                if (place != std::string::npos && (place == 0) == fromStart) {
                    const bool isColumn = before.ends_with("sort:");
                    add(std::string(before) + (isColumn ? value.text : quotedForQuery(value.text)),
                        value.meaning);
                }
            }
        }
    }
    std::vector<Completion> take() { return std::move(found_); }

  private:
    std::size_t start_;
    std::size_t length_;
    std::size_t most_;
    std::vector<Completion> found_;
};

}  // namespace

std::vector<Completion> completionsAt(const Index& index, std::string_view line, std::size_t cursor,
                                      std::size_t most) {
    const std::string_view before = line.substr(0, cursor);
    const std::vector<QueryToken> tokens = queryTokens(before);
    if (tokens.empty() || tokens.back().kind != QueryToken::Kind::Word ||
        tokens.back().position + tokens.back().length != before.size()) {
        return {};
    }
    const QueryToken& token = tokens.back();
    List list(token.position, token.length, most);
    const std::size_t colon = token.word.find(":");
    if (colon != std::string::npos) {
        const std::string field = foldedText(token.word.text.substr(0, colon));
        // Of a list the last value.
        const std::size_t semicolon = token.word.text.rfind(';');
        const std::size_t start =
            semicolon == std::string::npos || semicolon < colon ? colon + 1 : semicolon + 1;
        const bool isList = start > colon + 1 && !token.hadQuotes;
        list.addValues(valuesOf(index, field),
                       isList ? token.word.text.substr(0, start) : field + ":",
                       std::string_view(token.word.text).substr(isList ? start : colon + 1));
        return list.take();
    }
    const std::string typed = foldedText(token.word.text);
    for (const QueryField& field : queryFields()) {
        if (field.word.ends_with(':') && field.word.starts_with(typed)) {
            list.add(std::string(field.word), std::string(field.meaning));
        }
    }
    if (typed.size() > 1) {
        list.addValues(keywordsOf(index), "kw:", typed);
        list.addValues(mediaOf(index), "medium:", typed);
        list.addValues(extensionsOf(index), "ext:", typed);
    }
    return list.take();
}

}  // namespace search
