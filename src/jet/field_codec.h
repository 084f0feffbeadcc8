#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "jet/row_builder.h"
#include "jet/row_view.h"
#include "jet/value.h"

namespace jet {

class DatabaseFile;
class Table;

/// Turns the stored bytes of a table's columns into values and back. Columns are named by position.
class FieldCodec {
  public:
    FieldCodec(DatabaseFile& file, Table& table);

    Value value(std::size_t column, const RowView& row) const;
    /// Replaces `text` by the value as text; NULL is empty.
    void readText(std::size_t column, const RowView& row, std::string& text) const;
    /// NULL is 0; a text is read as a number. What is no 32-bit number is a Value failure.
    std::int32_t integer(std::size_t column, const RowView& row) const;

    /// Value failures name the field.
    void setText(std::size_t column, std::string_view text, RowBuilder& row) const;
    void setInteger(std::size_t column, std::int64_t number, RowBuilder& row) const;
    void setValue(std::size_t column, const Value& value, RowBuilder& row) const;

  private:
    const StoredColumn& stored(std::size_t column) const;
    [[noreturn]] void refuse(std::size_t column, const std::string& why) const;
    void setFixed(std::size_t column, std::uint64_t bits, RowBuilder& row) const;
    void setReal(std::size_t column, double number, RowBuilder& row) const;
    void setNumeric(std::size_t column, Numeric number, RowBuilder& row) const;
    void setCharacters(std::size_t column, std::string_view text, RowBuilder& row) const;
    void setMemo(std::size_t column, std::string_view text, RowBuilder& row) const;
    void setBytes(std::size_t column, std::string_view bytes, RowBuilder& row) const;
    void checkRange(std::size_t column, std::int64_t number, std::int64_t low,
                    std::int64_t high) const;

    DatabaseFile& file_;
    Table& table_;
};

/// Reads a whole text as a number: blanks around it, a sign, digits, a decimal point, an exponent.
/// False when it is none.
bool parseNumber(std::string_view text, double& number);

}  // namespace jet
