#pragma once

/// Integers to strings and back, whatever the locale.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The decimal integer that begins at @p *pos, which is left behind what was read. Spaces, tabs and
/// line feeds are stepped over, then one "-" or "+"; without a digit behind them the result is 0
/// and @p *pos stays where the digit is missing. There is no overflow: the value wraps in 32 bits.
///     "\t-42" => -42     "+7x" => 7, at "x"     "-" => 0, at the end     "\r5" => 0, at "\r"
/// A null @p pos stands for the beginning of @p s.
KORVANE_API int gen_atoi(STR const& s, STR::const_iterator* pos);
/// The same from the beginning of @p s.
KORVANE_API int gen_atoi(STR const& s);

// Digits above 9 are a to z. Only in radix 10 is a negative value written with a sign; in any other
// it is written as its 32-bit pattern (-1 in radix 16 is ffffffff). A radix below 2 or
// above 36 gives an empty string; only the form that fills an STR reports it, and only below 2.

/// Writes the digits of @p value and a NUL, and not a byte more, to @p buf, which is returned. It
/// requires room for the longest number: 12 bytes in radix 10, 33 in any other. A null @p buf is
/// returned as it is.
KORVANE_API char* gen_itoa(int value, char* buf, int radix);
/// Replaces the content of @p out with the digits. A radix below 2 is reported as the internal
/// error "radix > 1", @p out being empty by then.
KORVANE_API void gen_itoa(int value, STR& out, int radix);
/// The digits as a new string.
KORVANE_API STR gen_itoa(int value, int radix);

/// As gen_itoa into a buffer, for a value without a sign. Room is required for 11 bytes in radix 10
/// and 33 in any other, or 21 and 65 where a long has 64 bits.
KORVANE_API char* gen_ultoa(unsigned long value, char* buf, int radix);
