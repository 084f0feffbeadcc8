#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet/field_codec.h"
#include "jet/row_view.h"

namespace jet {

/// A condition on rows: comparisons of the form field='text' joined by AND; see
/// Recordset::setFilter().
class Filter {
  public:
    Filter() = default;
    /// Usage failures say what is wrong with the condition, NotFound names an unknown field.
    Filter(std::string_view condition, const StoredTable& table, const Format& format);

    bool isEmpty() const { return comparisons_.empty(); }
    bool matches(const RowView& row, const FieldCodec& codec) const;

  private:
    struct Comparison {
        std::size_t column = 0;
        bool numeric = false;
        bool isLong = false;
        double number = 0;
        std::string folded;      ///< the text, folded
        std::string storedText;  ///< its stored bytes, for a quick look
    };

    bool holds(const Comparison& comparison, const RowView& row, const FieldCodec& codec) const;

    const StoredTable* table_ = nullptr;
    std::vector<Comparison> comparisons_;
    mutable std::string buffer_;
};

}  // namespace jet
