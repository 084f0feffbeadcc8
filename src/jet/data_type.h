#pragma once

#include <cstdint>
#include <string_view>

namespace jet {

/// Column types, numbered as the format stores them and as the engine's callers pass them. The
/// numbers are on disk: never renumber.
enum class DataType : std::uint8_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,   ///< 16-bit signed
    Long = 4,      ///< 32-bit signed
    Currency = 5,  ///< 64-bit signed, value times 10,000
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
    Guid = 15,
    Numeric = 16,
};

/// "Text", "Long" and so on, for listings and messages; "unknown type" for any other number.
std::string_view dataTypeName(DataType type);

/// True for the types whose values may lie outside their row (Memo and LongBinary).
constexpr bool isLongValue(DataType type) {
    return type == DataType::Memo || type == DataType::LongBinary;
}

/// Bytes of a value of the types that have a place of fixed size in their row; 0 for the others. A
/// Boolean lies in the null mask, but its column has a length of 1.
constexpr std::uint16_t fixedSizeOf(DataType type) {
    switch (type) {
        case DataType::Boolean:
        case DataType::Byte:
            return 1;
        case DataType::Integer:
            return 2;
        case DataType::Long:
        case DataType::Single:
            return 4;
        case DataType::Currency:
        case DataType::Double:
        case DataType::Date:
            return 8;
        case DataType::Guid:
            return 16;
        case DataType::Numeric:
            return 17;
        default:
            return 0;
    }
}

}  // namespace jet
