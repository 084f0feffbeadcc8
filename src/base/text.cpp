#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace base {
namespace {

constexpr char32_t replacementCharacter = 0xFFFD;
constexpr char32_t lastCodePoint = 0x10FFFF;

constexpr std::size_t wordSize = sizeof(std::uint64_t);

std::uint64_t loadWord(const void* from) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, wordSize);
    return word;
}

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }
bool isSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }
bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// How many characters from the front of `text` are ASCII, looking at a word at a time. `nonAscii`
/// has those bits of a word's characters that only characters beyond ASCII have.
template <typename Character>
std::size_t asciiLength(std::basic_string_view<Character> text, std::uint64_t nonAscii) {
    constexpr std::size_t step = wordSize / sizeof(Character);
    const auto isAsciiAt = [&](std::size_t position) {
        return (loadWord(text.data() + position) & nonAscii) == 0;
    };
    std::size_t length = 0;
    while (length + step <= text.size() && isAsciiAt(length)) {
        length += step;
    }
    // What is left of an ASCII text is the end of its last whole word.
    if (text.size() >= step && length + step > text.size() && isAsciiAt(text.size() - step)) {
        return text.size();
    }
    while (length < text.size() &&
           static_cast<std::make_unsigned_t<Character>>(text[length]) < 0x80) {
        ++length;
    }
    return length;
}

std::size_t asciiLength(std::string_view text) {
    return asciiLength<char>(text, 0x8080808080808080);
}
std::size_t asciiLength(std::u16string_view units) {
    return asciiLength<char16_t>(units, 0xFF80FF80FF80FF80);
}

constexpr std::size_t blockLength = 8;

/// Copies eight ASCII characters from one width to another, by way of arrays of known length, which
/// the compiler turns into a handful of wide instructions.
template <typename From, typename To>
void copyAsciiBlock(const From* from, To* out) {
    std::make_unsigned_t<From> source[blockLength];
    To converted[blockLength];
    std::memcpy(source, from, sizeof source);
    for (std::size_t i = 0; i < blockLength; ++i) {
        converted[i] = static_cast<To>(source[i]);
    }
    std::memcpy(out, converted, sizeof converted);
}

/// Copies `count` ASCII characters from one width to another and returns the place behind the last.
template <typename From, typename To>
To* copyAscii(const From* from, std::size_t count, To* out) {
    if (count < blockLength) {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<To>(from[i]);
        }
        return out + count;
    }
    for (std::size_t done = 0; done + blockLength <= count; done += blockLength) {
        copyAsciiBlock(from + done, out + done);
    }
    // What is left is the end of the last whole block.
    copyAsciiBlock(from + count - blockLength, out + count - blockLength);
    return out + count;
}

/// A decoded character and the bytes it took; `length` is 0 where the bytes are malformed.
struct Decoded {
    char32_t codePoint = replacementCharacter;
    std::size_t length = 0;
};

struct LeadByte {
    std::size_t length = 0;  ///< bytes of the whole sequence; 0: cannot begin one
    char32_t bits = 0;       ///< its share of the code point
    char32_t lowest = 0;     ///< the lowest code point that needs this length
};

LeadByte readLeadByte(unsigned char lead) {
    if (lead < 0x80) {
        return {1, lead, 0};
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {2, lead & 0x1Fu, 0x80};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return {3, lead & 0x0Fu, 0x800};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return {4, lead & 0x07u, 0x10000};
    }
    return {};
}

/// Decodes the character at the front of `text`, which is not empty.
Decoded decodeFirst(std::string_view text) {
    const LeadByte lead = readLeadByte(static_cast<unsigned char>(text.front()));
    if (lead.length == 0 || lead.length > text.size()) {
        return {};
    }
    char32_t codePoint = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0u) != 0x80) {
            return {};
        }
        codePoint = codePoint << 6 | (byte & 0x3Fu);
    }
    if (codePoint < lead.lowest || codePoint > lastCodePoint || isSurrogate(codePoint)) {
        return {};
    }
    return {codePoint, lead.length};
}

char toByte(char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); }

