#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace search {

/// What a comparison of texts respects; by default neither.
struct FoldOptions {
    bool keepCase = false;
    bool keepAccents = false;

    friend bool operator==(const FoldOptions&, const FoldOptions&) = default;
};

/// Appends the form of `text` (UTF-8) in which texts are compared: composed and decomposed letters
/// are the same, and unless `options` keep them, so are capital and small letters (with "ß" as
/// "ss") and letters with and without accents. The marks of scripts in which they are no accents
/// (the vowels of India, the voicing of kana) stay. Bytes that are no UTF-8 become U+FFFD, so the
/// result is always well-formed.
void appendFolded(std::string_view text, FoldOptions options, std::string& folded);
std::string foldedText(std::string_view text, FoldOptions options = {});

/// foldedText() and where it came from: the i-th byte of the result stems from the character of
/// `text` that starts at origins[i]; one more element, the size of `text`, closes the list.
struct FoldedWithOrigins {
    std::string text;
    std::vector<std::size_t> origins;
};
FoldedWithOrigins foldedWithOrigins(std::string_view text, FoldOptions options = {});

/// True where a character that people count begins in a folded text: not inside UTF-8's sequences,
/// not at a mark or a later part of a Korean syllable that belongs to the letter before it.
bool startsCharacter(std::string_view folded, std::size_t position);

}  // namespace search
