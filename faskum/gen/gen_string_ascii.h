#pragma once

/// What the string routines share: the rules of ASCII, in which no locale takes part, and the
/// length of a string that may be null.

#include <cstddef>
#include <cstring>

inline bool ascii_is_digit(char character) {
    return character >= '0' && character <= '9';
}

/// The byte that comparisons without regard to letter case compare.
inline unsigned char ascii_folded(char character) {
    auto const byte = static_cast<unsigned char>(character);
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

inline char ascii_lower(char character) {
    return static_cast<char>(ascii_folded(character));
}

inline char ascii_upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A'))
                                                : character;
}

/// 0 for null.
inline std::size_t length_of(char const* string) {
    return string != nullptr ? std::strlen(string) : 0;
}
