#include "search/text_fold.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

#include "base/failure.h"
#include "base/text.h"

namespace search {
namespace {

const icu::Normalizer2& decomposer() {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2* const found = icu::Normalizer2::getNFDInstance(error);
    if (U_FAILURE(error)) {
        throw base::FileFailure(std::string("Unicode data: ") + u_errorName(error));
    }
    return *found;
}

/// Marks that belong to no script of their own, and the points of Hebrew and Arabic. The voicing
/// marks of kana, which belong to none either, make other letters.
bool isAccent(UChar32 character) {
    if (u_charType(character) != U_NON_SPACING_MARK || character == 0x3099 || character == 0x309A) {
        return false;
    }
    UErrorCode error = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(character, &error);
    const int order = u_getCombiningClass(character);
    return script == USCRIPT_INHERITED || script == USCRIPT_COMMON ||
           (script == USCRIPT_HEBREW && order >= 10 && order <= 26) ||
           (script == USCRIPT_ARABIC && order >= 27 && order <= 35);
}

struct PlainLetter {
    UChar32 letter;
    const char* plain;
};
/// Letters with strokes and joined letters, which Unicode does not take apart.
constexpr std::array<PlainLetter, 16> plainLetters{{{0xC6, "AE"},
                                                    {0xD8, "O"},
                                                    {0xE6, "ae"},
                                                    {0xF8, "o"},
                                                    {0x110, "D"},
                                                    {0x111, "d"},
                                                    {0x126, "H"},
                                                    {0x127, "h"},
                                                    {0x131, "i"},
                                                    {0x141, "L"},
                                                    {0x142, "l"},
                                                    {0x152, "OE"},
                                                    {0x153, "oe"},
                                                    {0x166, "T"},
                                                    {0x167, "t"},
                                                    {0x1E9E, "SS"}}};

icu::UnicodeString withoutAccents(const icu::UnicodeString& text) {
    icu::UnicodeString result;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 character = text.char32At(i);
        const auto* const plain =
            std::find_if(plainLetters.begin(), plainLetters.end(),
                         [&](const PlainLetter& each) { return each.letter == character; });
        if (plain != plainLetters.end()) {
            result.append(icu::UnicodeString(plain->plain, -1, US_INV));
        } else if (!isAccent(character)) {
            result.append(character);
        }
    }
    return result;
}

icu::UnicodeString decomposed(const icu::UnicodeString& text) {
    UErrorCode error = U_ZERO_ERROR;
    return decomposer().normalize(text, error);
}

icu::UnicodeString folded(icu::UnicodeString text, FoldOptions options) {
    text = decomposed(text);
    if (!options.keepAccents) {
        text = withoutAccents(text);
    }
    if (!options.keepCase) {
        text = decomposed(text.foldCase());
        // A capital's small letter may bring an accent along, as that of the dotted I does.
        if (!options.keepAccents) {
            text = withoutAccents(text);
        }
    }
    return text;
}

/// What one character becomes.
struct FoldedCharacter {
    std::uint16_t start = 0;
    std::uint8_t length = 0;
    bool hasMark = false;  ///< a mark that may have to change places with its neighbours
};

/// What 256 neighbouring characters become.
struct Block {
    std::array<FoldedCharacter, 256> characters;
    std::string texts;
};

bool hasMark(const icu::UnicodeString& text) {
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        if (u_getCombiningClass(text.char32At(i)) != 0) {
            return true;
        }
    }
    return false;
}

std::unique_ptr<Block> makeBlock(char32_t first, FoldOptions options) {
    auto block = std::make_unique<Block>();
    for (char32_t i = 0; i < 256; ++i) {
        const icu::UnicodeString text =
            folded(icu::UnicodeString(static_cast<UChar32>(first + i)), options);
        FoldedCharacter& character = block->characters[i];
        character.start = static_cast<std::uint16_t>(block->texts.size());
        text.toUTF8String(block->texts);
        character.length = static_cast<std::uint8_t>(block->texts.size() - character.start);
        character.hasMark = hasMark(text);
    }
    return block;
}

