#pragma once

/// The ASCII character rules that the string routines share: no locale takes part in them.

#include <array>

inline constexpr auto ascii_lower_table = [] {
    std::array<unsigned char, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte)
        table[byte] = static_cast<unsigned char>(byte - 'A' <= 25 ? byte + 32 : byte);
    return table;
}();

inline unsigned char ascii_folded(char character) {
    return ascii_lower_table[static_cast<unsigned char>(character)];
}

inline bool ascii_is_digit(char character) {
    return static_cast<unsigned char>(character - '0') <= 9;
}
