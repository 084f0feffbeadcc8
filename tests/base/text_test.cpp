#include "base/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace base {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr char32_t highestCodePoint = 0x10FFFF;
const std::string replacement = "\xEF\xBF\xBD";

std::string repeated(std::size_t count, std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// The same text in both Unicode encodings: each length of sequence, at both ends of its range.
struct EncodingCase {
    std::string utf8;
    std::u16string utf16;
};

const std::vector<EncodingCase>& encodingCases() {
    static const std::vector<EncodingCase> cases{
        {"", u""},
        {"readme.txt", u"readme.txt"},
        {"\x7F", u"\x7F"},
        {"\xC2\x80", u"\u0080"},
        {"\xDF\xBF", u"\u07FF"},
        {"\xE0\xA0\x80", u"\u0800"},
        {"\xED\x9F\xBF", u"\uD7FF"},
        {"\xEE\x80\x80", u"\uE000"},
        {"\xEF\xBF\xBF", u"\uFFFF"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
        {"Grüße", u"Grüße"},
        {"Ελλάδα", u"Ελλάδα"},
        {"музыка", u"музыка"},
        {"写真", u"写真"},
        {"😀.png", u"😀.png"},
        {"e\u0301", u"e\u0301"},
        {"a\0b"s, u"a\0b"s},
        {"long ASCII part, then é, then another long ASCII part",
         u"long ASCII part, then é, then another long ASCII part"},
    };
    return cases;
}

// Malformed texts, with the count of bytes that cannot be used; every other byte is a letter.
struct MalformedCase {
    std::string bytes;
    std::string repaired;
};

const std::vector<MalformedCase>& malformedCases() {
    static const std::vector<MalformedCase> cases{
        {"\x80", repeated(1, replacement)},
        {"\xBF", repeated(1, replacement)},
        {"\xC0\x80", repeated(2, replacement)},          // overlong
        {"\xC1\xBF", repeated(2, replacement)},          // overlong
        {"\xE0\x9F\xBF", repeated(3, replacement)},      // overlong
        {"\xF0\x8F\xBF\xBF", repeated(4, replacement)},  // overlong
        {"\xED\xA0\x80", repeated(3, replacement)},      // surrogate
        {"\xED\xBF\xBF", repeated(3, replacement)},      // surrogate
        {"\xF4\x90\x80\x80", repeated(4, replacement)},  // above the last code point
        {"\xF5\x80\x80\x80", repeated(4, replacement)},
        {"\xFE\xFF", repeated(2, replacement)},
        {"\xC3", repeated(1, replacement)},          // cut
        {"\xE2\x82", repeated(2, replacement)},      // cut
        {"\xF0\x9F\x98", repeated(3, replacement)},  // cut
        {"\xC3z", replacement + "z"},
        {"\xE2\x82z", repeated(2, replacement) + "z"},
        {"eight letters\xFF and more", "eight letters" + replacement + " and more"},
        {"\xE2\x82\xC3\xA9", repeated(2, replacement) + "é"},
    };
    return cases;
}

/// The plain form of the conversion, one character after the other.
std::u16string utf16OneByOne(std::string_view text) {
    std::u16string units;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t codePoint = nextCodePoint(text, position);
        if (codePoint >= 0x10000) {
            units.push_back(static_cast<char16_t>(0xD7C0 + (codePoint >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 | (codePoint & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(codePoint));
        }
    }
    return units;
}

bool isSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

/// Random text in which runs of ASCII of all lengths meet characters of all lengths.
std::string randomText(std::mt19937& random) {
    std::string text;
    const std::size_t pieces = random() % 8;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        text.append(random() % 20, static_cast<char>('a' + random() % 26));
        static constexpr char32_t limits[] = {0x100, 0x800, 0x10000, highestCodePoint + 1};
        char32_t codePoint = static_cast<char32_t>(random()) % limits[random() % 4];
        if (isSurrogate(codePoint)) {
            codePoint = U'ß';
        }
        appendUtf8(codePoint, text);
    }
    return text;
}

TEST(Utf8, WellFormedTextsAreRecognised) {
    for (const EncodingCase& c : encodingCases()) {
        EXPECT_TRUE(isUtf8(c.utf8)) << testing::PrintToString(c.utf8);
    }
}

TEST(Utf8, MalformedTextsAreRecognised) {
    for (const MalformedCase& c : malformedCases()) {
        EXPECT_FALSE(isUtf8(c.bytes)) << testing::PrintToString(c.bytes);
        EXPECT_FALSE(isUtf8("a long beginning " + c.bytes)) << testing::PrintToString(c.bytes);
    }
}

TEST(Utf8, AMalformedByteIsFoundAtEveryPlaceOfALongText) {
    for (std::size_t place = 0; place < 40; ++place) {
        std::string text(40, 'a');
        EXPECT_TRUE(isUtf8(text));
        text[place] = '\xFF';
        EXPECT_FALSE(isUtf8(text)) << place;
    }
}

TEST(Utf8, EveryCodePointButSurrogatesComesBack) {
    for (char32_t codePoint = 0; codePoint <= highestCodePoint; ++codePoint) {
        std::string text;
        appendUtf8(codePoint, text);
        std::size_t position = 0;
        const char32_t expected = isSurrogate(codePoint) ? U'\uFFFD' : codePoint;
        ASSERT_EQ(nextCodePoint(text, position), expected);
        ASSERT_EQ(position, text.size());
    }
}

TEST(Utf8, ANumberAboveTheLastCodePointBecomesTheReplacement) {
    std::string text;
    appendUtf8(highestCodePoint + 1, text);
    EXPECT_EQ(text, replacement);
}

TEST(Utf8, AMalformedByteMovesThePositionByOne) {
    std::size_t position = 0;
    EXPECT_EQ(nextCodePoint("\xE2\x82z", position), U'\uFFFD');
    EXPECT_EQ(position, 1u);
}

TEST(Utf16, BothDirectionsOfKnownTexts) {
    for (const EncodingCase& c : encodingCases()) {
        EXPECT_EQ(utf16FromUtf8(c.utf8), c.utf16) << testing::PrintToString(c.utf8);
        EXPECT_EQ(utf8FromUtf16(c.utf16), c.utf8);
    }
}

TEST(Utf16, EachUnusableByteBecomesOneReplacement) {
    for (const MalformedCase& c : malformedCases()) {
        EXPECT_EQ(utf8FromUtf16(utf16FromUtf8(c.bytes)), c.repaired)
            << testing::PrintToString(c.bytes);
    }
}

TEST(Utf16, ALoneSurrogateBecomesTheReplacement) {
    const std::vector<std::pair<std::u16string, std::string>> cases{
        {{0xD800}, replacement},
        {{0xDFFF}, replacement},
        {{u'a', 0xD83D, u'b'}, "a" + replacement + "b"},
        {{0xDE00, 0xD83D}, replacement + replacement},
        {{0xD83D, 0xD83D, 0xDE00}, replacement + "😀"},
        {{u'a', u'b', u'c', u'd', 0xDC00}, "abcd" + replacement},
    };
    for (const auto& [units, text] : cases) {
        EXPECT_EQ(utf8FromUtf16(units), text);
    }
}

TEST(Utf16, AppendingKeepsWhatIsThere) {
    std::u16string units = u"before ";
    appendUtf16FromUtf8("é after", units);
    EXPECT_EQ(units, u"before é after");
    std::string text = "before ";
    appendUtf8FromUtf16(u"é after", text);
    EXPECT_EQ(text, "before é after");
}

TEST(Utf16, AsciiOfEveryLengthWithOneOtherCharacterAtEveryPlace) {
    for (std::size_t length = 0; length < 40; ++length) {
        std::string ascii;
        for (std::size_t i = 0; i < length; ++i) {
            ascii.push_back(static_cast<char>('!' + i));
        }
        ASSERT_EQ(utf16FromUtf8(ascii), utf16OneByOne(ascii));
        ASSERT_EQ(utf8FromUtf16(utf16FromUtf8(ascii)), ascii);
        for (std::size_t place = 0; place <= length; ++place) {
            const std::string text = ascii.substr(0, place) + "é" + ascii.substr(place);
            ASSERT_EQ(utf16FromUtf8(text), utf16OneByOne(text));
            ASSERT_EQ(utf8FromUtf16(utf16FromUtf8(text)), text);
            ASSERT_EQ(utf16Length(text), length + 1);
            ASSERT_EQ(utf8FromCp1252(cp1252FromUtf8(text)), text);
        }
    }
}

TEST(Utf16, ATextLongerThanAnyBufferComesBack) {
    const std::string text = repeated(5000, "a long text, ελληνικά, 😀; ");
    EXPECT_EQ(utf16FromUtf8(text), utf16OneByOne(text));
    EXPECT_EQ(utf8FromUtf16(utf16FromUtf8(text)), text);
}

TEST(Utf16, RandomTextsComeBackAndAgreeWithThePlainForm) {
    std::mt19937 random(1252);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = randomText(random);
        const std::u16string units = utf16FromUtf8(text);
        ASSERT_EQ(units, utf16OneByOne(text)) << testing::PrintToString(text);
        ASSERT_EQ(utf8FromUtf16(units), text);
        ASSERT_EQ(utf16Length(text), units.size());
        ASSERT_TRUE(isUtf8(text));
    }
}

TEST(Utf16, RandomBytesAgreeWithThePlainFormAndNeverGrow) {
    std::mt19937 random(4);
    for (int i = 0; i < 20000; ++i) {
        std::string bytes = randomText(random);
        for (std::size_t damage = random() % 4; damage > 0 && !bytes.empty(); --damage) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        const std::u16string units = utf16FromUtf8(bytes);
        ASSERT_EQ(units, utf16OneByOne(bytes)) << testing::PrintToString(bytes);
        ASSERT_EQ(utf16Length(bytes), units.size());
        ASSERT_LE(units.size(), bytes.size());
        ASSERT_TRUE(isUtf8(utf8FromUtf16(units)));
    }
}

TEST(Utf16Length, CountsACharacterOutsideTheFirstPlaneTwice) {
    EXPECT_EQ(utf16Length(""), 0u);
    EXPECT_EQ(utf16Length("abc"), 3u);
    EXPECT_EQ(utf16Length("写真"), 2u);
    EXPECT_EQ(utf16Length("😀a"), 3u);
    EXPECT_EQ(utf16Length("\xFF\xFF"), 2u);
}

TEST(FirstUtf16Units, CutsAfterWholeCharacters) {
    struct Case {
        std::string_view text;
        std::size_t units;
        std::string_view expected;
    };
    const Case cases[] = {
        {"abc", 0, ""},
        {"abc", 2, "ab"},
        {"abc", 3, "abc"},
        {"abc", 9, "abc"},
        {"", 5, ""},
        {"äöü", 2, "äö"},
        {"写真集", 2, "写真"},
        {"a😀b", 1, "a"},
        {"a😀b", 2, "a"},  // half of the face does not count
        {"a😀b", 3, "a😀"},
        {"a😀b", 4, "a😀b"},
        {"\xFF\xFFz", 2, "\xFF\xFF"},
        {"more than eight letters, é", 24, "more than eight letters,"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(firstUtf16Units(c.text, c.units), c.expected) << c.text << " " << c.units;
    }
}

TEST(FirstUtf16Units, IsTheLongestWholePartThatFits) {
    std::mt19937 random(255);
    for (int i = 0; i < 5000; ++i) {
        const std::string text = randomText(random);
        const std::size_t units = random() % 60;
        const std::string_view part = firstUtf16Units(text, units);
        ASSERT_EQ(text.substr(0, part.size()), part);
        ASSERT_TRUE(isUtf8(part));
        ASSERT_LE(utf16Length(part), units);
        if (part.size() < text.size()) {
            std::size_t next = part.size();
            nextCodePoint(text, next);
            ASSERT_GT(utf16Length(std::string_view(text).substr(0, next)), units);
        }
    }
}

// The bytes of code page 1252 whose character is not the one of the same number.
constexpr std::pair<unsigned char, char32_t> cp1252Differences[] = {
    {0x80, U'€'}, {0x82, U'‚'}, {0x83, U'ƒ'}, {0x84, U'„'}, {0x85, U'…'}, {0x86, U'†'},
    {0x87, U'‡'}, {0x88, U'ˆ'}, {0x89, U'‰'}, {0x8A, U'Š'}, {0x8B, U'‹'}, {0x8C, U'Œ'},
    {0x8E, U'Ž'}, {0x91, U'‘'}, {0x92, U'’'}, {0x93, U'“'}, {0x94, U'”'}, {0x95, U'•'},
    {0x96, U'–'}, {0x97, U'—'}, {0x98, U'˜'}, {0x99, U'™'}, {0x9A, U'š'}, {0x9B, U'›'},
    {0x9C, U'œ'}, {0x9E, U'ž'}, {0x9F, U'Ÿ'},
};

char32_t expectedOfCp1252(unsigned char byte) {
    for (const auto& [differing, codePoint] : cp1252Differences) {
        if (differing == byte) {
            return codePoint;
        }
    }
    return byte;
}

TEST(Cp1252, EveryByteHasItsCharacterAndComesBack) {
    for (unsigned value = 0; value < 256; ++value) {
        const std::string byte(1, static_cast<char>(value));
        std::string expected;
        appendUtf8(expectedOfCp1252(static_cast<unsigned char>(value)), expected);
        EXPECT_EQ(utf8FromCp1252(byte), expected) << value;
        EXPECT_EQ(cp1252FromUtf8(expected), byte) << value;
    }
}

TEST(Cp1252, TheFiveUndefinedBytesSurviveTheWayBack) {
    const std::string bytes = "\x81\x8D\x8F\x90\x9D";
    EXPECT_EQ(utf8FromCp1252(bytes), "\u0081\u008D\u008F\u0090\u009D");
    EXPECT_EQ(cp1252FromUtf8(utf8FromCp1252(bytes)), bytes);
}

TEST(Cp1252, ACharacterOutsideBecomesAQuestionMark) {
    EXPECT_EQ(cp1252FromUtf8("a写b"), "a?b");
    EXPECT_EQ(cp1252FromUtf8("😀"), "?");
    EXPECT_EQ(cp1252FromUtf8("музыка.mp3"), "??????.mp3");
    EXPECT_EQ(cp1252FromUtf8("\u0080\u0099"), "??");
    EXPECT_EQ(cp1252FromUtf8("\u0100"), "?");
}

TEST(Cp1252, RandomBytesSurviveTheWayBack) {
    std::mt19937 random(99);
    for (int i = 0; i < 5000; ++i) {
        std::string bytes(random() % 40, 'a');
        for (std::size_t changes = random() % 10; changes > 0 && !bytes.empty(); --changes) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        ASSERT_EQ(cp1252FromUtf8(utf8FromCp1252(bytes)), bytes);
    }
}

TEST(Cp1252, AppendingKeepsWhatIsThere) {
    std::string text = "before ";
    appendUtf8FromCp1252("caf\xE9", text);
    EXPECT_EQ(text, "before café");
    std::string bytes = "before ";
    appendCp1252FromUtf8("café", bytes);
    EXPECT_EQ(bytes, "before caf\xE9");
}

TEST(Latin1, EveryByteIsTheCharacterOfItsNumber) {
    for (unsigned value = 0; value < 256; ++value) {
        for (const std::string& before : {""s, "a"s, "eight letters "s, "é"s}) {
            std::string text = before;
            appendUtf8FromLatin1(std::string(1, static_cast<char>(value)), text);
            std::string expected = before;
            appendUtf8(static_cast<char32_t>(value), expected);
            ASSERT_EQ(text, expected) << value;
        }
    }
}

TEST(Latin1, MixedTexts) {
    std::string text;
    appendUtf8FromLatin1(
        "Stra\xDF"
        "enb\xFCro und noch ein langes Ende",
        text);
    EXPECT_EQ(text, "Straßenbüro und noch ein langes Ende");
}

// Capital and small letter, one pair of each kind of range.
constexpr std::pair<char32_t, char32_t> casePairs[] = {
    {U'A', U'a'}, {U'Z', U'z'},   {U'À', U'à'}, {U'Ö', U'ö'},   {U'Ø', U'ø'},   {U'Þ', U'þ'},
    {U'Ā', U'ā'}, {U'Į', U'į'},   {U'Ĳ', U'ĳ'}, {U'Ķ', U'ķ'},   {U'Ĺ', U'ĺ'},   {U'Ň', U'ň'},
    {U'Ŋ', U'ŋ'}, {U'Ŷ', U'ŷ'},   {U'Ÿ', U'ÿ'}, {U'Ź', U'ź'},   {U'Ž', U'ž'},   {U'Ə', U'ə'},
    {U'Ɔ', U'ɔ'}, {U'Ơ', U'ơ'},   {U'Ǆ', U'ǆ'}, {U'ǅ', U'ǆ'},   {U'Ǎ', U'ǎ'},   {U'Ș', U'ș'},
    {U'Ț', U'ț'}, {U'Ƞ', U'ƞ'},   {U'Ⱥ', U'ⱥ'}, {U'Ά', U'ά'},   {U'Έ', U'έ'},   {U'Ό', U'ό'},
    {U'Ώ', U'ώ'}, {U'Α', U'α'},   {U'Ρ', U'ρ'}, {U'Σ', U'σ'},   {U'Ϋ', U'ϋ'},   {U'Ϯ', U'ϯ'},
    {U'Ѐ', U'ѐ'}, {U'Џ', U'џ'},   {U'А', U'а'}, {U'Я', U'я'},   {U'Ґ', U'ґ'},   {U'Ӏ', U'ӏ'},
    {U'Ӂ', U'ӂ'}, {U'Ԯ', U'ԯ'}, {U'Ẁ', U'ẁ'}, {U'ẞ', U'ß'},   {U'Ạ', U'ạ'},   {U'Ỹ', U'ỹ'},
    {U'Ἀ', U'ἀ'}, {U'Ὑ', U'ὑ'},   {U'Ὼ', U'ὼ'}, {U'Ａ', U'ａ'}, {U'Ｚ', U'ｚ'},
};

TEST(FoldCase, CapitalsBecomeTheirSmallLetters) {
    for (const auto& [capital, small] : casePairs) {
        EXPECT_EQ(foldCase(capital), small) << std::hex << std::uint32_t{capital};
        EXPECT_EQ(foldCase(small), small) << std::hex << std::uint32_t{small};
    }
}

TEST(FoldCase, WhatHasNoSmallLetterOfItsOwnStays) {
    for (const char32_t codePoint : {U'@', U'[',
                                     U'`', U'{',
                                     U'0', U'×',
                                     U'÷', U'ß',
                                     U'µ', U'ÿ',
                                     U'ª', U'ı',
                                     U'İ', U'ĸ',
                                     U'ŉ', U'ſ',
                                     U'ƻ', U'ǰ',
                                     U'ΐ', U'\u0342',
                                     U'҂', U'א',
                                     U'ا', U'写',
                                     U'😀', char32_t{0xFFFD}}) {
        EXPECT_EQ(foldCase(codePoint), codePoint) << std::hex << std::uint32_t{codePoint};
    }
}

TEST(FoldCase, TheFinalSigmaCountsAsASigma) { EXPECT_EQ(foldCase(U'ς'), U'σ'); }

TEST(TrimmedBlanks, TakesTheBlanksOfBothEndsOnly) {
    EXPECT_EQ(trimmedBlanks("  a b "), "a b");
    EXPECT_EQ(trimmedBlanks("a b"), "a b");
    EXPECT_EQ(trimmedBlanks("\ta "), "\ta");
    EXPECT_EQ(trimmedBlanks("   "), "");
    EXPECT_EQ(trimmedBlanks(""), "");
}

TEST(FoldCase, FoldingTwiceIsFoldingOnce) {
    for (char32_t codePoint = 0; codePoint <= highestCodePoint; ++codePoint) {
        const char32_t folded = foldCase(codePoint);
        ASSERT_EQ(foldCase(folded), folded) << std::hex << std::uint32_t{codePoint};
    }
}

TEST(FoldCase, NoLetterHasMoreThanOneCapitalButDigraphsAndSigma) {
    std::vector<int> sources(highestCodePoint + 1, 0);
    for (char32_t codePoint = 0; codePoint <= highestCodePoint; ++codePoint) {
        ++sources[foldCase(codePoint)];
    }
    std::u32string several;
    for (char32_t codePoint = 0; codePoint <= highestCodePoint; ++codePoint) {
        if (sources[codePoint] > 2) {
            several.push_back(codePoint);
        }
    }
    // ǆ ǉ ǌ ǳ have a title form, θ has a symbol whose small letter it is too.
    EXPECT_EQ(several, U"ǆǉǌǳθσ");
}

TEST(EqualIgnoringCase, ComparesWholeTexts) {
    struct Case {
        std::string_view left;
        std::string_view right;
        bool equal;
    };
    const Case cases[] = {
        {"", "", true},
        {"", "a", false},
        {"README.txt", "readme.TXT", true},
        {"readme", "readme ", false},
        {"readme.txt", "readme-txt", false},
        {"@", "`", false},
        {"[", "{", false},
        {"STRASSE", "straße", false},
        {"Grüße", "GRÜßE", true},
        {"ΟΔΟΣ", "οδος", true},
        {"МУЗЫКА", "музыка", true},
        {"é", "\xC3", false},
        {"写真", "写真", true},
        {"写真", "写眞", false},
        {"Ⱥ", "ⱥ", true},  // two bytes and three
        {"aⱥ", "Aa", false},
        {"a\0b"sv, "A\0B"sv, true},
        {"a\0b"sv, "a"sv, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(equalIgnoringCase(c.left, c.right), c.equal) << c.left << " and " << c.right;
        EXPECT_EQ(equalIgnoringCase(c.right, c.left), c.equal) << c.right << " and " << c.left;
    }
}

TEST(FoldedCase, FoldsEachCharacter) {
    EXPECT_EQ(foldedCase(""), "");
    EXPECT_EQ(foldedCase("A Long README of the Folder ÀÉÎ and MORE"),
              "a long readme of the folder àéî and more");
    EXPECT_EQ(foldedCase("ΟΔΟΣ МУЗЫКА Ⱥ 写真 😀"), "οδοσ музыка ⱥ 写真 😀");
}

TEST(FoldedCase, TextsAreEqualButForCaseWhenTheirFoldedFormsAreEqual) {
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        std::string left;
        std::string right;
        for (std::size_t letters = random() % 12; letters > 0; --letters) {
            const auto& [capital, small] = casePairs[random() % std::size(casePairs)];
            appendUtf8(random() % 2 == 0 ? capital : small, left);
            const bool other = random() % 64 == 0;
            appendUtf8(other ? U'-' : random() % 2 == 0 ? capital : small, right);
        }
        ASSERT_EQ(equalIgnoringCase(left, right), foldedCase(left) == foldedCase(right))
            << left << " and " << right;
    }
}

}  // namespace
}  // namespace base
