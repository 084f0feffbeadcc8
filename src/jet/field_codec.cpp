#include "jet/field_codec.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/text.h"
#include "jet/database_file.h"
#include "jet/numeric.h"
#include "jet/table.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

constexpr std::int64_t currencyScale = 10000;
constexpr std::int64_t mostWholeCurrency = std::numeric_limits<std::int64_t>::max() / currencyScale;
/// Digits of the widest decimal number.
constexpr std::size_t mostDigits = 28;
/// Memo texts longer than this are stored plain.
constexpr std::size_t longestCompressedMemo = 1024;

Numeric numericFrom(ByteSpan bytes, int scale) {
    Numeric numeric;
    numeric.negative = (bytes[0] & 0x80) != 0;
    numeric.scale = scale;
    // Four 32-bit groups, the most significant first, each of them little-endian.
    for (std::size_t group = 0; group < 4; ++group) {
        for (std::size_t i = 0; i < 4; ++i) {
            numeric.magnitude[4 * group + i] = bytes[1 + 4 * group + 3 - i];
        }
    }
    return numeric;
}

std::string bytesOf(const Numeric& numeric) {
    std::string bytes(17, '\0');
    bytes[0] = static_cast<char>(numeric.negative ? 0x80 : 0);
    for (std::size_t group = 0; group < 4; ++group) {
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[1 + 4 * group + 3 - i] = static_cast<char>(numeric.magnitude[4 * group + i]);
        }
    }
    return bytes;
}

}  // namespace

bool parseNumber(std::string_view text, double& number) {
    text = base::trimmedBlanks(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return false;
        }
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size() && std::isfinite(number);
}

FieldCodec::FieldCodec(DatabaseFile& file, Table& table) : file_(file), table_(table) {}

const StoredColumn& FieldCodec::stored(std::size_t column) const {
    return table_.stored().columns[column];
}

void FieldCodec::refuse(std::size_t column, const std::string& why) const {
    throw base::EngineFailure(
        base::EngineFault::Value,
        "field " + stored(column).field.name + " of table " + table_.stored().name + ": " + why);
}

Value FieldCodec::value(std::size_t column, const RowView& row) const {
    const StoredColumn& target = stored(column);
    const bool present = row.isPresent(target.number);
    if (target.field.type == DataType::Boolean) {
        return present;
    }
    if (!present) {
        return std::monostate{};
    }
    const ByteSpan bytes = row.bytes(target);
    const auto atLeast = [&](std::size_t count) { return bytes.size() >= count; };
    switch (target.field.type) {
        case DataType::Byte:
            return atLeast(1) ? Value(std::int32_t{bytes[0]}) : Value();
        case DataType::Integer:
            return atLeast(2) ? Value(std::int32_t{static_cast<std::int16_t>(get16(bytes.data()))})
                              : Value();
        case DataType::Long:
            return atLeast(4) ? Value(static_cast<std::int32_t>(get32(bytes.data()))) : Value();
        case DataType::Currency:
            return atLeast(8) ? Value(Currency{static_cast<std::int64_t>(get64(bytes.data()))})
                              : Value();
        case DataType::Single:
            return atLeast(4) ? Value(std::bit_cast<float>(get32(bytes.data()))) : Value();
        case DataType::Double:
            return atLeast(8) ? Value(std::bit_cast<double>(get64(bytes.data()))) : Value();
        case DataType::Date:
            return atLeast(8) ? Value(Date{std::bit_cast<double>(get64(bytes.data()))}) : Value();
        case DataType::Text:
        case DataType::Memo: {
            std::string text;
            readText(column, row, text);
            return text;
        }
        case DataType::LongBinary:
            return Binary{table_.longValues().read(asText(bytes))};
        case DataType::Guid: {
            Guid guid;
            if (!atLeast(guid.bytes.size())) {
                return Value();
            }
            std::copy_n(bytes.begin(), guid.bytes.size(), guid.bytes.begin());
            return guid;
        }
        case DataType::Numeric:
            return atLeast(17) ? Value(numericFrom(bytes, target.field.scale)) : Value();
        default:
            return Binary{std::string(asText(bytes))};
    }
}

void FieldCodec::readText(std::size_t column, const RowView& row, std::string& text) const {
    const StoredColumn& target = stored(column);
    text.clear();
    if (target.field.type == DataType::Text) {
        if (row.isPresent(target.number)) {
            appendDecodedText(file_.format(), asText(row.bytes(target)), text);
        }
    } else if (target.field.type == DataType::Memo) {
        if (row.isPresent(target.number)) {
            appendDecodedText(file_.format(), table_.longValues().read(asText(row.bytes(target))),
                              text);
        }
    } else {
        text = displayText(value(column, row));
    }
}

