#pragma once

/// The natural order of names, in which runs of decimal digits compare by their value: "file9"
/// sorts before "file10". Results are negative, 0 or positive.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Compares the integers that start at @p *str1_iter and @p *str2_iter and leaves both pointers
/// behind their digits.
///
/// Spaces, and then one "-", are stepped over first; that looks for neither end, so the bytes at
/// @p str1_end and @p str2_end must be there to be read, as a terminator is. Of the digits none is
/// read at or behind the end. Where no digit follows, the internal error
/// "::gen_ascii_isdigit(**str1_iter)" (or str2_iter) is reported and the number has no digits. At a
/// report the pointers are where the comparison stands: behind the spaces of both, and behind the
/// sign of the number that is reported. No pointer may be null.
///
/// A negative number sorts after one that is not: the result is 1 when only the first is negative,
/// -1 when only the second is, and both pointers then stay on the first digits. Otherwise leading
/// zeros are left out of account, the longer number is the greater by the difference of the
/// lengths, and numbers of one length differ by their first different digits. Equal values differ
/// by the number of leading zeros, more being greater: "007" is above "7". All of that is negated
/// when both numbers are negative.
KORVANE_API int gen_compare_integer_strings(char const* str1_end, char const** str1_iter,
                                            char const* str2_end, char const** str2_iter);
/// The same over library strings.
KORVANE_API int gen_compare_integer_strings(STR::const_iterator str1_end,
                                            STR::const_iterator* str1_iter,
                                            STR::const_iterator str2_end,
                                            STR::const_iterator* str2_iter);

/// Natural order of the @p len1 bytes at @p a and the @p len2 bytes at @p b. Where both strings
/// show a digit the two runs of digits compare as gen_compare_integer_strings says; elsewhere bytes
/// compare as signed chars, so that bytes from 128 on sort before ASCII. When one string ends where
/// it is still the beginning of the other, outside a run of digits or with the same run, the result
/// is the difference of the lengths, which sticks at 2147483647 either way on both widths. A null
/// pointer is an empty string, whatever its length.
KORVANE_API int gen_lexcmp(char const* a, unsigned len1, char const* b, unsigned len2);
KORVANE_API int gen_lexcmp(STR const& a, STR const& b);
/// Of NUL-terminated strings; a null is an empty one.
KORVANE_API int gen_lexcmp(char const* a, char const* b);

/// As gen_lexcmp with A to Z compared as a to z.
KORVANE_API int gen_ilexcmp(char const* a, unsigned len1, char const* b, unsigned len2);
KORVANE_API int gen_ilexcmp(STR const& a, STR const& b);
KORVANE_API int gen_ilexcmp(char const* a, char const* b);