/// What each character becomes, worked out for 256 at a time when one of them is met first. Two
/// threads may do that for the same ones; the first to end wins.
class Characters {
  public:
    explicit Characters(FoldOptions options) : options_(options) {}
    Characters(const Characters&) = delete;
    Characters& operator=(const Characters&) = delete;
    ~Characters() {
        for (const auto& block : blocks_) {
            delete block.load(std::memory_order_relaxed);
        }
    }

    const Block& blockOf(char32_t character) {
        std::atomic<const Block*>& place = blocks_[character >> 8];
        const Block* block = place.load(std::memory_order_acquire);
        if (block == nullptr) {
            auto made = makeBlock(character & ~char32_t{0xFF}, options_);
            if (place.compare_exchange_strong(block, made.get(), std::memory_order_acq_rel)) {
                block = made.release();
            }
        }
        return *block;
    }

  private:
    FoldOptions options_;
    std::array<std::atomic<const Block*>, 0x1100> blocks_{};
};

/// A table of facts about characters, which nobody ever changes but by completing it.
Characters& charactersFor(FoldOptions options) {
    static std::array<Characters, 4> all{Characters({false, false}), Characters({false, true}),
                                         Characters({true, false}), Characters({true, true})};
    return all[(options.keepCase ? 2u : 0u) + (options.keepAccents ? 1u : 0u)];
}

/// The whole text through the library: for texts in which marks have to change places.
void appendFoldedWhole(std::string_view text, FoldOptions options, std::string& result) {
    std::string valid;
    for (std::size_t position = 0; position < text.size();) {
        base::appendUtf8(base::nextCodePoint(text, position), valid);
    }
    folded(icu::UnicodeString::fromUTF8(valid), options).toUTF8String(result);
}

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char smallLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// Appends the ASCII characters at the front of `text`; how many there were.
std::size_t appendAscii(std::string_view text, FoldOptions options, std::string& result) {
    std::size_t count = 0;
    while (count < text.size() && isAscii(text[count])) {
        ++count;
    }
    const std::size_t start = result.size();
    result.append(text.substr(0, count));
    if (!options.keepCase) {
        for (std::size_t i = start; i < result.size(); ++i) {
            result[i] = smallLetter(result[i]);
        }
    }
    return count;
}

}  // namespace

void appendFolded(std::string_view text, FoldOptions options, std::string& result) {
    std::size_t position = appendAscii(text, options, result);
    if (position == text.size()) {
        return;
    }
    const std::size_t start = result.size() - position;
    Characters& characters = charactersFor(options);
    bool afterMark = false;
    while (position < text.size()) {
        const char32_t character = base::nextCodePoint(text, position);
        const Block& block = characters.blockOf(character);
        const FoldedCharacter& one = block.characters[character & 0xFF];
        if (one.hasMark && afterMark) {
            result.resize(start);
            appendFoldedWhole(text, options, result);
            return;
        }
        result.append(block.texts, one.start, one.length);
        if (one.length > 0) {
            afterMark = one.hasMark;
        }
    }
}

std::string foldedText(std::string_view text, FoldOptions options) {
    std::string result;
    appendFolded(text, options, result);
    return result;
}

FoldedWithOrigins foldedWithOrigins(std::string_view text, FoldOptions options) {
    FoldedWithOrigins result;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        base::nextCodePoint(text, position);
        appendFolded(text.substr(start, position - start), options, result.text);
        result.origins.resize(result.text.size(), start);
    }
    result.origins.push_back(text.size());
    return result;
}

bool startsCharacter(std::string_view folded, std::size_t position) {
    const auto byte = static_cast<unsigned char>(folded[position]);
    if (byte < 0x80) {
        return true;
    }
    if ((byte & 0xC0) == 0x80) {
        return false;
    }
    const char32_t character = base::nextCodePoint(folded, position);
    const bool isLaterJamo = character >= 0x1160 && character <= 0x11FF;
    const auto type = u_charType(static_cast<UChar32>(character));
    return !isLaterJamo && type != U_NON_SPACING_MARK && type != U_ENCLOSING_MARK &&
           type != U_COMBINING_SPACING_MARK;
}

}  // namespace search
