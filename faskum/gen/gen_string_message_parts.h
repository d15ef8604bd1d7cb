#pragma once

#include "gen_string_ascii.h"
#include "stl.h"

#include <cstddef>
#include <string_view>

/// An insert as it stands in the format of a message.
struct MessageInsert {
    static constexpr unsigned most = 99; // MUTANT_EXCL_LINE: room alone
    /// What the conversions of a message have room for, each with its "%" and a terminator.
    static constexpr std::size_t room = 4095;

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

/// The format of a message, taken apart once: texts, and inserts with their conversions.
///
/// On 32-bit, messages of 1, 4 and 12 inserts take 57, 110 and 241 ns by it, and 140, 260 and 788
/// by MessageReadings, with the formats of scripts/bench 'gen_formatmessage.*'.
class MessageParts {
  public:
    /// False for a format that takes MessageReadings: one in which an insert means two things, that
    /// has more parts than there is room for here, or longer conversions than a message may have.
    bool read(char const* format);
    /// Appends the expansion.
    void render(STL_TEXT& text, char* args) const;

  private:
    // Nothing in these is set before it is used: that would cost more than all the rest.
    struct Part {
        unsigned number;           // of the insert; 0 for a text
        STL_CONVERSION conversion; // of a text only begin and end
    };
    struct Argument {
        STL_ARGUMENT kind;
        bool is_named; // by an insert
    };
    static constexpr unsigned most = 128; // MUTANT_EXCL_LINE: what is longer is read otherwise

    void add_text(std::string_view text);
    char const* add_insert(char const* at);

    unsigned m_count = 0;
    unsigned m_highest = 0;
    std::size_t m_room_taken = 0; // MUTANT_EXCL_LINE: what is longer is read otherwise
    // Up to the highest. MUTANT_EXCL_LINE(1 to 2): room alone
    Argument m_arguments[MessageInsert::most + 1];
    Part m_parts[most];
};
