#pragma once

/// What the two ways of expanding a message share, MessageParts and MessageReadings. Private to gen
/// and its C interface.

#include "gen_string_ascii.h"

#include <cstddef>
#include <string_view>

/// An insert as it stands in the format of a message.
struct MessageInsert {
    static constexpr unsigned max_number = 99; // MUTANT_EXCL_LINE: room alone
    /// What the conversions of a message have room for, each with its "%" and a terminator.
    static constexpr std::size_t conversion_capacity = 4095;

    unsigned number;
    std::string_view conversion; ///< without its "%"
};

/// Reads the insert at whose first digit @p at is, and steps past it.
inline MessageInsert read_message_insert(char const*& at) {
    auto number = static_cast<unsigned>(*at++ - '0');
    if (ascii_is_digit(*at))
        number = 10 * number + static_cast<unsigned>(*at++ - '0');
    if (*at != '!')
        return {number, "s"};
    char const* const begin = ++at;
    while (*at != '\0' && *at != '!')
        ++at;
    std::string_view const conversion(begin, static_cast<std::size_t>(at - begin));
    at += *at == '!' ? 1 : 0;
    return {number, conversion};
}
