#pragma once

#include <cstdint>

#include "jet/bytes.h"
#include "jet/format.h"
#include "jet/stored_table.h"

namespace jet {

/// The parts of one row's bytes.
///
///     Jet 4                                    Jet 3
///     u16 column count                         u8 column count
///     fixed area                               fixed area
///     variable data                            variable data
///     u16 offsets, reversed: end, last..first  u8 low bytes of the offsets, reversed
///     u16 number of variable columns           jump table, u8 number of variable columns
///     null mask                                null mask
///
/// Offsets count from the start of the row; everything behind the data is found from the row's end.
/// The mask has a bit for each column number; a set bit means that there is a value, and is the
/// value of a Boolean column. Columns beyond the row's own count were added later and are NULL. The
/// Jet 3 jump table has, for each started block of 256 bytes, the index of the first offset that
/// lies in it.
class RowView {
  public:
    RowView() = default;
    /// Takes the parts apart; false when they do not fit together (the view is unusable then). The
    /// bytes must outlive the view.
    bool parse(const Format& format, bool hasVariableColumns, ByteSpan row);

    /// True when the column has a value; for a Boolean column that is its value.
    bool isPresent(std::uint32_t columnNumber) const {
        return columnNumber < columnCount_ &&
               (mask_[columnNumber / 8] >> (columnNumber % 8) & 1) != 0;
    }
    /// Bytes of a fixed column; empty when the row is too short for them.
    ByteSpan fixed(const StoredColumn& column) const {
        const std::size_t at = fixedStart_ + column.fixedOffset;
        return at + column.length <= fixedLimit_ ? row_.subspan(at, column.length) : ByteSpan{};
    }
    /// Bytes of a variable column; empty when the row does not have it.
    ByteSpan variable(std::uint32_t index) const {
        if (index >= variableCount_) {
            return {};
        }
        const std::uint32_t from = offset(index);
        const std::uint32_t to = offset(index + 1);
        return from <= to && to <= fixedLimit_ ? row_.subspan(from, to - from) : ByteSpan{};
    }
    ByteSpan bytes(const StoredColumn& column) const {
        return column.fixed ? fixed(column) : variable(column.variableIndex);
    }
    /// True when every variable column's offsets are in order and inside the row.
    bool offsetsInOrder() const;
    ByteSpan row() const { return row_; }
    /// Columns that the table had when the row was written.
    std::uint32_t columnCount() const { return columnCount_; }

  private:
    bool parseJet3(std::size_t maskBytes, bool hasVariableColumns);
    bool parseJet4(std::size_t maskBytes, bool hasVariableColumns);
    std::uint32_t offset(std::uint32_t index) const;

    ByteSpan row_;
    const std::uint8_t* mask_ = nullptr;
    const std::uint8_t* offsets_ = nullptr;  ///< of the first one; the others lie before it
    const std::uint8_t* jumps_ = nullptr;    ///< Jet 3: of the first jump; the others lie before it
    std::uint32_t jumpCount_ = 0;
    std::uint32_t columnCount_ = 0;
    std::uint32_t variableCount_ = 0;
    std::size_t fixedStart_ = 0;
    std::size_t fixedLimit_ = 0;  ///< end of everything but the trailer
    bool jet4_ = false;
};

}  // namespace jet
