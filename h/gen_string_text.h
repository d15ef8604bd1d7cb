#pragma once

/// Copying and trimming of byte strings, with null rules of their own.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Appends @p src to @p dst, which is returned and has room for both and a NUL. The strings may
/// overlap. Nothing happens when either is null.
KORVANE_API char* gen_strcat(char* dst, char const* src);

/// Reverses @p s in place and returns it. Null gives null.
KORVANE_API char* gen_strrev(char* s);

/// Copies @p src to @p dst, which is returned and has room for it and a NUL. The strings may
/// overlap. A null @p src is an empty string; with a null @p dst nothing happens.
KORVANE_API char* gen_strcpy(char* dst, char const* src);

/// Copies at most @p n characters of @p src to @p dst, which is returned, and always a NUL behind
/// them: of a longer @p src the NUL lands at position n, so that @p dst needs n + 1 bytes. Of
/// a shorter one, positions up to n - 2 are filled with NULs, and position n - 1 is left as it was
/// unless the NUL belongs there. A null @p src gives an empty string without filling; with a null
/// @p dst nothing happens.
///     gen_strncpy(dst, "abcde", 3) => "abc" and a NUL in dst[3]
///     gen_strncpy(dst, "a", 4)     => "a" and NULs up to dst[2]; dst[3] is kept
KORVANE_API char* gen_strncpy(char* dst, char const* src, unsigned n);

/// There are no profile files on this platform: does nothing and returns 0.
KORVANE_API int gen_writeprivateprofilestring(char const* section, char const* key,
                                              char const* text, char const* file);

/// A copy of @p s without the spaces at its beginning and end. Only the space character counts; a
/// string of nothing else gives an empty one.
KORVANE_API STR gen_remove_leading_and_trailing_spaces(STR const& s);
/// Makes @p *out that copy; @p out may be the address of @p s. With a null @p out nothing happens.
KORVANE_API void gen_remove_leading_and_trailing_spaces(STR const& s, STR* out);

/// The same for spaces, tabs, line feeds and carriage returns; vertical tabs and form feeds are
/// kept.
KORVANE_API STR gen_remove_leading_and_trailing_white_spaces(STR const& s);
KORVANE_API void gen_remove_leading_and_trailing_white_spaces(STR const& s, STR* out);
