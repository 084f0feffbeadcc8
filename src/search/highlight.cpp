#include "search/highlight.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "search/text_test.h"

namespace search {

struct Highlighter::Word {
    explicit Word(const TextCondition& condition)
        : target(condition.target), test(std::make_unique<TextTest>(condition)) {}

    TextTarget target;
    std::unique_ptr<TextTest> test;
};

namespace {

/// The ranges in order, those that touch made one.
std::vector<TextRange> merged(std::vector<TextRange> ranges) {
    std::ranges::sort(ranges, {}, &TextRange::start);
    std::vector<TextRange> result;
    for (const TextRange& range : ranges) {
        if (!result.empty() && range.start <= result.back().start + result.back().length) {
            const std::size_t end =
                std::max(result.back().start + result.back().length, range.start + range.length);
            result.back().length = end - result.back().start;
        } else {
            result.push_back(range);
        }
    }
    return result;
}

}  // namespace

Highlighter::Highlighter(const Query& query) { add(query.condition); }
Highlighter::~Highlighter() = default;

void Highlighter::add(const Node& node) {
    if (node.kind == Node::Kind::Text) {
        words_.emplace_back(node.text);
    } else if (node.kind != Node::Kind::Not) {
        for (const Node& part : node.parts) {
            add(part);
        }
    }
}

template <typename Counts>
std::vector<TextRange> Highlighter::rangesIn(std::string_view text, Counts counts) const {
    std::vector<TextRange> ranges;
    for (const Word& word : words_) {
        if (!counts(word.target)) {
            continue;
        }
        std::size_t start = 0;
        while (const auto place = word.test->locate(text, start)) {
            if (place->length > 0) {
                ranges.push_back({place->start, place->length});
            }
            start = place->start + std::max<std::size_t>(1, place->length);
        }
    }
    return merged(std::move(ranges));
}

std::vector<TextRange> Highlighter::inName(std::string_view name) const {
    return rangesIn(name, [](TextTarget target) {
        return target == TextTarget::Name || target == TextTarget::NameOrPath ||
               target == TextTarget::WholePath;
    });
}

std::vector<TextRange> Highlighter::inPath(std::string_view path) const {
    return rangesIn(path, [](TextTarget target) {
        return target == TextTarget::Folder || target == TextTarget::NameOrPath ||
               target == TextTarget::WholePath;
    });
}

std::vector<TextRange> Highlighter::inType(std::string_view type) const {
    return rangesIn(type, [](TextTarget target) { return target == TextTarget::Type; });
}

std::vector<TextRange> Highlighter::inKeywords(std::string_view keywords) const {
    return rangesIn(keywords, [](TextTarget target) { return target == TextTarget::Keywords; });
}

std::vector<TextRange> Highlighter::inNotes(std::string_view notes) const {
    return rangesIn(notes, [](TextTarget target) { return target == TextTarget::Notes; });
}

}  // namespace search
