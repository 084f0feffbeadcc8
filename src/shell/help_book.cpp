#include "shell/help_book.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"

namespace shell {

namespace {

constexpr std::string_view titleMark = "# ";

std::string anchorOf(std::string_view title) {
    std::string anchor;
    for (const char sign : base::foldedCase(title)) {
        const bool plain = (sign >= 'a' && sign <= 'z') || (sign >= '0' && sign <= '9');
        if (plain) {
            anchor += sign;
        } else if (!anchor.empty() && anchor.back() != '-') {
            anchor += '-';
        }
    }
    while (!anchor.empty() && anchor.back() == '-') {
        anchor.pop_back();
    }
    return anchor;
}

/// Takes the first line, without its end, from the front of `text`.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words(1);
    for (const char sign : base::foldedCase(text)) {
        if (sign != ' ' && sign != '\t') {
            words.back() += sign;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    if (words.back().empty()) {
        words.pop_back();
    }
    return words;
}

bool holdsAll(std::string_view text, const std::vector<std::string>& words) {
    const std::string folded = base::foldedCase(text);
    return std::all_of(words.begin(), words.end(), [&](const std::string& word) {
        return folded.find(word) != std::string::npos;
    });
}

}  // namespace

HelpBook HelpBook::parse(std::string_view fileText) {
    if (!base::isUtf8(fileText)) {
        throw base::FileFailure("the help file is no text");
    }
    HelpBook book;
    while (!fileText.empty()) {
        const std::string_view line = takeLine(fileText);
        if (line.starts_with(titleMark)) {
            const std::string_view title = line.substr(titleMark.size());
            book.pages_.push_back({std::string(title), anchorOf(title), {}});
        }
        if (!book.pages_.empty()) {
            book.pages_.back().text.append(line).append("\n");
        }
    }
    if (book.pages_.empty()) {
        throw base::FileFailure("the help file has no pages");
    }
    return book;
}

std::optional<std::size_t> HelpBook::pageOf(std::string_view anchor) const {
    const auto page = std::find_if(pages_.begin(), pages_.end(),
                                   [&](const Page& other) { return other.anchor == anchor; });
    if (page == pages_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(page - pages_.begin());
}

std::vector<std::size_t> HelpBook::search(std::string_view text) const {
    const std::vector<std::string> words = wordsOf(text);
    std::vector<std::size_t> found;
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        if (holdsAll(pages_[page].text, words)) {
            found.push_back(page);
        }
    }
    std::stable_partition(found.begin(), found.end(),
                          [&](std::size_t page) { return holdsAll(pages_[page].title, words); });
    return found;
}

}  // namespace shell