std::int32_t FieldCodec::integer(std::size_t column, const RowView& row) const {
    const StoredColumn& target = stored(column);
    if (target.field.type == DataType::Long) {
        const ByteSpan bytes = row.isPresent(target.number) ? row.bytes(target) : ByteSpan{};
        return bytes.size() == 4 ? static_cast<std::int32_t>(get32(bytes.data())) : 0;
    }
    std::string text;
    readText(column, row, text);
    double number = 0;
    if (text.empty() || text == "true" || text == "false") {
        return text == "true" ? -1 : 0;
    }
    if (!parseNumber(text, number) || std::nearbyint(number) < -2147483648.0 ||
        std::nearbyint(number) > 2147483647.0) {
        refuse(column, "\"" + text + "\" is no 32-bit number");
    }
    return static_cast<std::int32_t>(std::nearbyint(number));
}

void FieldCodec::checkRange(std::size_t column, std::int64_t number, std::int64_t low,
                            std::int64_t high) const {
    if (number < low || number > high) {
        refuse(column, std::to_string(number) + " does not fit");
    }
}

void FieldCodec::setFixed(std::size_t column, std::uint64_t bits, RowBuilder& row) const {
    std::uint8_t bytes[8];
    put64(bytes, bits);
    row.setBytes(column, asText(ByteSpan(bytes).first(std::min<std::size_t>(
                             8, stored(column).fixed ? stored(column).length : 8))));
}

void FieldCodec::setReal(std::size_t column, double number, RowBuilder& row) const {
    switch (stored(column).field.type) {
        case DataType::Single: {
            const auto narrow = static_cast<float>(number);
            if (!std::isfinite(narrow)) {
                refuse(column, std::to_string(number) + " does not fit");
            }
            std::uint8_t bytes[4];
            put32(bytes, std::bit_cast<std::uint32_t>(narrow));
            row.setBytes(column, asText(ByteSpan(bytes)));
            return;
        }
        case DataType::Double:
        case DataType::Date:
            setFixed(column, std::bit_cast<std::uint64_t>(number), row);
            return;
        case DataType::Currency: {
            const double scaled = std::nearbyint(number * static_cast<double>(currencyScale));
            if (std::abs(scaled) >= 9223372036854775807.0) {
                refuse(column, std::to_string(number) + " does not fit");
            }
            setFixed(column, static_cast<std::uint64_t>(static_cast<std::int64_t>(scaled)), row);
            return;
        }
        default: {
            const double whole = std::nearbyint(number);
            if (std::abs(whole) > 9e15) {
                refuse(column, std::to_string(number) + " does not fit");
            }
            setInteger(column, static_cast<std::int64_t>(whole), row);
        }
    }
}

void FieldCodec::setNumeric(std::size_t column, Numeric number, RowBuilder& row) const {
    const Field& field = stored(column).field;
    const std::size_t digits = field.precision == 0 ? mostDigits : field.precision;
    if (!rescale(number, field.scale) || magnitudeDigits(number).size() > digits) {
        refuse(column, displayText(number) + " does not fit");
    }
    row.setBytes(column, bytesOf(number));
}

void FieldCodec::setInteger(std::size_t column, std::int64_t number, RowBuilder& row) const {
    using Limits = std::numeric_limits<std::int32_t>;
    switch (stored(column).field.type) {
        case DataType::Long: {
            checkRange(column, number, Limits::min(), Limits::max());
            std::uint8_t bytes[4];
            put32(bytes, static_cast<std::uint32_t>(number));
            row.setBytes(column, asText(ByteSpan(bytes)));
            return;
        }
        case DataType::Integer: {
            checkRange(column, number, -32768, 32767);
            std::uint8_t bytes[2];
            put16(bytes, static_cast<std::uint32_t>(number));
            row.setBytes(column, asText(ByteSpan(bytes)));
            return;
        }
        case DataType::Byte: {
            checkRange(column, number, 0, 255);
            const char byte = static_cast<char>(number);
            row.setBytes(column, {&byte, 1});
            return;
        }
        case DataType::Boolean:
            row.setBoolean(column, number != 0);
            return;
        case DataType::Text:
        case DataType::Memo:
            setText(column, std::to_string(number), row);
            return;
        case DataType::Single:
        case DataType::Double:
        case DataType::Date:
            setReal(column, static_cast<double>(number), row);
            return;
        case DataType::Currency:
            checkRange(column, number, -mostWholeCurrency, mostWholeCurrency);
            setFixed(column, static_cast<std::uint64_t>(number * currencyScale), row);
            return;
        case DataType::Numeric:
            setText(column, std::to_string(number), row);
            return;
        default:
            refuse(column, "a number cannot be stored in it");
    }
}

