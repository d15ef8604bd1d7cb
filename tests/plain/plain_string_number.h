#pragma once

/// Digits by division: what the conversions to strings are compared with.

#include <algorithm>
#include <cstdint>
#include <string>

/// Digits by division, least significant first, then turned round.
inline std::string plain_digits(std::uint64_t value, unsigned radix) {
    std::string text;
    do {
        auto const digit = static_cast<unsigned>(value % radix);
        text.push_back(static_cast<char>(digit > 9 ? 'a' + (digit - 10) : '0' + digit));
        value /= radix;
    } while (value != 0);
    std::reverse(text.begin(), text.end());
    return text;
}

inline std::string plain_itoa(int value, unsigned radix) {
    auto const bits = static_cast<std::uint32_t>(value);
    if (radix == 10 && value < 0)
        return "-" + plain_digits(std::uint32_t{0} - bits, radix);
    return plain_digits(bits, radix);
}
