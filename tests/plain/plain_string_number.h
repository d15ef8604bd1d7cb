#pragma once

/// The number conversions written down as they are defined: what the fast forms are compared with.

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

/// Parses @p text from @p position on, which is left behind what was read.
inline int plain_atoi(std::string const& text, std::size_t& position) {
    char const* at = text.c_str() + position;
    char const* const end = text.c_str() + text.size();
    while (*at == ' ' || *at == '\t' || *at == '\n')
        ++at;
    bool const negative = *at == '-';
    if (*at == '-' || *at == '+')
        ++at;
    std::uint32_t value = 0;
    for (; at < end && *at >= '0' && *at <= '9'; ++at)
        value = value * 10 + static_cast<std::uint32_t>(*at - '0');
    position = static_cast<std::size_t>(at - text.c_str());
    return static_cast<int>(negative ? 0 - value : value);
}
