#include "jet/numeric.h"

#include <algorithm>

namespace jet {

namespace {

/// Multiplies by ten and adds a digit; false when that takes more than 128 bits.
bool appendDigit(Numeric& number, unsigned digit) {
    unsigned carry = digit;
    for (std::size_t i = number.magnitude.size(); i-- > 0;) {
        const unsigned part = number.magnitude[i] * 10u + carry;
        number.magnitude[i] = static_cast<std::uint8_t>(part);
        carry = part >> 8;
    }
    return carry == 0;
}

/// Divides by ten and returns the digit that drops out.
unsigned removeDigit(Numeric& number) {
    unsigned remainder = 0;
    for (std::uint8_t& byte : number.magnitude) {
        const unsigned part = remainder << 8 | byte;
        byte = static_cast<std::uint8_t>(part / 10);
        remainder = part % 10;
    }
    return remainder;
}

bool isZero(const Numeric& number) {
    return std::all_of(number.magnitude.begin(), number.magnitude.end(),
                       [](std::uint8_t byte) { return byte == 0; });
}

}  // namespace

bool parseNumeric(std::string_view text, Numeric& number) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return false;
    }
    text = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    Numeric result;
    result.negative = text.front() == '-';
    if (text.front() == '-' || text.front() == '+') {
        text.remove_prefix(1);
    }
    bool pointSeen = false;
    bool digitSeen = false;
    for (const char c : text) {
        if (c == '.' && !pointSeen) {
            pointSeen = true;
            continue;
        }
        if (c < '0' || c > '9' || !appendDigit(result, static_cast<unsigned>(c - '0'))) {
            return false;
        }
        digitSeen = true;
        result.scale += pointSeen ? 1 : 0;
    }
    result.negative = result.negative && !isZero(result);
    number = result;
    return digitSeen;
}

bool rescale(Numeric& number, int scale) {
    Numeric result = number;
    for (; result.scale < scale; ++result.scale) {
        if (!appendDigit(result, 0)) {
            return false;
        }
    }
    for (; result.scale > scale; --result.scale) {
        if (removeDigit(result) != 0) {
            return false;
        }
    }
    number = result;
    return true;
}

std::string magnitudeDigits(const Numeric& number) {
    Numeric rest = number;
    std::string digits;
    do {
        digits.push_back(static_cast<char>('0' + removeDigit(rest)));
    } while (!isZero(rest));
    std::reverse(digits.begin(), digits.end());
    return digits;
}

}  // namespace jet
