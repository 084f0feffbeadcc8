#include "search/text_test.h"

#include <re2/re2.h>
#include <unicode/uchar.h>

#include <algorithm>

#include "base/text.h"

namespace search {
namespace {

RE2::Options optionsFor(FoldOptions fold) {
    RE2::Options options(RE2::Quiet);
    options.set_case_sensitive(fold.keepCase);
    options.set_max_mem(std::int64_t{16} << 20);
    return options;
}

std::size_t nextCharacter(std::string_view text, std::size_t position) {
    do {
        ++position;
    } while (position < text.size() && !startsCharacter(text, position));
    return position;
}

bool isWordCharacter(char32_t character) {
    const auto code = static_cast<UChar32>(character);
    constexpr auto marks = U_GC_M_MASK;
    return u_isalnum(code) != 0 || (U_GET_GC_MASK(code) & marks) != 0;
}

}  // namespace

bool isWordAt(std::string_view text, std::size_t position) {
    return position < text.size() && isWordCharacter(base::nextCodePoint(text, position));
}

bool isWordBefore(std::string_view text, std::size_t position) {
    if (position == 0) {
        return false;
    }
    do {
        --position;
    } while (position > 0 && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80);
    return isWordCharacter(base::nextCodePoint(text, position));
}

bool matchesPattern(std::string_view text, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t in = 0;
    // Where to go on when what follows the last "*" does not fit after all.
    std::size_t star = std::string_view::npos;
    std::size_t afterStar = 0;
    while (at < text.size()) {
        if (in < pattern.size() && pattern[in] == TextCondition::anyText) {
            star = in++;
            afterStar = at;
        } else if (in < pattern.size() && pattern[in] == TextCondition::anyCharacter) {
            at = nextCharacter(text, at);
            ++in;
        } else if (in < pattern.size() && pattern[in] == text[at]) {
            ++at;
            ++in;
        } else if (star != std::string_view::npos) {
            afterStar = nextCharacter(text, afterStar);
            at = afterStar;
            in = star + 1;
        } else {
            return false;
        }
    }
    while (in < pattern.size() && pattern[in] == TextCondition::anyText) {
        ++in;
    }
    return in == pattern.size();
}

std::string expressionFault(const std::string& source) {
    const RE2 expression(source, optionsFor({}));
    return expression.ok() ? std::string() : expression.error();
}

TextTest::TextTest(const TextCondition& condition)
    : match_(condition.match),
      fold_(condition.fold),
      isWholePath_(condition.target == TextTarget::WholePath),
      needsFoldedOnly_(condition.match != TextMatch::Expression && fold_ == FoldOptions{}),
      text_(condition.text),
      search_(std::make_unique<ByteSearch>(text_)) {
    if (match_ == TextMatch::Pattern) {
        pathEnd_ =
            TextCondition::anyText + std::string(text_.starts_with('\\') ? "" : "\\") + text_;
    }
    if (match_ == TextMatch::Expression) {
        expression_ = std::make_unique<RE2>(text_, optionsFor(fold_));
    } else if (!needsFoldedOnly_ && match_ != TextMatch::Pattern) {
        foldedText_ = foldedText(text_);
        foldedSearch_ = std::make_unique<ByteSearch>(foldedText_);
    }
}

TextTest::~TextTest() = default;

bool TextTest::matches(std::string_view folded, std::string_view stored) const {
    if (needsFoldedOnly_) {
        return matchesText(folded);
    }
    if (expression_) {
        return RE2::PartialMatch(re2::StringPiece(stored.data(), stored.size()), *expression_);
    }
    if (foldedSearch_ && !foldedSearch_->isIn(folded)) {
        return false;
    }
    buffer_.clear();
    appendFolded(stored, fold_, buffer_);
    return matchesText(buffer_);
}

bool TextTest::matchesText(std::string_view text) const {
    switch (match_) {
        case TextMatch::Contains:
            return search_->isIn(text);
        case TextMatch::WholeWord:
            return holdsWord(text);
        case TextMatch::Starts:
            return text.starts_with(text_);
        case TextMatch::Ends:
            return text.ends_with(text_);
        case TextMatch::Equals:
            return text == text_;
        case TextMatch::Pattern:
            // Of a whole path the pattern may be the last part, from a folder on.
            return matchesPattern(text, text_) || (isWholePath_ && matchesPattern(text, pathEnd_));
        case TextMatch::Expression:
            break;
    }
    return false;
}

bool TextTest::holdsWord(std::string_view text) const {
    for (std::size_t place = search_->find(text); place != ByteSearch::npos;
         place = place < text.size() ? search_->find(text, place + 1) : ByteSearch::npos) {
        if (!isWordBefore(text, place) && !isWordAt(text, place + text_.size())) {
            return true;
        }
    }
    return false;
}

std::optional<TextTest::Place> TextTest::locate(std::string_view stored, std::size_t start) const {
    if (start >= stored.size()) {
        return std::nullopt;
    }
    if (expression_) {
        re2::StringPiece met;
        const re2::StringPiece text(stored.data(), stored.size());
        if (!expression_->Match(text, start, stored.size(), RE2::UNANCHORED, &met, 1)) {
            return std::nullopt;
        }
        return Place{static_cast<std::size_t>(met.data() - stored.data()), met.size()};
    }
    if (match_ == TextMatch::Pattern) {
        return start == 0 && matches(foldedText(stored), stored)
                   ? std::optional(Place{0, stored.size()})
                   : std::nullopt;
    }
    return locateFolded(stored, start);
}

std::optional<TextTest::Place> TextTest::locateFolded(std::string_view stored,
                                                      std::size_t start) const {
    const FoldedWithOrigins folded = foldedWithOrigins(stored, fold_);
    const auto begin = std::ranges::lower_bound(folded.origins, start);
    for (std::size_t place =
             search_->find(folded.text, static_cast<std::size_t>(begin - folded.origins.begin()));
         place < folded.text.size(); place = search_->find(folded.text, place + 1)) {
        const std::size_t end = place + text_.size();
        const bool fits =
            (match_ != TextMatch::Starts && match_ != TextMatch::Equals) || place == 0;
        const bool endFits =
            (match_ != TextMatch::Ends && match_ != TextMatch::Equals) || end == folded.text.size();
        const bool isWord = match_ != TextMatch::WholeWord ||
                            (!isWordBefore(folded.text, place) && !isWordAt(folded.text, end));
        if (fits && endFits && isWord) {
            // The whole of the character in which the last byte lies.
            const std::size_t last = folded.origins[end - 1];
            const auto next = std::ranges::upper_bound(folded.origins, last);
            return Place{folded.origins[place], *next - folded.origins[place]};
        }
    }
    return std::nullopt;
}

}  // namespace search
