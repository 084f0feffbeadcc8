#include "jet/text_codec.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/text.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/hexadecimal.h"

namespace jet_test {
namespace {

std::string decoded4(std::string_view hex) {
    std::string text;
    jet::appendDecodedText(jet::jet4Format, fromHex(hex), text);
    return text;
}

std::string decoded3(std::string_view hex) {
    std::string text;
    jet::appendDecodedText(jet::jet3Format, fromHex(hex), text);
    return text;
}

std::string encoded4(std::string_view text, bool mayCompress = true) {
    std::string stored;
    jet::appendEncodedText(jet::jet4Format, text, mayCompress, stored);
    return toHex(stored);
}

std::string encoded3(std::string_view text) {
    std::string stored;
    jet::appendEncodedText(jet::jet3Format, text, true, stored);
    return toHex(stored);
}

std::string readBack(const jet::Format& format, std::string_view text, bool mayCompress) {
    std::string stored;
    jet::appendEncodedText(format, text, mayCompress, stored);
    std::string back;
    jet::appendDecodedText(format, stored, back);
    return back;
}

TEST(TextCodec, ThreeCharactersAreCompressed) { EXPECT_EQ(encoded4("abc"), "fffe616263"); }

TEST(TextCodec, OneAndTwoCharactersStayPlain) {
    EXPECT_EQ(encoded4("a"), "6100");
    EXPECT_EQ(encoded4("ab"), "61006200");
    EXPECT_EQ(encoded4("\u00E9"), "e900");
    EXPECT_EQ(encoded4("\u00E9\u00E9"), "e900e900");
}

TEST(TextCodec, EmptyTextHasNoBytes) {
    EXPECT_EQ(encoded4(""), "");
    EXPECT_EQ(encoded3(""), "");
    EXPECT_EQ(decoded4(""), "");
}

TEST(TextCodec, NothingIsCompressedWhereTheColumnDoesNotAllowIt) {
    EXPECT_EQ(encoded4("abc", false), "610062006300");
}

TEST(TextCodec, CompressedBytesAreLatin1) {
    EXPECT_EQ(encoded4("\u0080\u00FF\u00A4"), "fffe80ffa4");
    EXPECT_EQ(decoded4("fffe80ffa4"), "\u0080\u00FF\u00A4");
}

TEST(TextCodec, Jet3BytesAreCodePage1252) {
    EXPECT_EQ(encoded3("\u20AC\u00FF"), "80ff");
    EXPECT_EQ(decoded3("80ff"), "\u20AC\u00FF");
}

TEST(TextCodec, Jet3KeepsTheFiveUndefinedBytes) {
    EXPECT_EQ(encoded3(decoded3("81 8d 8f 90 9d")), "818d8f909d");
}

TEST(TextCodec, Jet3CharacterOutsideTheCodePageBecomesAQuestionMark) {
    EXPECT_EQ(encoded3("a\u0416b"), "613f62");
}

TEST(TextCodec, CharacterAboveFfMakesTheTextPlain) {
    EXPECT_EQ(encoded4("ab\u0100"), "610062000001");
    EXPECT_EQ(encoded4("\u20AC uro"),
              "ac2020007500"
              "72006f00");
}

TEST(TextCodec, TextWithAZeroCharacterStaysPlain) {
    const std::string text("a\0bc", 4);
    EXPECT_EQ(encoded4(text), "6100000062006300");
    EXPECT_EQ(readBack(jet::jet4Format, text, true), text);
}

TEST(TextCodec, ZeroByteSwitchesToUnitsAndBack) {
    EXPECT_EQ(decoded4("fffe 61 00 1604 3004 00 62"), "a\u0416\u0430b");
}

TEST(TextCodec, CompressedTextMayEndInEitherMode) {
    EXPECT_EQ(decoded4("fffe 61 00 1604"), "a\u0416");
    EXPECT_EQ(decoded4("fffe 61 00"), "a");
    EXPECT_EQ(decoded4("fffe 00 1604 00"), "\u0416");
    EXPECT_EQ(decoded4("fffe"), "");
}

TEST(TextCodec, ManySwitchesAreFollowed) {
    EXPECT_EQ(decoded4("fffe 00 1604 00 61 00 3004 00 62 00 1604 00 63"),
              "\u0416"
              "a"
              "\u0430"
              "b"
              "\u0416"
              "c");
}

TEST(TextCodec, SurrogatePairInACompressedRunIsOneCharacter) {
    EXPECT_EQ(decoded4("fffe 61 00 3dd8 02de"), "a\U0001F602");
}

TEST(TextCodec, CutUnitAtTheEndIsLeftOut) {
    EXPECT_EQ(decoded4("6100 62"), "a");
    EXPECT_EQ(decoded4("fffe 00 1604 30"), "\u0416");
}

TEST(TextCodec, LoneSurrogatesAreReadAsReplacementCharacters) {
    EXPECT_EQ(decoded4("3dd8 6100"), "\uFFFDa");
    EXPECT_EQ(decoded4("6100 02de"), "a\uFFFD");
    EXPECT_EQ(decoded4("02de 3dd8"), "\uFFFD\uFFFD");
}

TEST(TextCodec, CharacterBeyondTheFirstPlaneIsASurrogatePair) {
    EXPECT_EQ(encoded4("\U0001F602"), "3dd802de");
    EXPECT_EQ(decoded4("3dd802de"), "\U0001F602");
}

TEST(TextCodec, TextThatBeginsWithTheMarkIsReadBack) {
    for (const std::string text : {"\uFEFF", "\uFEFFabc", "\uFEFF\u0416", "\uFEFF\uFEFF"}) {
        EXPECT_EQ(readBack(jet::jet4Format, text, true), text);
        EXPECT_EQ(readBack(jet::jet4Format, text, false), text);
    }
}

TEST(TextCodec, MarkInsideATextIsOrdinary) {
    EXPECT_EQ(encoded4("a\uFEFF"), "6100fffe");
    EXPECT_EQ(readBack(jet::jet4Format, "a\uFEFF", true), "a\uFEFF");
}

TEST(TextCodec, OnlyTextThatCannotBeStoredIsRefused) {
    EXPECT_EQ(faultOf([] { encoded4("\uFEFF\u0100"); }), base::EngineFault::Value);
}

TEST(TextCodec, CharactersCountInUtf16Units) {
    const auto characters = [](const jet::Format& format, const std::string& text) {
        std::string stored;
        jet::appendEncodedText(format, text, true, stored);
        return jet::storedCharacters(format, stored);
    };
    EXPECT_EQ(characters(jet::jet4Format, "abc"), 3u);
    EXPECT_EQ(characters(jet::jet4Format, "ab"), 2u);
    EXPECT_EQ(characters(jet::jet4Format, "\U0001F602"), 2u);
    EXPECT_EQ(characters(jet::jet4Format, std::string(255, 'x')), 255u);
    EXPECT_EQ(characters(jet::jet3Format, "\u20AC\u00E9"), 2u);
}

TEST(TextCodec, MarkedTextCountsTheRoomThatItTakes) {
    std::string stored;
    jet::appendEncodedText(jet::jet4Format, "\uFEFFab", true, stored);
    EXPECT_EQ(stored.size(), 9u);
    EXPECT_EQ(jet::storedCharacters(jet::jet4Format, stored), 5u);
}

TEST(TextCodec, NamesAreNeverCompressed) {
    EXPECT_EQ(toHex(jet::encodedName(jet::jet4Format, "abc")), "610062006300");
    EXPECT_EQ(jet::decodedName(jet::jet4Format, fromHex("610062006300")), "abc");
    EXPECT_EQ(toHex(jet::encodedName(jet::jet3Format, "abc")), "616263");
}

TEST(TextCodec, EveryCharacterIsReadBack) {
    for (char32_t c = 1; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 61) {
        if (c == 0xFEFF || (c >= 0xD800 && c <= 0xDFFF)) {
            continue;
        }
        std::string text = "xy";
        base::appendUtf8(c, text);
        ASSERT_EQ(readBack(jet::jet4Format, text, true), text) << static_cast<unsigned>(c);
    }
}

}  // namespace
}  // namespace jet_test