/// Writes `codePoint` as UTF-8 and returns the place behind it.
char* encode(char32_t codePoint, char* out) {
    if (codePoint < 0x80) {
        *out++ = toByte(codePoint);
        return out;
    }
    if (isSurrogate(codePoint) || codePoint > lastCodePoint) {
        codePoint = replacementCharacter;
    }
    if (codePoint < 0x800) {
        *out++ = toByte(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            *out++ = toByte(0xE0 | codePoint >> 12);
        } else {
            *out++ = toByte(0xF0 | codePoint >> 18);
            *out++ = toByte(0x80 | (codePoint >> 12 & 0x3F));
        }
        *out++ = toByte(0x80 | (codePoint >> 6 & 0x3F));
    }
    *out++ = toByte(0x80 | (codePoint & 0x3F));
    return out;
}

/// Writes `codePoint`, which is valid, as one or two UTF-16 units and returns the place behind.
char16_t* encode(char32_t codePoint, char16_t* out) {
    if (codePoint < 0x10000) {
        *out++ = static_cast<char16_t>(codePoint);
        return out;
    }
    const char32_t offset = codePoint - 0x10000;
    *out++ = static_cast<char16_t>(0xD800 + (offset >> 10));
    *out++ = static_cast<char16_t>(0xDC00 + (offset & 0x3FF));
    return out;
}

std::size_t utf16UnitsOf(char32_t codePoint) { return codePoint < 0x10000 ? 1 : 2; }

/// The character at the front of `units`, which is not empty, and the units it took.
Decoded decodeFirst(std::u16string_view units) {
    const char32_t first = units.front();
    if (!isSurrogate(first)) {
        return {first, 1};
    }
    if (isHighSurrogate(first) && units.size() > 1 && isLowSurrogate(units[1])) {
        const char32_t second = units[1];
        return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 2};
    }
    return {replacementCharacter, 1};
}

/// An upper bound, close in most texts, of the bytes that `units` take as UTF-8.
std::size_t utf8Bound(std::u16string_view units) {
    std::size_t bytes = units.size();
    for (const char16_t unit : units.substr(asciiLength(units))) {
        bytes += static_cast<std::size_t>(unit >= 0x80) + static_cast<std::size_t>(unit >= 0x800);
    }
    return bytes;
}

/// Lets `write` put at most `bound` elements somewhere and appends them to `text`; `write` is given
/// the place and returns the one behind its last element. Most texts are short: those are written
/// to the stack first, as making room in `text` would fill that room with zeros.
template <typename Text, typename Write>
void appendWritten(Text& text, std::size_t bound, Write write) {
    constexpr std::size_t shortBound = 768;
    if (bound <= shortBound) {
        typename Text::value_type buffer[shortBound];
        const auto* const end = write(buffer);
        text.append(buffer, static_cast<std::size_t>(end - buffer));
        return;
    }
    const std::size_t oldSize = text.size();
    text.resize(oldSize + bound);
    const auto* const end = write(text.data() + oldSize);
    text.resize(static_cast<std::size_t>(end - text.data()));
}

/// What the bytes 0x80 to 0x9F of code page 1252 stand for; 0x81, 0x8D, 0x8F, 0x90 and 0x9D are
/// undefined and stand for themselves.
constexpr std::size_t cp1252First = 0x80;
constexpr std::array<char16_t, 32> cp1252Block{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t codePointOfCp1252(unsigned char byte) {
    const bool inBlock = byte >= cp1252First && byte < cp1252First + cp1252Block.size();
    return inBlock ? cp1252Block[byte - cp1252First] : byte;
}

char cp1252OfCodePoint(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        return toByte(codePoint);
    }
    const auto* const found = std::find(cp1252Block.begin(), cp1252Block.end(), codePoint);
    if (found == cp1252Block.end()) {
        return '?';
    }
    return toByte(static_cast<char32_t>(
        cp1252First + static_cast<std::size_t>(std::distance(cp1252Block.begin(), found))));
}

