#include "jet/text_codec.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/failure.h"
#include "base/text.h"
#include "jet/bytes.h"

namespace jet {

namespace {

constexpr std::string_view compressedMark{"\xFF\xFE", 2};
constexpr std::size_t leastCompressed = 3;

/// True when the text consists of the characters U+0001 to U+007F, which are the same in every
/// form.
bool isPlainAscii(std::string_view text) {
    std::size_t i = 0;
    std::uint64_t suspicious = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data() + i, 8);
        // The second term has the top bit of every byte that is zero.
        suspicious |= eight | ((eight - 0x0101010101010101u) & ~eight);
    }
    if ((suspicious & 0x8080808080808080u) != 0) {
        return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(),
                       [](char c) { return static_cast<signed char>(c) > 0; });
}

void appendUnits(std::string_view bytes, std::string& text) {
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        units[i] = get16(asBytes(bytes).data() + 2 * i);
    }
    base::appendUtf8FromUtf16(units, text);
}

/// The end of a run of UTF-16 units: its closing 00 byte, or the end of the value.
std::size_t endOfUnits(std::string_view bytes, std::size_t from) {
    while (from + 1 < bytes.size() && bytes[from] != '\0') {
        from += 2;
    }
    return std::min(from, bytes.size());
}

void appendCompressed(std::string_view bytes, std::string& text) {
    if (isPlainAscii(bytes)) {
        text.append(bytes);
        return;
    }
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t single = std::min(bytes.find('\0', at), bytes.size());
        base::appendUtf8FromLatin1(bytes.substr(at, single - at), text);
        if (single == bytes.size()) {
            return;
        }
        const std::size_t end = endOfUnits(bytes, single + 1);
        appendUnits(bytes.substr(single + 1, end - single - 1), text);
        at = end + 1;
    }
}

void appendLittleEndian(std::u16string_view units, std::string& stored) {
    const std::size_t before = stored.size();
    stored.resize(before + 2 * units.size());
    auto* at = reinterpret_cast<std::uint8_t*>(stored.data() + before);
    for (const char16_t unit : units) {
        put16(at, unit);
        at += 2;
    }
}

/// A text that begins with U+FEFF would look compressed in its plain form. It is written as
/// compressed with all of it between two switches, which cannot hold a unit whose low byte is 00.
void appendMarked(std::u16string_view units, std::string& stored) {
    if (std::any_of(units.begin(), units.end(), [](char16_t unit) { return (unit & 0xFF) == 0; })) {
        throw base::EngineFailure(base::EngineFault::Value,
                                  "a text that begins with U+FEFF and holds such a character as "
                                  "U+0100 cannot be stored");
    }
    stored.append(compressedMark).push_back('\0');
    appendLittleEndian(units, stored);
}

bool isCompressible(std::u16string_view units) {
    return units.size() >= leastCompressed &&
           std::all_of(units.begin(), units.end(),
                       [](char16_t unit) { return unit >= 1 && unit <= 0xFF; });
}

}  // namespace

void appendDecodedText(const Format& format, std::string_view stored, std::string& text) {
    if (!format.isJet4()) {
        base::appendUtf8FromCp1252(stored, text);
    } else if (stored.starts_with(compressedMark)) {
        appendCompressed(stored.substr(compressedMark.size()), text);
    } else {
        appendUnits(stored, text);
    }
}

void appendEncodedText(const Format& format, std::string_view text, bool mayCompress,
                       std::string& stored) {
    const bool ascii = isPlainAscii(text);
    if (!format.isJet4()) {
        if (ascii) {
            stored.append(text);
        } else {
            base::appendCp1252FromUtf8(text, stored);
        }
        return;
    }
    if (text.empty()) {
        return;
    }
    if (ascii && mayCompress && text.size() >= leastCompressed) {
        stored.append(compressedMark).append(text);
        return;
    }
    const std::u16string units = base::utf16FromUtf8(text);
    if (!units.empty() && units.front() == u'\uFEFF') {
        appendMarked(units, stored);
        return;
    }
    if (!mayCompress || !isCompressible(units)) {
        appendLittleEndian(units, stored);
        return;
    }
    stored.append(compressedMark);
    for (const char16_t unit : units) {
        stored.push_back(static_cast<char>(unit));
    }
}

std::size_t storedCharacters(const Format& format, std::string_view stored) {
    if (!format.isJet4()) {
        return stored.size();
    }
    if (!stored.starts_with(compressedMark)) {
        return stored.size() / 2;
    }
    // The three bytes before a text that begins with U+FEFF count as well: the column's width is a
    // number of bytes.
    return stored.substr(compressedMark.size()).starts_with('\0')
               ? (stored.size() + 1) / 2
               : stored.size() - compressedMark.size();
}

std::string encodedName(const Format& format, std::string_view name) {
    std::string stored;
    appendEncodedText(format, name, false, stored);
    return stored;
}

std::string decodedName(const Format& format, std::string_view stored) {
    std::string name;
    if (format.isJet4()) {
        appendUnits(stored, name);
    } else {
        base::appendUtf8FromCp1252(stored, name);
    }
    return name;
}

}  // namespace jet
