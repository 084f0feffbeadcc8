#include "jet/row_view.h"

namespace jet {

namespace {

constexpr std::uint32_t noJump = 0xFF;

}  // namespace

bool RowView::parse(const Format& format, bool hasVariableColumns, ByteSpan row) {
    row_ = row;
    jet4_ = format.isJet4();
    fixedStart_ = format.rowCountField;
    variableCount_ = 0;
    jumpCount_ = 0;
    if (row.size() < fixedStart_) {
        return false;
    }
    columnCount_ = jet4_ ? get16(row.data()) : row[0];
    const std::size_t maskBytes = (columnCount_ + 7) / 8;
    if (fixedStart_ + maskBytes > row.size()) {
        return false;
    }
    mask_ = row.data() + row.size() - maskBytes;
    return jet4_ ? parseJet4(maskBytes, hasVariableColumns)
                 : parseJet3(maskBytes, hasVariableColumns);
}

bool RowView::parseJet4(std::size_t maskBytes, bool hasVariableColumns) {
    fixedLimit_ = row_.size() - maskBytes;
    if (!hasVariableColumns) {
        return true;
    }
    if (fixedLimit_ < fixedStart_ + 2) {
        return false;
    }
    variableCount_ = get16(row_.data() + fixedLimit_ - 2);
    const std::size_t trailer = 2 + 2 * (std::size_t{variableCount_} + 1);
    if (fixedLimit_ < fixedStart_ + trailer) {
        return false;
    }
    offsets_ = row_.data() + fixedLimit_ - 4;
    fixedLimit_ -= trailer;
    return true;
}

bool RowView::parseJet3(std::size_t maskBytes, bool hasVariableColumns) {
    fixedLimit_ = row_.size() - maskBytes;
    if (!hasVariableColumns) {
        return true;
    }
    jumpCount_ = static_cast<std::uint32_t>((row_.size() - 1) / 256);
    if (fixedLimit_ < fixedStart_ + 1) {
        return false;
    }
    variableCount_ = row_[fixedLimit_ - 1];
    const std::size_t trailer = 1 + jumpCount_ + std::size_t{variableCount_} + 1;
    if (fixedLimit_ < fixedStart_ + trailer) {
        return false;
    }
    jumps_ = row_.data() + fixedLimit_ - 2;
    offsets_ = jumps_ - jumpCount_;
    fixedLimit_ -= trailer;
    return true;
}

std::uint32_t RowView::offset(std::uint32_t index) const {
    if (jet4_) {
        return get16(offsets_ - 2 * index);
    }
    std::uint32_t jumps = 0;
    while (jumps < jumpCount_ && *(jumps_ - jumps) <= index) {
        ++jumps;
    }
    std::uint32_t value = *(offsets_ - index) + 256 * jumps;
    // With 255 variable columns a jump of 0xFF means either the end of the last one or none at all.
    while (index == noJump && value > fixedLimit_ && value >= 256) {
        value -= 256;
    }
    return value;
}

bool RowView::offsetsInOrder() const {
    std::uint32_t previous = static_cast<std::uint32_t>(fixedStart_);
    for (std::uint32_t index = 0; variableCount_ != 0 && index <= variableCount_; ++index) {
        const std::uint32_t next = offset(index);
        if (next < previous || next > fixedLimit_) {
            return false;
        }
        previous = next;
    }
    return true;
}

}  // namespace jet
