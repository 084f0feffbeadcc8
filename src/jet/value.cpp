#include "jet/value.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "jet/bytes.h"
#include "jet/data_type.h"
#include "jet/numeric.h"

namespace jet {

namespace {

template <typename Real>
std::string shortest(Real number) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {buffer, result.ptr};
}

void appendHexadecimal(std::uint8_t byte, std::string& text) {
    constexpr char digits[] = "0123456789abcdef";
    text.push_back(digits[byte >> 4]);
    text.push_back(digits[byte & 15]);
}

/// Puts a decimal point `places` before the end of a text of digits, drops zeros behind it.
std::string withPoint(std::string digits, std::size_t places, bool negative) {
    if (digits.size() <= places) {
        digits.insert(0, places + 1 - digits.size(), '0');
    }
    std::string fraction = digits.substr(digits.size() - places);
    digits.resize(digits.size() - places);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    const bool zero = fraction.empty() && digits == "0";
    return (negative && !zero ? "-" : "") + digits + (fraction.empty() ? "" : "." + fraction);
}

std::string dateText(double days) {
    constexpr int epochDays = 25569;  // 1899-12-30 to 1970-01-01
    constexpr std::int64_t daySeconds = 86400;
    if (!std::isfinite(days) || std::abs(days) > 3e6) {
        return shortest(days);
    }
    double whole = std::trunc(days);
    auto seconds = static_cast<std::int64_t>(std::llround(std::abs(days - whole) * daySeconds));
    if (seconds == daySeconds) {
        seconds = 0;
        whole += 1;
    }
    const std::chrono::sys_days date{std::chrono::days{static_cast<int>(whole) - epochDays}};
    const std::chrono::year_month_day calendar{date};
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", int{calendar.year()},
                  unsigned{calendar.month()}, unsigned{calendar.day()},
                  static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60),
                  static_cast<int>(seconds % 60));
    return text;
}

std::string guidText(const Guid& guid) {
    // The first three groups are stored little-endian.
    constexpr int order[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
    std::string text = "{";
    for (const int index : order) {
        if (index < 0) {
            text.push_back('-');
        } else {
            appendHexadecimal(guid.bytes[static_cast<std::size_t>(index)], text);
        }
    }
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'f' ? static_cast<char>(c - 32) : c; });
    return text + "}";
}

struct Display {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool truth) const { return truth ? "true" : "false"; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(float number) const { return shortest(number); }
    std::string operator()(double number) const { return shortest(number); }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const Date& date) const { return dateText(date.days); }
    std::string operator()(const Guid& guid) const { return guidText(guid); }
    std::string operator()(const Currency& currency) const {
        const std::uint64_t bits = static_cast<std::uint64_t>(currency.tenThousandths);
        const bool negative = currency.tenThousandths < 0;
        return withPoint(std::to_string(negative ? ~bits + 1 : bits), 4, negative);
    }
    std::string operator()(const Numeric& numeric) const {
        return withPoint(magnitudeDigits(numeric),
                         static_cast<std::size_t>(std::clamp(numeric.scale, 0, 38)),
                         numeric.negative);
    }
    std::string operator()(const Binary& binary) const {
        std::string text = "0x";
        for (const std::uint8_t byte : asBytes(binary.bytes)) {
            appendHexadecimal(byte, text);
        }
        return text;
    }
};

}  // namespace

std::string displayText(const Value& value) { return std::visit(Display{}, value); }

std::string_view dataTypeName(DataType type) {
    switch (type) {
        case DataType::Boolean:
            return "Boolean";
        case DataType::Byte:
            return "Byte";
        case DataType::Integer:
            return "Integer";
        case DataType::Long:
            return "Long";
        case DataType::Currency:
            return "Currency";
        case DataType::Single:
            return "Single";
        case DataType::Double:
            return "Double";
        case DataType::Date:
            return "Date";
        case DataType::Binary:
            return "Binary";
        case DataType::Text:
            return "Text";
        case DataType::LongBinary:
            return "LongBinary";
        case DataType::Memo:
            return "Memo";
        case DataType::Guid:
            return "Guid";
        case DataType::Numeric:
            return "Numeric";
    }
    return "unknown type";
}

}  // namespace jet
