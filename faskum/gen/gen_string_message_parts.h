#pragma once

/// The expansion of nearly all messages. Where a format is beyond it, MessageReadings takes over,
/// by which messages are defined; for all others both give the same.

#include "gen_string_message_insert.h"
#include "stl.h"

#include <cstddef>
#include <string_view>

/// The format of a message, taken apart once: texts, and inserts with their conversions.
///
/// On 32-bit, messages of 1, 4 and 12 inserts would take 2.4, 2.1 and 3.2 times as long by
/// MessageReadings alone, with the formats of scripts/bench 'gen_formatmessage.*'.
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
    static constexpr unsigned max_parts = 128; // MUTANT_EXCL_LINE: what is longer is read otherwise

    void add_text(std::string_view text);
    inline char const* add_insert(char const* at);

    unsigned m_count = 0;
    unsigned m_highest = 0;
    std::size_t m_conversions_size = 0; // MUTANT_EXCL_LINE: what is longer is read otherwise
    // Up to the highest. MUTANT_EXCL_LINE(1 to 2): room alone
    Argument m_arguments[MessageInsert::max_number + 1];
    Part m_parts[max_parts];
};