void FieldCodec::setText(std::size_t column, std::string_view text, RowBuilder& row) const {
    switch (stored(column).field.type) {
        case DataType::Text:
            setCharacters(column, text, row);
            return;
        case DataType::Memo:
            setMemo(column, text, row);
            return;
        case DataType::Binary:
        case DataType::LongBinary:
        case DataType::Guid:
            refuse(column, "a text cannot be stored in it");
        case DataType::Numeric: {
            Numeric number;
            if (!parseNumeric(text, number)) {
                refuse(column, "\"" + std::string(text) + "\" is no number");
            }
            setNumeric(column, number, row);
            return;
        }
        default: {
            double number = 0;
            if (!parseNumber(text, number)) {
                refuse(column, "\"" + std::string(text) + "\" is no number");
            }
            setReal(column, number, row);
        }
    }
}

void FieldCodec::setCharacters(std::size_t column, std::string_view text, RowBuilder& row) const {
    const StoredColumn& target = stored(column);
    std::string& bytes = row.variableBytes();
    const std::size_t before = bytes.size();
    appendEncodedText(file_.format(), text, target.compressed, bytes);
    const std::string_view written = std::string_view(bytes).substr(before);
    const std::size_t characters = storedCharacters(file_.format(), written);
    if (characters > target.length / file_.format().textUnit) {
        bytes.resize(before);
        refuse(column, "a text of " + std::to_string(characters) + " characters is too long (" +
                           std::to_string(target.length / file_.format().textUnit) +
                           " characters fit)");
    }
    if (target.fixed) {
        bytes.resize(before);
        refuse(column, "a text of fixed width cannot be stored");
    }
    row.endVariable(column, before);
}

void FieldCodec::setMemo(std::size_t column, std::string_view text, RowBuilder& row) const {
    std::string bytes;
    const bool compress = stored(column).compressed && text.size() <= longestCompressedMemo;
    appendEncodedText(file_.format(), text, compress, bytes);
    row.setBytes(column, table_.longValues().store(column, bytes));
}

void FieldCodec::setBytes(std::size_t column, std::string_view bytes, RowBuilder& row) const {
    const StoredColumn& target = stored(column);
    if (target.field.type == DataType::LongBinary) {
        row.setBytes(column, table_.longValues().store(column, bytes));
        return;
    }
    if (target.fixed ? bytes.size() != target.length : bytes.size() > target.length) {
        refuse(column, std::to_string(bytes.size()) + " bytes do not fit");
    }
    row.setBytes(column, bytes);
}

void FieldCodec::setValue(std::size_t column, const Value& value, RowBuilder& row) const {
    struct Setter {
        const FieldCodec& codec;
        std::size_t column;
        RowBuilder& row;

        void operator()(std::monostate) const { row.setNull(column); }
        void operator()(bool truth) const { codec.setInteger(column, truth ? -1 : 0, row); }
        void operator()(std::int32_t number) const { codec.setInteger(column, number, row); }
        void operator()(float number) const { codec.setReal(column, number, row); }
        void operator()(double number) const { codec.setReal(column, number, row); }
        void operator()(const Date& date) const { codec.setReal(column, date.days, row); }
        void operator()(const std::string& text) const { codec.setText(column, text, row); }
        void operator()(const Binary& binary) const { codec.setBytes(column, binary.bytes, row); }
        void operator()(const Currency& currency) const {
            if (codec.stored(column).field.type == DataType::Currency) {
                codec.setFixed(column, static_cast<std::uint64_t>(currency.tenThousandths), row);
            } else {
                codec.setReal(column,
                              static_cast<double>(currency.tenThousandths) /
                                  static_cast<double>(currencyScale),
                              row);
            }
        }
        void operator()(const Guid& guid) const { codec.setBytes(column, asText(guid.bytes), row); }
        void operator()(const Numeric& numeric) const {
            if (codec.stored(column).field.type != DataType::Numeric) {
                codec.refuse(column, "a decimal number cannot be stored in it");
            }
            codec.setNumeric(column, numeric, row);
        }
    };
    std::visit(Setter{*this, column, row}, value);
}

}  // namespace jet
