#pragma once

#include <string>
#include <string_view>

#include "jet/value.h"

namespace jet {

// Decimal numbers of up to 128 bits.

/// Reads a whole text as a number: blanks around it, a sign, digits, a decimal point. False when it
/// is none or too large.
bool parseNumeric(std::string_view text, Numeric& number);
/// Changes the number of decimal places. False, and nothing changed, when digits other than zeros
/// would be lost or the number would grow too large.
bool rescale(Numeric& number, int scale);
/// The magnitude in decimal digits, without leading zeros; "0" for zero.
std::string magnitudeDigits(const Numeric& number);

}  // namespace jet
