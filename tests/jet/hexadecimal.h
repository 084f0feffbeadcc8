#pragma once

#include <cctype>
#include <string>
#include <string_view>

namespace jet_test {

/// Bytes from hexadecimal digits; everything else in the text is for the eye.
inline std::string fromHex(std::string_view text) {
    std::string digits;
    for (const char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) {
            digits.push_back(c);
        }
    }
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

/// Two digits for each byte, without blanks.
inline std::string toHex(std::string_view bytes) {
    std::string digits;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        digits.push_back("0123456789abcdef"[byte >> 4]);
        digits.push_back("0123456789abcdef"[byte & 15]);
    }
    return digits;
}

}  // namespace jet_test
