#pragma once

/// What the format of a message is made of.

inline bool is_message_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether the character stands for itself.
inline bool is_message_plain(char c) {
    return static_cast<unsigned char>(c) > '\r' ? c != '%' : c != '\r' && c != '\n' && c != '\0';
}

/// Reads the one or two digits of an insert, and steps past them.
inline unsigned read_message_number(char const*& at) {
    auto number = static_cast<unsigned>(*at++ - '0');
    if (is_message_digit(*at))
        number = 10 * number + static_cast<unsigned>(*at++ - '0');
    return number;
}
