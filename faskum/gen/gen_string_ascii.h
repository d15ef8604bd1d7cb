#pragma once

/// The ASCII character rules that the string routines share: no locale takes part in them.

inline unsigned char ascii_folded(char character) {
    auto const byte = static_cast<unsigned char>(character);
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

inline bool ascii_is_digit(char character) {
    return character >= '0' && character <= '9';
}
