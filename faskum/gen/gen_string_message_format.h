#pragma once

/// What the format of a message is made of.

#include <cstddef>
#include <string_view>

inline bool is_message_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether the character stands for itself.
constexpr bool is_message_plain(char c) {
    return static_cast<unsigned char>(c) > '\r' ? c != '%' : c != '\r' && c != '\n' && c != '\0';
}

/// Reads the one or two digits of an insert, and steps past them.
inline unsigned read_message_number(char const*& at) {
    auto number = static_cast<unsigned>(*at++ - '0');
    if (is_message_digit(*at))
        number = 10 * number + static_cast<unsigned>(*at++ - '0');
    return number;
}

/// Reads the conversion that an insert may carry between exclamation marks, and steps past it; "s"
/// where there is none. The "%" of a conversion is not written.
inline std::string_view read_message_conversion(char const*& at) {
    if (*at != '!')
        return "s";
    char const* const begin = ++at;
    while (*at != '\0' && *at != '!')
        ++at;
    std::string_view const conversion(begin, static_cast<std::size_t>(at - begin));
    at += *at == '!' ? 1 : 0;
    return conversion;
}
