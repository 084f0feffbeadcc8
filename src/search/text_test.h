#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "search/byte_search.h"
#include "search/query.h"

namespace re2 {
class RE2;
}

namespace search {

/// A TextCondition ready to be put to many texts. One that keeps case or accents, and a regular
/// expression, look at the text as it is stored, the others at its folded form. Used by one thread.
class TextTest {
  public:
    explicit TextTest(const TextCondition& condition);
    TextTest(const TextTest&) = delete;
    TextTest& operator=(const TextTest&) = delete;
    ~TextTest();

    /// True when it can be seen from the folded text alone.
    bool needsFoldedOnly() const { return needsFoldedOnly_; }
    /// True when it is nothing but "this sequence of bytes stands in the folded text".
    bool isPlain() const { return needsFoldedOnly_ && match_ == TextMatch::Contains; }
    const ByteSearch& sequence() const { return *search_; }
    const std::string& text() const { return text_; }

    /// `folded` must be the folded form of `stored`, which is looked at only where
    /// needsFoldedOnly() is false.
    bool matches(std::string_view folded, std::string_view stored) const;

    /// Where in the stored text it is met first, at or after `start`, and how long; none where it
    /// is not. Of a Pattern it is the whole text.
    struct Place {
        std::size_t start = 0;
        std::size_t length = 0;
    };
    std::optional<Place> locate(std::string_view stored, std::size_t start) const;

  private:
    std::optional<Place> locateFolded(std::string_view stored, std::size_t start) const;
    bool matchesText(std::string_view text) const;
    bool holdsWord(std::string_view text) const;

    TextMatch match_;
    FoldOptions fold_;
    bool isWholePath_;
    bool needsFoldedOnly_;
    std::string text_;
    std::string pathEnd_;     ///< a Pattern that may stand behind other folders
    std::string foldedText_;  ///< what must stand in the folded text in any case
    std::unique_ptr<ByteSearch> search_;
    std::unique_ptr<ByteSearch> foldedSearch_;
    std::unique_ptr<re2::RE2> expression_;
    mutable std::string buffer_;
};

/// True when the whole of `text` is of the form of `pattern`, see TextCondition.
bool matchesPattern(std::string_view text, std::string_view pattern);
/// True when a letter, a digit or a mark of one ends right before `position`, or begins there.
bool isWordBefore(std::string_view text, std::size_t position);
bool isWordAt(std::string_view text, std::size_t position);

/// What is wrong with a regular expression; "" where nothing is.
std::string expressionFault(const std::string& source);

}  // namespace search
