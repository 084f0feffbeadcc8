#include "jet/header_page.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

#include "base/failure.h"

namespace jet {

namespace {

constexpr std::uint32_t maskKey = 0x6B39DAC7;
constexpr std::uint32_t maskedStart = 0x18;
constexpr std::uint32_t codePageOffset = 0x3C;
constexpr std::uint32_t databaseKeyOffset = 0x3E;
constexpr std::uint32_t passwordOffset = 0x42;
constexpr std::uint32_t jet3BuildOffset = 0x56;
constexpr std::uint32_t jet4BuildOffset = 0x6A;
constexpr std::uint32_t jet4LanguageOffset = 0x6E;
constexpr std::uint32_t creationDateOffset = 0x72;
constexpr std::uint32_t commitBytes = 512;
constexpr std::uint16_t generalLanguage = 0x0409;
constexpr std::uint16_t westernCodePage = 1252;
constexpr std::string_view engineName{"Standard Jet DB\0", 16};

/// The password area of a Jet 4 header is XORed with the whole days of the creation date, repeated.
void applyDateMask(std::uint8_t* page) {
    const double date = std::bit_cast<double>(get64(page + creationDateOffset));
    // A date outside the range of 32 bits stands in no genuine file; any value will do then.
    const bool usable = std::isfinite(date) && std::abs(date) < 2e9;
    std::uint8_t days[4];
    put32(days, usable ? static_cast<std::uint32_t>(static_cast<std::int32_t>(date)) : 0);
    for (std::uint32_t i = 0; i < jet4Format.passwordLength; ++i) {
        page[passwordOffset + i] ^= days[i % 4];
    }
}

/// Key of the Jet 4 security ids: the low bytes of the 28 units from the password on, each shifted
/// by its place, and the low half of the creation date. `page` has both masks removed.
std::uint32_t securityKey(const std::uint8_t* page) {
    std::uint32_t key = get32(page + creationDateOffset);
    for (std::uint32_t i = 0; i < 28; ++i) {
        key ^= std::uint32_t{page[passwordOffset + 2 * i]} << (i % 24);
    }
    return key;
}

[[noreturn]] void refuse(base::EngineFault fault, const std::string& path, const std::string& why) {
    throw base::EngineFailure(fault, path + ": " + why);
}

}  // namespace

void applyRc4(std::uint32_t key, MutableByteSpan bytes) {
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (unsigned i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + (key >> 8 * (i % 4)));
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (std::uint8_t& byte : bytes) {
        i = static_cast<std::uint8_t>(i + 1);
        j = static_cast<std::uint8_t>(j + state[i]);
        std::swap(state[i], state[j]);
        byte ^= state[static_cast<std::uint8_t>(state[i] + state[j])];
    }
}

std::vector<std::uint8_t> HeaderPage::build(const Format& format, const Contents& contents) {
    std::vector<std::uint8_t> page(format.pageSize, 0);
    std::uint8_t* const bytes = page.data();
    put32(bytes, 0x100);
    std::copy(engineName.begin(), engineName.end(), bytes + 4);
    put32(bytes + 0x14, format.isJet4() ? 1 : 0);
    put32(bytes + 0x18, RowPointer{1, 0}.stored());
    put32(bytes + 0x1C, RowPointer{1, 1}.stored());
    for (std::uint32_t i = 0; i < 4; ++i) {
        put32(bytes + 0x20 + 4 * i, 2 + i);
    }
    put16(bytes + codePageOffset, westernCodePage);
    if (format.isJet4()) {
        put32(bytes + jet4BuildOffset, contents.engineBuild);
        put16(bytes + jet4LanguageOffset, generalLanguage);
        put64(bytes + creationDateOffset, std::bit_cast<std::uint64_t>(contents.creationDate));
        applyDateMask(bytes);
        put32(bytes + 0x98, 0x654);
        put32(bytes + 0x9C, 0x00302E34);
    } else {
        put16(bytes + 0x3A, generalLanguage);
        put32(bytes + jet3BuildOffset, contents.engineBuild);
    }
    applyRc4(maskKey, MutableByteSpan(page).subspan(maskedStart, format.maskedLength));
    for (std::uint32_t i = 0; i < commitBytes; i += 2) {
        put16(bytes + format.commitOffset + i, i == 0 ? 0x0101 : 0x0100);
    }
    return page;
}

const Format& HeaderPage::recognise(ByteSpan firstBytes, const std::string& path) {
    using base::EngineFault;
    if (firstBytes.empty()) {
        refuse(EngineFault::NotADatabase, path, "the file is empty");
    }
    if (firstBytes.size() < maskedStart || get32(firstBytes.data()) != 0x100) {
        const std::string_view start = asText(firstBytes);
        const char* const kind = start.starts_with("SQLite format 3") ? "an SQLite database"
                                 : start.starts_with("%PDF")          ? "a PDF document"
                                 : start.starts_with("PK")            ? "a ZIP file"
                                                                      : "another kind of file";
        refuse(EngineFault::NotADatabase, path, std::string("this is no Jet database but ") + kind);
    }
    const std::string_view name = asText(firstBytes.subspan(4, 15));
    const std::uint32_t version = get32(firstBytes.data() + 0x14);
    if (name == "Standard ACE DB") {
        refuse(EngineFault::NotADatabase, path,
               "this is a database of the newer .accdb format, which is not supported");
    }
    if (name != "Standard Jet DB") {
        const bool printable = std::all_of(
            name.begin(), name.end(), [](char c) { return (c >= ' ' && c < 0x7F) || c == '\0'; });
        refuse(EngineFault::NotADatabase, path,
               printable ? "this is no Jet database but one that calls itself \"" +
                               std::string(name.substr(0, name.find('\0'))) + "\""
                         : "this is no Jet database");
    }
    if (version > 1) {
        refuse(EngineFault::NotADatabase, path,
               "Jet version number " + std::to_string(version) +
                   " is not supported (0 is Jet 3, 1 is Jet 4)");
    }
    return version == 0 ? jet3Format : jet4Format;
}

HeaderPage::HeaderPage(const Format& format, ByteSpan page, const std::string& path)
    : jet4_(format.isJet4()) {
    std::vector<std::uint8_t> plain(page.begin(), page.end());
    applyRc4(maskKey, MutableByteSpan(plain).subspan(maskedStart, format.maskedLength));
    if (get32(plain.data() + databaseKeyOffset) != 0) {
        refuse(base::EngineFault::Encoded, path, "the database is encoded (encrypted)");
    }
    if (jet4_) {
        applyDateMask(plain.data());
    }
    const ByteSpan password = ByteSpan(plain).subspan(passwordOffset, format.passwordLength);
    if (std::any_of(password.begin(), password.end(),
                    [](std::uint8_t byte) { return byte != 0; })) {
        refuse(base::EngineFault::Password, path, "the database has a password");
    }
    codePage_ = get16(plain.data() + codePageOffset);
    if (jet4_) {
        securityKey_ = securityKey(plain.data());
    }
}

std::string HeaderPage::maskSecurityId(std::string_view plainId) const {
    std::string id(plainId);
    if (jet4_) {
        applyRc4(securityKey_,
                 MutableByteSpan(reinterpret_cast<std::uint8_t*>(id.data()), id.size()));
    }
    return id;
}

}  // namespace jet
