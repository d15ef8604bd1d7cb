#pragma once

#include "stl.h"

#include <cstdint>

/// A message in which every argument keeps one conversion, as in nearly all there are.
///
/// Then nothing that an insert means changes while the text is being made: the format is taken
/// apart once, each argument rendered once, in order, and the text put together from the pieces.
class SIMPLE_MESSAGE {
  public:
    SIMPLE_MESSAGE(char const* format, char* args) : m_format(format), m_args(args) {}

    /// Appends the expansion to @p out. False, and nothing done, when it takes MESSAGE_EXPANDER.
    bool expand(STR& out);

  private:
    // What may stand behind a run of plain characters: an insert by its number, or one of these.
    enum : unsigned { nothing = 0, line_end = 100, blank = 101 };
    static constexpr unsigned most = 99;
    // The conversions of a format are at most half as long again as the format ("%1" is "%s" and a
    // terminator), and the room for them is not to run out.
    static constexpr unsigned longest = 2730;
    static constexpr unsigned most_parts = 128;

    // Some characters, somewhere. A text's own view would be set to nothing a hundred times over.
    struct SLICE {
        char const* text;
        std::size_t length;
    };
    struct PART {
        SLICE run;
        unsigned behind;
    };

    bool scan();
    bool scan_insert(char const*& at, unsigned& number);
    void render();
    void render(unsigned number, STL_ARG_CURSOR& cursor);
    void render_number(unsigned number, long long value);
    void render_other(unsigned number, STL_ARG_CURSOR& cursor);
    std::uint64_t length() const;
    void write(char* to) const;

    char const* m_format;
    char* m_args;
    PART m_parts[most_parts];
    unsigned m_part_count = 0;
    unsigned m_highest = 0;
    SLICE m_conversions[most + 1]; // up to the highest; null for a number that is not used
    SLICE m_pieces[blank + 1];     // null for one in m_others, until those are all there
    STR m_others;                  // what is neither an argument's own text nor plain digits
    char m_digits[most + 1][16];   // of an int, with its sign; written as one register
};
