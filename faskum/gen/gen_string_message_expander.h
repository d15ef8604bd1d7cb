#pragma once

#include "stl.h"

/// The inserts of one message: which numbers it uses, and the conversion of each.
///
/// The format is read twice, and both readings record the inserts they meet. They disagree only
/// where a digit follows an even run of "%", which the first one takes for an insert. Then the
/// second one writes over conversions that the first one left behind, and what an insert means can
/// change while the text is being made.
class MESSAGE_INSERTS {
  public:
    static constexpr unsigned most = 99;

    /// One insert just read. Conversions of numbers from `changed_from` up are not what they were
    /// before it.
    struct RECORDED {
        unsigned number;
        unsigned changed_from;
    };

    /// Reads the whole format for the first time, and goes back to its start. Gives the length of
    /// what counts of it.
    std::size_t scan(char const* format);
    /// Reads one insert, @p at being at its first digit, and steps past it.
    RECORDED record(char const*& at);

    unsigned highest() const { return m_highest; }
    bool is_used(unsigned number) const { return number <= m_highest && m_used[number]; }
    char const* conversion(unsigned number) const { return m_buffer + m_begin[number]; }

  private:
    static constexpr unsigned capacity = 4096;

    void mark_used(unsigned number);
    void put(char c);
    void put_conversion(char const*& at);

    unsigned m_highest = 0;
    unsigned m_end = 0;               // of what the current reading has recorded
    bool m_readings_agree = true;     // then the second one writes just what is there already
    bool m_used[most + 1];            // up to the highest
    unsigned short m_begin[most + 1]; // in the buffer, of the numbers used
    char m_buffer[capacity];
};

/// Appends the expansion of one message to a text.
///
/// The text comes out as if, for every insert, the arguments were gone through from where the last
/// insert left off, or from the start for a number not above that one, each formatted and all but
/// the wanted one thrown away. In fact arguments are only stepped over, the place of each is
/// remembered, and a number that comes again is copied from the text, as long as no conversion
/// changes.
class MESSAGE_EXPANDER {
  public:
    MESSAGE_EXPANDER(STR& out, char const* format, char* args)
        : m_out(out), m_format(format), m_cursor(args) {}

    void expand();

  private:
    // Where in the text an argument was put.
    struct PIECE {
        std::size_t begin;
        std::size_t length;
    };

    char const* append_plain(char const* at);
    void insert(char const*& at);
    void forget(unsigned changed_from);
    void go_before(unsigned number);
    void append_argument(unsigned number);
    void step_over(unsigned number);
    void stepped(unsigned number);

    STR& m_out;
    char const* m_format;
    STL_ARG_CURSOR m_cursor;
    MESSAGE_INSERTS m_inserts;
    unsigned m_counter = 0; // the argument that the cursor stands behind
    unsigned m_known = 1; // the places up to that of this argument hold for all conversions so far
    STL_ARG_CURSOR::PLACE m_places[MESSAGE_INSERTS::most + 2];
    bool m_in_text[MESSAGE_INSERTS::most + 1]; // whether the piece of that number holds
    PIECE m_pieces[MESSAGE_INSERTS::most + 1];
};
