#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jet/bytes.h"
#include "jet/format.h"

namespace jet {

/// Page 0 of a database file. From offset 0x18 on, 126 (Jet 3) or 128 (Jet 4) bytes are masked with
/// a fixed RC4 key stream; the Jet 4 password area is masked once more with the creation date.
///
///     0x00  4   00 01 00 00
///     0x04  16  "Standard Jet DB" and NUL
///     0x14  4   version: 0 Jet 3, 1 Jet 4
///     0x18      masked block: map pointers, engine tables, sort order, code page, key, password,
///     build 0x72  8   Jet 4, masked: creation date, days since 1899-12-30 0x98  8   Jet 4: 0x654
///     and "4.0" 0x600 / 0xE00  512  commit bytes of users, left alone by this engine
class HeaderPage {
  public:
    struct Contents {
        std::uint32_t engineBuild = 0;
        double creationDate = 0;  ///< Jet 4 only
    };

    /// The bytes of a fresh header page.
    static std::vector<std::uint8_t> build(const Format& format, const Contents& contents);

    /// Which format a file has, from its first bytes (at least 0x18 of them). Refuses, saying what
    /// the file is instead, anything that is no Jet 3 or Jet 4 database; `path` opens the message.
    static const Format& recognise(ByteSpan firstBytes, const std::string& path);

    /// Reads a whole header page of a recognised file and refuses encoded files and files with a
    /// password.
    HeaderPage(const Format& format, ByteSpan page, const std::string& path);

    /// Security ids of a Jet 4 file are stored masked with a key made from this page; in Jet 3 they
    /// are stored plain. The function works both ways.
    std::string maskSecurityId(std::string_view plainId) const;

    std::uint16_t codePage() const { return codePage_; }

  private:
    bool jet4_ = false;
    std::uint32_t securityKey_ = 0;
    std::uint16_t codePage_ = 0;
};

/// XORs `bytes` with the RC4 key stream of a 4-byte little-endian key.
void applyRc4(std::uint32_t key, MutableByteSpan bytes);

}  // namespace jet
