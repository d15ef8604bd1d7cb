#pragma once

/// The comparisons written down as they are defined, a byte at a time: what the fast forms are
/// compared with. Strings are given without nulls.

inline unsigned plain_fold(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z' ? byte + 32U : byte;
}

inline int plain_strcmp(char const* a, char const* b) {
    while (*b != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
}

inline int plain_strnicmp(char const* a, char const* b, unsigned count) {
    unsigned first = 0;
    unsigned second = 0;
    do {
        first = plain_fold(static_cast<unsigned char>(*a++));
        second = plain_fold(static_cast<unsigned char>(*b++));
    } while (first != 0 && first == second && --count != 0);
    return static_cast<int>(first) - static_cast<int>(second);
}

inline int plain_stricmp(char const* a, char const* b) {
    return plain_strnicmp(a, b, 0);
}
