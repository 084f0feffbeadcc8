#include "jet/index_key.h"

#include <array>
#include <charconv>

#include "base/text.h"
#include "jet/bytes.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

// The sort codes of 16 characters a line, as hexadecimal text. "a/b" is code a with the accent b,
// "~c" a character that the order ignores with code c, "--" no effect, "*" a letter that counts as
// a position for the accents of Jet 3.

constexpr std::array<std::string_view, 16> jet4Codes{
    "-- ~03 ~04 ~05 ~06 ~07 ~08 ~09 ~0A 0803 0804 0805 0806 0807 ~0B ~0C",
    "~0D ~0E ~0F ~10 ~11 ~12 ~13 ~14 ~15 ~16 ~17 ~18 ~19 ~1A ~1B ~1C",
    "07 09 0A 0C 0E 10 12 ~80 14 16 18 2C 1A ~82 1C 1E",
    "36 38 3A 3C 3E 40 42 44 46 48 20 22 2E 30 32 24",
    "26 4A 4C 4D 4F 51 53 55 57 59 5B 5C 5E 60 62 64",
    "66 68 69 6B 6D 6F 71 73 75 76 78 27 29 2A 2B02 2B03",
    "2B07 4A 4C 4D 4F 51 53 55 57 59 5B 5C 5E 60 62 64",
    "66 68 69 6B 6D 6F 71 73 75 76 78 2B09 2B0B 2B0D 2B0F ~1D",
    "~1E ~1F ~20 ~21 ~22 ~23 ~24 ~25 ~26 ~27 ~28 ~29 ~2A ~2B ~2C ~2D",
    "~2E ~2F ~30 ~31 ~32 ~33 ~34 ~35 ~36 ~37 ~38 ~39 ~3A ~3B ~3C ~3D",
    "0802 2B10 34A6 34A7 34A8 34A9 2B11 34AA 2B12 34AB 4A/03 3305 34AC ~83 34AD 2B13",
    "34AE 3304 3A 3C 2B14 34AF 34B0 34B1 2B15 38 64/03 3307 3712 3716 371A 2B16",
    "4A/0F 4A/0E 4A/12 4A/19 4A/13 4A/1A 4A51 4D/1C 51/0F 51/0E 51/12 51/13 59/0F 59/0E 59/12 "
    "59/13",
    "4F/68 62/19 64/0F 64/0E 64/12 64/19 64/13 3309 64/21 6F/0F 6F/0E 6F/12 6F/13 76/0E 6D57 6B6B",
    "4A/0F 4A/0E 4A/12 4A/19 4A/13 4A/1A 4A51 4D/1C 51/0F 51/0E 51/12 51/13 59/0F 59/0E 59/12 "
    "59/13",
    "4F/68 62/19 64/0F 64/0E 64/12 64/19 64/13 330A 64/21 6F/0F 6F/0E 6F/12 6F/13 76/0E 6D57 76/13",
};

constexpr std::array<std::string_view, 16> jet3Codes{
    "10 10 10 10 10 10 10 10 10 11 10 10 10 10 10 10",
    "10 10 10 10 10 10 10 10 10 10 10 10 10 10 10 10",
    "11 12 13 14 15 16 17 18 19 1A 1B 1C 1D 1E 1F 20",
    "56 57 58 59 5A 5B 5C 5D 5E 5F 21 22 23 24 25 26",
    "27 60* 61 62* 64 66* 67 68 69 6A* 6B 6C 6D 6F 70* 72*",
    "73 74 75 76* 77 78* 7A 7B 7C 7D* 7E 28 29 2A 2B 2C",
    "2D 60* 61 62* 64 66* 67 68 69 6A* 6B 6C 6D 6F 70* 72*",
    "73 74 75 76* 77 78* 7A 7B 7C 7D* 7E 2E 2F 30 31 10",
    "10 10 18 32 13 33 34 35 36 37 76/A 18 7266 10 10 10",
    "10 18 18 13 13 38 1E 1E 39 3A 76/A 18 7266 10 10 7D/6",
    "11 3B 3C 3D 3E 3F 40 41 42 43 44 13 45 1E 46 47",
    "48 49 58 59 4A 4B 4C 4D 4E 57 4F 13 50 51 52 53",
    "60/3 60/4 60/5 60/7 60/6 60/8 6066 62/9 66/3 66/4 66/5 66/6 6A/3 6A/4 6A/5 6A/6",
    "65 70/7 72/3 72/4 72/5 72/7 72/6 54 81 78/3 78/4 78/5 78/6 7D/4 7F 7676",
    "60/3 60/4 60/5 60/7 60/6 60/8 6066 62/9 66/3 66/4 66/5 66/6 6A/3 6A/4 6A/5 6A/6",
    "65 70/7 72/3 72/4 72/5 72/7 72/6 55 81 78/3 78/4 78/5 78/6 7D/4 7F 7D/6",
};

