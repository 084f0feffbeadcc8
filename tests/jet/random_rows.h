#pragma once

#include <cmath>
#include <random>
#include <string>

#include "base/text.h"
#include "jet/database.h"
#include "tests/jet/engine_fixture.h"

namespace jet_test {

/// Makes rows for allTypesTable() with values of every kind, NULL and empty texts among them. Texts
/// have characters of all planes in Jet 4, and of code page 1252 in Jet 3.
class RandomRows {
  public:
    RandomRows(jet::FileFormat format, std::uint32_t seed) : format_(format), random_(seed) {}

    std::uint32_t number(std::uint32_t below) {
        return static_cast<std::uint32_t>(random_()) % below;
    }

    Row row() {
        return {static_cast<std::int32_t>(random_()),
                number(2) == 0,
                static_cast<std::int32_t>(number(256)),
                static_cast<std::int32_t>(number(65536)) - 32768,
                jet::Currency{std::int64_t{number(2000000000)} - 1000000000},
                static_cast<float>(static_cast<int>(number(2000)) - 1000) / 8.0f,
                static_cast<double>(static_cast<int>(number(2000000)) - 1000000) / 64.0,
                jet::Date{number(60000) + number(86400) / 86400.0},
                jet::Binary{std::string(1 + number(40), 'b')},
                text(number(5) == 0 ? 255 : 20),
                jet::Guid{{static_cast<std::uint8_t>(number(256)), 2, 3, 4, 5, 6, 7, 8, 9}},
                jet::Value(),
                text(number(8) == 0 ? 6000 : 60),
                jet::Binary{std::string(1 + number(number(8) == 0 ? 9000 : 70), 'o')}};
    }

    /// NULL now and then, and sometimes "".
    jet::Value text(std::uint32_t mostCharacters) {
        if (number(6) == 0) {
            return {};
        }
        std::string text;
        const std::uint32_t kind = number(4);
        for (std::uint32_t units = number(mostCharacters + 1); units > 0;) {
            const char32_t c = character(kind);
            const std::uint32_t width = c > 0xFFFF ? 2 : 1;
            if (width > units) {
                break;
            }
            base::appendUtf8(c, text);
            units -= width;
        }
        return text;
    }

  private:
    char32_t character(std::uint32_t kind) {
        if (format_ == jet::FileFormat::Jet3) {
            const std::string byte(1, static_cast<char>(0x20 + number(0xE0)));
            const std::string text = base::utf8FromCp1252(byte);
            std::size_t at = 0;
            const char32_t c = base::nextCodePoint(text, at);
            return c >= 0x7F && c < 0xA0 ? U'k' : c;  // control characters
        }
        switch (kind) {
            case 0:
                return 0x20 + number(0x5F);
            case 1:
                return 0xA0 + number(0x60);
            case 2:
                return 0x100 + number(0xD600);
            default:
                return number(2) == 0 ? 0x10000 + number(0xFFFFE) : 0xE000 + number(0x1EFE);
        }
    }

    jet::FileFormat format_;
    std::mt19937 random_;
};

inline void setRow(jet::Recordset& rows, const Row& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        rows.setValue(static_cast<int>(i), row[i]);
    }
}

}  // namespace jet_test
