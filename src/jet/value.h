#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>

namespace jet {

/// 64-bit whole number of ten-thousandths.
struct Currency {
    std::int64_t tenThousandths = 0;
    friend bool operator==(const Currency&, const Currency&) = default;
};

/// Days since 1899-12-30; the fraction is the time of day and counts forward from midnight also for
/// negative days.
struct Date {
    double days = 0;
    friend bool operator==(const Date&, const Date&) = default;
};

/// Bytes as they stand in the file.
struct Binary {
    std::string bytes;
    friend bool operator==(const Binary&, const Binary&) = default;
};

/// The 16 bytes as stored: the first three groups little-endian.
struct Guid {
    std::array<std::uint8_t, 16> bytes{};
    friend bool operator==(const Guid&, const Guid&) = default;
};

/// Sign, 128-bit magnitude (most significant byte first) and the number of decimal places.
struct Numeric {
    bool negative = false;
    std::array<std::uint8_t, 16> magnitude{};
    int scale = 0;
    friend bool operator==(const Numeric&, const Numeric&) = default;
};

/// One field's value. std::monostate is NULL, which is not the same as an empty text. Byte, Integer
/// and Long are std::int32_t; texts are UTF-8.
using Value = std::variant<std::monostate, bool, std::int32_t, Currency, float, double, Date,
                           std::string, Binary, Guid, Numeric>;

inline bool isNull(const Value& value) { return std::holds_alternative<std::monostate>(value); }

/// The value as text for people and exports: true/false, decimal numbers (the shortest form that
/// reads back the same), dates as "2003-05-12 10:30:00", binary as "0x" and hexadecimal digits,
/// GUIDs in braces, NULL as an empty text.
std::string displayText(const Value& value);

}  // namespace jet
