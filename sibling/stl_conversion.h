#pragma once

#include "stl.h"

/// One printf conversion, taken apart the way the C library takes it apart.
struct STL_CONVERSION {
    enum FLAG : unsigned char {
        left = 1,
        sign = 2,
        blank = 4,
        alternate = 8,
        zero = 16,
        grouping = 32,
        locale_digits = 64
    };

    char const* end;    ///< behind the last character that belongs to it
    char letter = '\0'; ///< '\0' when the text ended before it
    STL_ARGUMENT argument = STL_ARGUMENT::none;
    unsigned char flags = 0;
    unsigned char modifier_length = 0;
    char modifier[2]; ///< the length modifier as it was written
    /// False for a conversion of numbered arguments, and for whatever printf itself has to judge:
    /// an unknown letter, a missing one, a number past the range of int.
    bool ordinary = true;
    bool width_is_argument = false;
    bool precision_is_argument = false;
    int place = 0; ///< the number of an argument given by its place, as in "%2$s"; 0 without
    int width = 0;
    int precision = -1; ///< -1 when there is none

    bool has(FLAG flag) const { return (flags & flag) != 0; }
    /// Room for any text that spell writes.
    static constexpr unsigned spelling_size = 16;
    /// Whether it stands on one argument at most, all of it in its own place.
    bool is_simple() const { return ordinary && !width_is_argument && !precision_is_argument; }
    /// Writes the conversion with "*.*" for width and precision.
    void spell(char* spelling) const;
};

/// Takes the conversion apart whose "%" is just before @p at.
STL_CONVERSION stl_parse_conversion(char const* at);

/// Takes a text apart that should be one conversion, as STL_ARG_CURSOR::output describes it; not
/// is_simple when it is none.
STL_CONVERSION stl_parse_single(char const* text);