/// Capital letters from `first` to `last`, every `stride`-th one, whose small letters lie
/// `distance` further on.
struct CapitalRange {
    char16_t first;
    char16_t last;
    int stride;
    int distance;
};

/// In order, so that a search can halve it. U+0130 is missing on purpose: its small letter is not
/// its own.
constexpr CapitalRange capitalRanges[] = {
    // Latin-1 and Latin Extended-A
    {0x00C0, 0x00D6, 1, 32},
    {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},
    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1},
    // Latin Extended-B
    {0x0181, 0x0181, 1, 210},
    {0x0182, 0x0184, 2, 1},
    {0x0186, 0x0186, 1, 206},
    {0x0187, 0x0187, 1, 1},
    {0x0189, 0x018A, 1, 205},
    {0x018B, 0x018B, 1, 1},
    {0x018E, 0x018E, 1, 79},
    {0x018F, 0x018F, 1, 202},
    {0x0190, 0x0190, 1, 203},
    {0x0191, 0x0191, 1, 1},
    {0x0193, 0x0193, 1, 205},
    {0x0194, 0x0194, 1, 207},
    {0x0196, 0x0196, 1, 211},
    {0x0197, 0x0197, 1, 209},
    {0x0198, 0x0198, 1, 1},
    {0x019C, 0x019C, 1, 211},
    {0x019D, 0x019D, 1, 213},
    {0x019F, 0x019F, 1, 214},
    {0x01A0, 0x01A4, 2, 1},
    {0x01A6, 0x01A6, 1, 218},
    {0x01A7, 0x01A7, 1, 1},
    {0x01A9, 0x01A9, 1, 218},
    {0x01AC, 0x01AC, 1, 1},
    {0x01AE, 0x01AE, 1, 218},
    {0x01AF, 0x01AF, 1, 1},
    {0x01B1, 0x01B2, 1, 217},
    {0x01B3, 0x01B5, 2, 1},
    {0x01B7, 0x01B7, 1, 219},
    {0x01B8, 0x01B8, 1, 1},
    {0x01BC, 0x01BC, 1, 1},
    {0x01C4, 0x01C4, 1, 2},
    {0x01C5, 0x01C5, 1, 1},
    {0x01C7, 0x01C7, 1, 2},
    {0x01C8, 0x01C8, 1, 1},
    {0x01CA, 0x01CA, 1, 2},
    {0x01CB, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},
    {0x01F1, 0x01F1, 1, 2},
    {0x01F2, 0x01F4, 2, 1},
    {0x01F6, 0x01F6, 1, -97},
    {0x01F7, 0x01F7, 1, -56},
    {0x01F8, 0x021E, 2, 1},
    {0x0220, 0x0220, 1, -130},
    {0x0222, 0x0232, 2, 1},
    {0x023A, 0x023A, 1, 10795},
    {0x023B, 0x023B, 1, 1},
    {0x023D, 0x023D, 1, -163},
    {0x023E, 0x023E, 1, 10792},
    {0x0241, 0x0241, 1, 1},
    {0x0243, 0x0243, 1, -195},
    {0x0244, 0x0244, 1, 69},
    {0x0245, 0x0245, 1, 71},
    {0x0246, 0x024E, 2, 1},
    // Greek
    {0x0370, 0x0372, 2, 1},
    {0x0376, 0x0376, 1, 1},
    {0x037F, 0x037F, 1, 116},
    {0x0386, 0x0386, 1, 38},
    {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},
    {0x03A3, 0x03AB, 1, 32},
    {0x03CF, 0x03CF, 1, 8},
    {0x03D8, 0x03EE, 2, 1},
    {0x03F4, 0x03F4, 1, -60},
    {0x03F7, 0x03F7, 1, 1},
    {0x03F9, 0x03F9, 1, -7},
    {0x03FA, 0x03FA, 1, 1},
    {0x03FD, 0x03FF, 1, -130},
    // Cyrillic
    {0x0400, 0x040F, 1, 80},
    {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},
    // Latin Extended Additional
    {0x1E00, 0x1E94, 2, 1},
    {0x1E9E, 0x1E9E, 1, -7615},
    {0x1EA0, 0x1EFE, 2, 1},
    // Greek with breathings
    {0x1F08, 0x1F0F, 1, -8},
    {0x1F18, 0x1F1D, 1, -8},
    {0x1F28, 0x1F2F, 1, -8},
    {0x1F38, 0x1F3F, 1, -8},
    {0x1F48, 0x1F4D, 1, -8},
    {0x1F59, 0x1F5F, 2, -8},
    {0x1F68, 0x1F6F, 1, -8},
    {0x1F88, 0x1F8F, 1, -8},
    {0x1F98, 0x1F9F, 1, -8},
    {0x1FA8, 0x1FAF, 1, -8},
    {0x1FB8, 0x1FB9, 1, -8},
    {0x1FBA, 0x1FBB, 1, -74},
    {0x1FBC, 0x1FBC, 1, -9},
    {0x1FC8, 0x1FCB, 1, -86},
    {0x1FCC, 0x1FCC, 1, -9},
    {0x1FD8, 0x1FD9, 1, -8},
    {0x1FDA, 0x1FDB, 1, -100},
    {0x1FE8, 0x1FE9, 1, -8},
    {0x1FEA, 0x1FEB, 1, -112},
    {0x1FEC, 0x1FEC, 1, -7},
    {0x1FF8, 0x1FF9, 1, -128},
    {0x1FFA, 0x1FFB, 1, -126},
    {0x1FFC, 0x1FFC, 1, -9},
    // Full-width Latin
    {0xFF21, 0xFF3A, 1, 32},
};