struct SortCode {
    std::string codes;       ///< one or two bytes; empty for ignored characters
    unsigned accent = 0;     ///< extra byte (Jet 4) or nibble (Jet 3); 0: none
    unsigned ignorable = 0;  ///< code of an ignored character; 0: none
    bool position = false;   ///< Jet 3: counts as a position for the accents
};

unsigned hexadecimal(std::string_view digits) {
    unsigned number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return number;
}

SortCode parseCode(std::string_view entry) {
    SortCode code;
    if (entry == "--") {
        return code;
    }
    if (entry.starts_with('~')) {
        code.ignorable = hexadecimal(entry.substr(1));
        return code;
    }
    if (entry.ends_with('*')) {
        code.position = true;
        entry.remove_suffix(1);
    }
    if (const std::size_t slash = entry.find('/'); slash != std::string_view::npos) {
        code.accent = hexadecimal(entry.substr(slash + 1));
        code.position = true;
        entry = entry.substr(0, slash);
    }
    for (std::size_t i = 0; i < entry.size(); i += 2) {
        code.codes.push_back(static_cast<char>(hexadecimal(entry.substr(i, 2))));
    }
    return code;
}

SortCode codeOf(const std::array<std::string_view, 16>& table, unsigned character) {
    std::string_view line = table[character / 16];
    for (unsigned skip = character % 16; skip > 0; --skip) {
        line.remove_prefix(line.find(' ') + 1);
    }
    return parseCode(line.substr(0, line.find(' ')));
}

std::string_view withoutTrailingSpaces(std::string_view text) {
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

bool appendJet4Key(std::string_view text, std::string& key) {
    ByteWriter codes;
    ByteWriter accents;
    ByteWriter ignored;
    std::size_t positions = 0;
    for (const char16_t unit : base::utf16FromUtf8(text)) {
        if (unit > 0xFF) {
            return false;
        }
        const SortCode code = codeOf(jet4Codes, unit);
        if (code.ignorable != 0) {
            const auto at = static_cast<std::uint32_t>(0x8000 | (7 + 4 * positions));
            ignored.u8(at >> 8).u8(at).u8(6).u8(code.ignorable);
        }
        if (!code.codes.empty()) {
            ++positions;
            codes.raw(code.codes);
            accents.u8(code.accent != 0 ? code.accent : 2);
        }
    }
    std::string& extra = accents.bytes();
    extra.erase(extra.find_last_not_of('\x02') + 1);
    key += '\x7F' + codes.bytes() + '\x01' + extra;
    if (ignored.size() != 0) {
        key += "\x01\x01\x01" + ignored.bytes();
    }
    key.push_back('\0');
    return true;
}

void appendJet3Key(std::string_view bytes, std::string& key) {
    std::string codes;
    std::string nibbles = "0";
    std::size_t used = 0;  // nibbles up to the last accent
    for (const char byte : bytes) {
        const SortCode code = codeOf(jet3Codes, static_cast<unsigned char>(byte));
        codes += code.codes;
        if (code.accent != 0) {
            nibbles.push_back("0123456789ABCDEF"[code.accent]);
            used = nibbles.size();
        } else if (code.position) {
            nibbles.push_back('2');
        } else if (code.codes.size() == 2) {
            nibbles += "22";
        }
    }
    key += '\x7F' + codes;
    if (used == 0) {
        key.push_back('\0');
        return;
    }
    nibbles = nibbles.substr(0, used) + "0";
    if (nibbles.size() % 2 != 0) {
        nibbles.push_back('0');
    }
    for (std::size_t i = 0; i < nibbles.size(); i += 2) {
        key.push_back(static_cast<char>(hexadecimal(std::string_view(nibbles).substr(i, 2))));
    }
}

}  // namespace

void appendLongKey(std::int32_t number, std::string& key) {
    ByteWriter out;
    out.u8(0x7F).u32BigEndian(static_cast<std::uint32_t>(number) ^ 0x80000000u);
    key += out.bytes();
}

bool appendTextKey(const Format& format, std::string_view text, std::string& key) {
    text = withoutTrailingSpaces(base::firstUtf16Units(text, 255));
    if (format.isJet4()) {
        return appendJet4Key(text, key);
    }
    appendJet3Key(base::cp1252FromUtf8(text), key);
    return true;
}

}  // namespace jet
