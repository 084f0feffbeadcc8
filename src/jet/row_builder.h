#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/bytes.h"
#include "jet/format.h"
#include "jet/row_view.h"
#include "jet/stored_table.h"

namespace jet {

/// Collects the stored bytes of a row's columns and puts the row together. Columns are named by
/// their position in StoredTable::columns. Reused from row to row without allocating.
class RowBuilder {
  public:
    RowBuilder(const Format& format, const StoredTable& table);

    /// Every column NULL.
    void clear();
    /// Takes over what a stored row holds.
    void load(const RowView& row);

    void setNull(std::size_t position);
    void setBoolean(std::size_t position, bool value);
    /// Stored bytes of a value; for a fixed column exactly as many as its length.
    void setBytes(std::size_t position, std::string_view bytes);
    /// Where the caller may append the stored bytes of a variable column itself, before it calls
    /// endVariable() with the size that the buffer had.
    std::string& variableBytes() { return values_; }
    void endVariable(std::size_t position, std::size_t sizeBefore);

    bool isPresent(std::size_t position) const { return present_[position] != 0; }
    /// The bytes set for a variable column.
    std::string_view variable(std::size_t position) const;
    /// The bytes set for a fixed column.
    ByteSpan fixed(std::size_t position) const;

    /// The row, good until the builder is next used. A row that is longer than the format allows is
    /// a Value failure.
    ByteSpan build();

  private:
    struct Slice {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;
    };

    std::uint8_t* putTrailerJet3(std::uint8_t* at) const;
    std::uint8_t* putTrailerJet4(std::uint8_t* at) const;
    std::uint8_t* putMask(std::uint8_t* at);

    const Format& format_;
    const StoredTable& table_;
    std::uint32_t fixedSize_;
    std::vector<std::uint8_t> fixed_;
    std::vector<std::uint8_t> present_;
    std::vector<Slice> slices_;            ///< of the variable columns, by position
    std::vector<std::size_t> byVariable_;  ///< position of each variable index; none: npos
    std::string values_;
    std::vector<std::uint32_t> offsets_;
    std::vector<std::uint8_t> mask_;
    std::vector<std::uint8_t> row_;  ///< as long as any row needed so far
};

}  // namespace jet
