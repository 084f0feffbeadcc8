#include "scan/widening_total.h"

namespace scan {

WideningTotal& WideningTotal::operator+=(std::int32_t number) {
    std::int32_t sum = 0;
    if (widened_ || __builtin_add_overflow(integer_, number, &sum)) {
        return *this += static_cast<double>(number);
    }
    integer_ = sum;
    return *this;
}

WideningTotal& WideningTotal::operator+=(const WideningTotal& other) {
    return other.widened_ ? *this += other.double_ : *this += other.integer_;
}

WideningTotal& WideningTotal::operator+=(double number) {
    double_ = value() + number;
    widened_ = true;
    return *this;
}

}  // namespace scan
