#pragma once

#include "gen_string_message_insert.h"
#include "stl.h"

/// The expansion of a message as it is defined: by two readings of the format.
///
/// Both record the inserts that they meet, the second one expands them. They disagree where a digit
/// follows an even run of "%", which only the first one takes for an insert. Then the second one
/// writes over conversions that the first one left behind, and what an insert means can change
/// while the string is being made.
class MessageReadings {
  public:
    MessageReadings(STL_TEXT& text, char const* format, char* args)
        : m_text(text), m_format(format), m_cursor(args) {}

    /// Appends the expansion.
    void expand();

  private:
    void read_inserts();
    void read_all();
    char const* read_plain(char const* at);
    unsigned record(char const*& at);
    bool put(char c);
    STL_CONVERSION conversion(unsigned number) const;
    void append_argument(unsigned number);

    STL_TEXT& m_text;
    char const* m_format;
    STL_ARG_CURSOR m_cursor;
    unsigned m_counter = 0; // the argument that the cursor stands behind
    unsigned m_end = 0;     // of what the current reading has recorded
    // MUTANT_EXCL_LINE(1 to 2): room alone
    bool m_is_used[MessageInsert::max_number + 1] = {};
    // In the buffer, of the numbers used. MUTANT_EXCL_LINE(1 to 2): room alone
    unsigned short m_begin[MessageInsert::max_number + 1];
    // MUTANT_EXCL_LINE(1 to 2): room alone
    char m_buffer[MessageInsert::conversion_capacity + 1];
};
