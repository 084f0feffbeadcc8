#include "jet/row_builder.h"

#include <algorithm>
#include <cstring>

#include "base/failure.h"

namespace jet {

namespace {

constexpr std::size_t noPosition = ~std::size_t{0};

}  // namespace

RowBuilder::RowBuilder(const Format& format, const StoredTable& table)
    : format_(format),
      table_(table),
      fixedSize_(table.fixedAreaSize()),
      fixed_(fixedSize_, 0),
      present_(table.columns.size(), 0),
      slices_(table.columns.size()),
      byVariable_(table.variableEver, noPosition),
      offsets_(table.variableEver + std::size_t{1}, 0),
      mask_((table.columnsEver + std::size_t{7}) / 8, 0) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const StoredColumn& column = table.columns[i];
        if (!column.fixed && column.variableIndex < byVariable_.size()) {
            byVariable_[column.variableIndex] = i;
        }
    }
}

void RowBuilder::clear() {
    std::fill(fixed_.begin(), fixed_.end(), std::uint8_t{0});
    std::fill(present_.begin(), present_.end(), std::uint8_t{0});
    std::fill(slices_.begin(), slices_.end(), Slice{});
    values_.clear();
}

void RowBuilder::load(const RowView& row) {
    clear();
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
        const StoredColumn& column = table_.columns[i];
        if (!row.isPresent(column.number)) {
            continue;
        }
        if (column.field.type == DataType::Boolean) {
            present_[i] = 1;
            continue;
        }
        const ByteSpan bytes = row.bytes(column);
        if (!column.fixed || bytes.size() == column.length) {
            setBytes(i, asText(bytes));
        }
    }
}

void RowBuilder::setNull(std::size_t position) {
    const StoredColumn& column = table_.columns[position];
    present_[position] = 0;
    slices_[position] = {};
    if (column.fixed) {
        std::fill_n(fixed_.begin() + column.fixedOffset,
                    column.field.type == DataType::Boolean ? 0 : column.length, std::uint8_t{0});
    }
}

void RowBuilder::setBoolean(std::size_t position, bool value) {
    present_[position] = value ? 1 : 0;
}

void RowBuilder::setBytes(std::size_t position, std::string_view bytes) {
    const StoredColumn& column = table_.columns[position];
    if (column.fixed) {
        // The width comes from the file, and a damaged one may not be that of the type.
        if (bytes.size() != column.length) {
            throw base::EngineFailure(base::EngineFault::Damaged,
                                      "field " + column.field.name + " of table " + table_.name +
                                          " has the odd width of " + std::to_string(column.length) +
                                          " bytes");
        }
        std::memcpy(fixed_.data() + column.fixedOffset, bytes.data(), bytes.size());
        present_[position] = 1;
        return;
    }
    const std::size_t before = values_.size();
    values_.append(bytes);
    endVariable(position, before);
}

void RowBuilder::endVariable(std::size_t position, std::size_t sizeBefore) {
    slices_[position] = {static_cast<std::uint32_t>(sizeBefore),
                         static_cast<std::uint32_t>(values_.size() - sizeBefore)};
    present_[position] = 1;
}

std::string_view RowBuilder::variable(std::size_t position) const {
    const Slice slice = slices_[position];
    return std::string_view(values_).substr(slice.offset, slice.length);
}

ByteSpan RowBuilder::fixed(std::size_t position) const {
    const StoredColumn& column = table_.columns[position];
    return ByteSpan(fixed_).subspan(column.fixedOffset, column.length);
}

ByteSpan RowBuilder::build() {
    const std::size_t most = format_.rowCountField + fixed_.size() + values_.size() +
                             3 * offsets_.size() + values_.size() / 256 + 8 + mask_.size();
    if (row_.size() < most) {
        row_.resize(most);
    }
    std::uint8_t* at = row_.data();
    put16(at, table_.columnsEver);  // Jet 3 takes the low byte only
    at += format_.rowCountField;
    std::copy(fixed_.begin(), fixed_.end(), at);
    at += fixed_.size();
    for (std::size_t index = 0; index < byVariable_.size(); ++index) {
        offsets_[index] = static_cast<std::uint32_t>(at - row_.data());
        const std::size_t position = byVariable_[index];
        if (position != noPosition && slices_[position].length != 0) {
            std::memcpy(at, values_.data() + slices_[position].offset, slices_[position].length);
            at += slices_[position].length;
        }
    }
    if (!byVariable_.empty()) {
        offsets_.back() = static_cast<std::uint32_t>(at - row_.data());
        at = format_.isJet4() ? putTrailerJet4(at) : putTrailerJet3(at);
    }
    at = putMask(at);
    const auto length = static_cast<std::size_t>(at - row_.data());
    if (length > format_.maximumRow) {
        throw base::EngineFailure(
            base::EngineFault::Value,
            "the record of table " + table_.name + " is too long: " + std::to_string(length) +
                " bytes, where a page holds records of " + std::to_string(format_.maximumRow));
    }
    return {row_.data(), length};
}

std::uint8_t* RowBuilder::putTrailerJet4(std::uint8_t* at) const {
    for (std::size_t index = offsets_.size(); index-- > 0; at += 2) {
        put16(at, offsets_[index]);
    }
    put16(at, table_.variableEver);
    return at + 2;
}

/// The jump table has as many entries as the finished row has started blocks of 256 bytes beyond
/// the first; an entry of 0xFF says that no offset lies in the block.
std::uint8_t* RowBuilder::putTrailerJet3(std::uint8_t* at) const {
    const std::size_t withoutJumps = offsets_.back() + offsets_.size() + 1 + mask_.size();
    std::size_t jumps = 0;
    while ((withoutJumps + jumps - 1) / 256 > jumps) {
        ++jumps;
    }
    for (std::size_t index = offsets_.size(); index-- > 0;) {
        *at++ = static_cast<std::uint8_t>(offsets_[index]);
    }
    for (std::size_t block = jumps; block > 0; --block) {
        const auto first = std::find_if(offsets_.begin(), offsets_.end(),
                                        [block](std::uint32_t o) { return o >= 256 * block; });
        *at++ = first == offsets_.end() ? std::uint8_t{0xFF}
                                        : static_cast<std::uint8_t>(first - offsets_.begin());
    }
    *at++ = static_cast<std::uint8_t>(table_.variableEver);
    return at;
}

std::uint8_t* RowBuilder::putMask(std::uint8_t* at) {
    std::fill(mask_.begin(), mask_.end(), std::uint8_t{0});
    for (std::size_t i = 0; i < present_.size(); ++i) {
        const std::uint16_t number = table_.columns[i].number;
        mask_[number / 8] |= static_cast<std::uint8_t>(present_[i] << number % 8);
    }
    return std::copy(mask_.begin(), mask_.end(), at);
}

}  // namespace jet