constexpr char32_t finalSigma = 0x03C2;
constexpr char32_t sigma = 0x03C3;

char32_t foldBeyondAscii(char32_t codePoint) {
    if (codePoint == finalSigma) {
        return sigma;
    }
    const auto* const range = std::lower_bound(
        std::begin(capitalRanges), std::end(capitalRanges), codePoint,
        [](const CapitalRange& candidate, char32_t wanted) { return candidate.last < wanted; });
    if (range == std::end(capitalRanges) || codePoint < range->first ||
        (static_cast<int>(codePoint) - range->first) % range->stride != 0) {
        return codePoint;
    }
    return static_cast<char32_t>(static_cast<int>(codePoint) + range->distance);
}

char foldAscii(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
    for (;;) {
        bytes.remove_prefix(asciiLength(bytes));
        if (bytes.empty()) {
            return true;
        }
        const Decoded decoded = decodeFirst(bytes);
        if (decoded.length == 0) {
            return false;
        }
        bytes.remove_prefix(decoded.length);
    }
}

std::u16string utf16FromUtf8(std::string_view text) {
    std::u16string units;
    appendUtf16FromUtf8(text, units);
    return units;
}

void appendUtf16FromUtf8(std::string_view text, std::u16string& units) {
    appendWritten(units, text.size(), [text](char16_t* out) {
        std::size_t position = 0;
        while (position < text.size()) {
            const std::size_t ascii = asciiLength(text.substr(position));
            out = copyAscii(text.data() + position, ascii, out);
            position += ascii;
            while (position < text.size() && !isAscii(text[position])) {
                out = encode(nextCodePoint(text, position), out);
            }
        }
        return out;
    });
}

std::string utf8FromUtf16(std::u16string_view units) {
    std::string text;
    appendUtf8FromUtf16(units, text);
    return text;
}

void appendUtf8FromUtf16(std::u16string_view units, std::string& text) {
    appendWritten(text, utf8Bound(units), [units](char* out) {
        std::u16string_view rest = units;
        while (!rest.empty()) {
            const std::size_t ascii = asciiLength(rest);
            out = copyAscii(rest.data(), ascii, out);
            rest.remove_prefix(ascii);
            while (!rest.empty() && rest.front() >= 0x80) {
                const Decoded decoded = decodeFirst(rest);
                out = encode(decoded.codePoint, out);
                rest.remove_prefix(decoded.length);
            }
        }
        return out;
    });
}

