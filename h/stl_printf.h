#pragma once

/// printf into strings: whole formats, and one conversion at a time.

#include "korvane_export.h"
#include "mem_alloc_sys.h"
#include "stl_arg_cursor.h"

/// Replaces @p out with the printf-style expansion of @p format, byte for byte what snprintf of the
/// C library would write, and returns its length. On an error that printf has (an incomplete
/// conversion at the end, a wide character that the locale lacks, a string of more than INT_MAX
/// bytes) the result is negative and @p out empty. A null format counts as an empty one; a null @p
/// out gives -1. Two things differ from printf: `%n` only steps over its argument, and with null @p
/// args a conversion other than `%%` prints nothing. Arguments may point into @p out.
KORVANE_API int stl_sprintf(STR* out, char const* format, ...) KORVANE_PRINTF(2, 3);
KORVANE_API int stl_vsprintf(STR* out, char const* format, char* args);

/// Appends to @p out the argument at @p cursor, formatted by one printf conversion such
/// as "%5.2f", and advances the cursor past it. On x86 that moves `*cursor` itself, on x86-64 the
/// va_list object that it points to. What is no single conversion (see STL_CONVERSION), null among
/// them, prints nothing and steps past one word, `%I64d` past 64 bits. What follows a conversion is
/// ignored. errno stays as it is. A null @p out only steps, a null @p cursor does nothing.
KORVANE_API void stl_output(STR* out, char const* conversion, char** cursor);
