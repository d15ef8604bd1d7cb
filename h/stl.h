#pragma once

/// The printf layer of the suite's string support.
///
/// Arguments travel as one `char*`, on both widths. On x86 it is the va_list itself; on x86-64 it
/// is the address of the caller's va_list object, which must live as long as the text is in use. A
/// null pointer stands for "no arguments": conversions then print nothing.

#include <cstdarg>

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Turns a va_list into the pointer that the functions here, and every `char* args` of the suite,
/// take. Works for a local va_list and for one that was received as a parameter.
inline char* STL_ARGS(va_list args) {
    // On x86 a va_list is a char*; on x86-64 it is an array, which arrives here as its address.
    return reinterpret_cast<char*>(args);
}

/// Replaces @p out with the printf-style expansion of @p format; returns its length. A null format
/// counts as an empty one.
KORVANE_API int stl_sprintf(STR* out, char const* format, ...) KORVANE_PRINTF(2, 3);
KORVANE_API int stl_vsprintf(STR* out, char const* format, char* args);