void appendUtf8(char32_t codePoint, std::string& text) {
    char bytes[4];
    const char* const end = encode(codePoint, bytes);
    text.append(bytes, static_cast<std::size_t>(end - bytes));
}

std::string utf8FromCp1252(std::string_view bytes) {
    std::string text;
    appendUtf8FromCp1252(bytes, text);
    return text;
}

void appendUtf8FromCp1252(std::string_view bytes, std::string& text) {
    const std::size_t ascii = asciiLength(bytes);
    text.append(bytes.substr(0, ascii));
    for (const char byte : bytes.substr(ascii)) {
        appendUtf8(codePointOfCp1252(static_cast<unsigned char>(byte)), text);
    }
}

std::string cp1252FromUtf8(std::string_view text) {
    std::string bytes;
    appendCp1252FromUtf8(text, bytes);
    return bytes;
}

void appendCp1252FromUtf8(std::string_view text, std::string& bytes) {
    std::size_t position = asciiLength(text);
    bytes.append(text.substr(0, position));
    while (position < text.size()) {
        bytes.push_back(cp1252OfCodePoint(nextCodePoint(text, position)));
    }
}

void appendUtf8FromLatin1(std::string_view bytes, std::string& text) {
    const std::size_t ascii = asciiLength(bytes);
    text.append(bytes.substr(0, ascii));
    if (ascii == bytes.size()) {
        return;
    }
    const std::string_view rest = bytes.substr(ascii);
    appendWritten(text, 2 * rest.size(), [rest](char* out) {
        for (const char byte : rest) {
            out = encode(static_cast<unsigned char>(byte), out);
        }
        return out;
    });
}

std::size_t utf16Length(std::string_view text) {
    std::size_t units = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t ascii = asciiLength(text.substr(position));
        units += ascii;
        position += ascii;
        while (position < text.size() && !isAscii(text[position])) {
            units += utf16UnitsOf(nextCodePoint(text, position));
        }
    }
    return units;
}

std::string_view trimmedBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view firstUtf16Units(std::string_view text, std::size_t units) {
    // No character takes more units than bytes.
    if (text.size() <= units) {
        return text;
    }
    std::size_t position = std::min(asciiLength(text), units);
    std::size_t taken = position;
    while (position < text.size()) {
        std::size_t next = position;
        taken += utf16UnitsOf(nextCodePoint(text, next));
        if (taken > units) {
            break;
        }
        position = next;
    }
    return text.substr(0, position);
}

char32_t foldCase(char32_t codePoint) {
    if (codePoint < 0x80) {
        return static_cast<char32_t>(foldAscii(static_cast<char>(codePoint)));
    }
    return foldBeyondAscii(codePoint);
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
    std::size_t leftPosition = 0;
    std::size_t rightPosition = 0;
    while (leftPosition < left.size() && rightPosition < right.size()) {
        const char leftByte = left[leftPosition];
        const char rightByte = right[rightPosition];
        if (isAscii(leftByte) && isAscii(rightByte)) {
            if (foldAscii(leftByte) != foldAscii(rightByte)) {
                return false;
            }
            ++leftPosition;
            ++rightPosition;
        } else if (foldCase(nextCodePoint(left, leftPosition)) !=
                   foldCase(nextCodePoint(right, rightPosition))) {
            return false;
        }
    }
    return leftPosition == left.size() && rightPosition == right.size();
}

std::string foldedCase(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t ascii = asciiLength(text.substr(position));
        folded.append(text.substr(position, ascii));
        std::transform(folded.end() - static_cast<std::ptrdiff_t>(ascii), folded.end(),
                       folded.end() - static_cast<std::ptrdiff_t>(ascii), foldAscii);
        position += ascii;
        while (position < text.size() && !isAscii(text[position])) {
            appendUtf8(foldCase(nextCodePoint(text, position)), folded);
        }
    }
    return folded;
}

char32_t nextCodePoint(std::string_view text, std::size_t& position) {
    const Decoded decoded = decodeFirst(text.substr(position));
    position += std::max<std::size_t>(decoded.length, 1);
    return decoded.codePoint;
}

}  // namespace base
