#pragma once

/// The neutral twins of conversions between multibyte and wide characters (LC_CTYPE). Counts are
/// bytes, or wide characters where those are written; all bits set stands for what cannot be
/// converted, as -1 does for single characters.

#include "korvane_export.h"

/// Length of the first character of @p string, looking at @p count bytes at most; 0 for null.
KORVANE_API int gen_local_mblen(char const* string, unsigned count);
/// Stores the first character of @p string unless @p wide is null; the rest as gen_local_mblen.
KORVANE_API int gen_local_mbtowc(wchar_t* wide, char const* string, unsigned count);
/// Stores the bytes of @p wide in @p string, which has room for MB_CUR_MAX of them, and gives their
/// number; 0 for a null @p string.
KORVANE_API int gen_local_wctomb(char* string, wchar_t wide);
/// Converts @p string, its end included if @p count allows, and gives how many were written without
/// the end; with @p wide null only measures. A null @p string is reported as "string != NULL" and
/// gives all bits set.
KORVANE_API unsigned gen_local_mbstowcs(wchar_t* wide, char const* string, unsigned count);
/// The way back, under the same rules. A null @p wide is reported as "wide != NULL".
KORVANE_API unsigned gen_local_wcstombs(char* string, wchar_t const* wide, unsigned count);
/// Not implemented: reports "not implemented", copies nothing.
KORVANE_API void gen_local_mbccpy(unsigned char* to, unsigned char const* from);
/// Not implemented: reports "not implemented" and gives 0.
KORVANE_API unsigned gen_local_mbclen(unsigned char const* character);
