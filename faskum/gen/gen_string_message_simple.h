#pragma once

#include "stl.h"

#include <cstdint>

/// A message in which every argument keeps one conversion, as in nearly all there are.
///
/// Then nothing that an insert means changes while the text is being made: each argument is
/// rendered once, in order, and the text is put together from the pieces.
class SIMPLE_MESSAGE {
  public:
    SIMPLE_MESSAGE(char const* format, char* args) : m_format(format), m_args(args) {}

    /// Appends the expansion to @p out. False, and nothing done, when it takes MESSAGE_EXPANDER.
    bool expand(STR& out);

  private:
    static constexpr unsigned most = 99;
    static constexpr unsigned most_digits = 11; // of an int, with its sign
    // The conversions of a format are at most half as long again as the format ("%1" is "%s" and a
    // terminator), and the room for them is not to run out.
    static constexpr unsigned longest = 2730;

    struct INSERT {
        unsigned uses;
        char const* conversion; // without its "%"
        std::size_t conversion_length;
        char const* piece; // null for one in m_others, until those are all there
        std::size_t piece_length;
    };

    bool scan();
    bool scan_insert(char const*& at);
    void render();
    void render(INSERT& insert, STL_ARG_CURSOR& cursor);
    template <typename INTEGER>
    void render_digits(INSERT& insert, INTEGER value);
    void render_other(INSERT& insert, STL_ARG_CURSOR& cursor);
    std::uint64_t gather_pieces();
    char* write(char* to) const;
    char* write_insert(char* to, char const*& at) const;

    char const* m_format;
    char* m_args;
    char const* m_end; // of what counts of it
    unsigned m_highest = 0;
    std::size_t m_line_feeds = 0;
    INSERT m_inserts[most + 1]; // up to the highest
    STR m_others;               // pieces that are neither an argument's own text nor plain digits
    char* m_digits_end = m_digits;
    char m_digits[most * most_digits];
};
