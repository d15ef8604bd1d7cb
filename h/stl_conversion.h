#pragma once

/// One printf conversion, taken apart.

#include "korvane_export.h"

/// What a conversion takes its argument as.
enum class STL_ARGUMENT : unsigned char {
    word,              ///< one machine word, an int or a pointer, of which no more is known
    none,              ///< there is no argument, as for `%%` and `%m`
    integer,           ///< int, and all that is passed as one
    long_integer,      ///< long, size_t, ptrdiff_t
    long_long_integer, ///< long long, intmax_t where it is longer than long
    wide_character,    ///< wint_t
    floating,          ///< double
    long_floating,     ///< long double
    text,              ///< char const*
    wide_text,         ///< wchar_t const*
    pointer,           ///< any other, that of %n included
};

/// One printf conversion, taken apart where it stands, as the C library takes it apart.
struct STL_CONVERSION {
    char const* begin; ///< behind the "%"
    char const* end;   ///< behind the last character that belongs to it
    char letter;       ///< '\0' when the text ended before it
    /// What it takes. What is no single conversion takes a word; but `%I64d` and its like, 64 bits.
    STL_ARGUMENT argument;
    /// True for what takes one argument at most and means the same by itself. False for what is no
    /// conversion, and for one with a `*`, a numbered `1$`, or the flag `I`: whoever writes %I64d
    /// means a long argument, not an int with 64 columns of a locale's digits.
    bool is_single;
    bool is_numbered;    ///< "1$" and its like
    unsigned char stars; ///< how many ints come before the argument, for width and precision

    /// Whether it is nothing but a letter behind the "%", as most are.
    bool is_plain() const { return end - begin == 1; }
};

/// What stl_parse_conversion does for conversions that are more than a frequent letter.
KORVANE_API void stl_parse_long_conversion(char const* text, STL_CONVERSION& conversion);

/// Takes the conversion apart whose "%" is just before @p text, and fills in @p conversion. Any
/// character in the letter's place is taken for the letter, "!" as well; at the end of the string
/// there is none, and the letter is '\0'.
inline void stl_parse_conversion(char const* text, STL_CONVERSION& conversion) {
    if (*text == 's') // most are one of these
        conversion = {text, text + 1, 's', STL_ARGUMENT::text, true, false, 0};
    else if (*text == 'd')
        conversion = {text, text + 1, 'd', STL_ARGUMENT::integer, true, false, 0};
    else
        stl_parse_long_conversion(text, conversion);
}
