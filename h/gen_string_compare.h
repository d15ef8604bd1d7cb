#pragma once

/// Comparison of NUL-terminated byte strings. No locale takes part; letters are folded by ASCII
/// alone.
///
/// All of them take nulls: two nulls compare equal (0), a null on the left compares below anything
/// (-1), a null on the right above (1). The order that reads digits as numbers is in
/// gen_string_lex.h.

#include "korvane_export.h"

/// Byte order, bytes taken unsigned: the difference of the first two bytes that differ, 0 for equal
/// strings.
KORVANE_API int gen_strcmp(char const* a, char const* b);

/// As gen_strcmp with A to Z compared as a to z, the result being the difference of the folded
/// bytes. "[", "\", "]", "^", "_" and "`" therefore sort before every letter, in whichever case.
KORVANE_API int gen_stricmp(char const* a, char const* b);
/// The same as gen_stricmp.
KORVANE_API int gen_ascii_stricmp(char const* a, char const* b);
/// The same as gen_stricmp.
KORVANE_API int gen_stricmp_mt(char const* a, char const* b);

/// As gen_stricmp for at most @p n characters, except that an @p n of 0 compares the whole strings.
KORVANE_API int gen_strnicmp(char const* a, char const* b, unsigned n);
/// The same as gen_strnicmp.
KORVANE_API int gen_ascii_strnicmp(char const* a, char const* b, unsigned n);

/// Bytes before the NUL; 0 for a null pointer, 2147483647 for anything longer than that.
KORVANE_API int gen_strlen(char const* s);

/// 1 when "*" or "?" occurs in @p s, otherwise 0; 0 for a null pointer.
KORVANE_API int gen_has_wildcard_chars(char const* s);
