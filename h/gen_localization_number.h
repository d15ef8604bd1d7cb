#pragma once

/// The neutral twins that read and write integers (LC_NUMERIC).

#include "korvane_export.h"

#include <cstdint>

/// The number that a string begins with; 0 where it begins with none. A null string is reported as
/// "text != NULL"; it gives 0 and a null end. A radix of 0 goes by the prefix, 0x or 0; one that is
/// neither that nor from 2 to 36 gives 0, with errno EINVAL, and leaves the end alone.
KORVANE_API long gen_local_atol(char const* text);
KORVANE_API std::int64_t gen_local_atosqword(char const* text);
KORVANE_API long gen_local_strtol(char const* text, char** end, int radix);
KORVANE_API long gen_local_wcstol(wchar_t const* text, wchar_t** end, int radix);
KORVANE_API unsigned long gen_local_strtoul(char const* text, char** end, int radix);
KORVANE_API unsigned long gen_local_wcstoul(wchar_t const* text, wchar_t** end, int radix);
/// As gen_local_atol, but sticks at the limits of int, with errno ERANGE.
KORVANE_API int gen_local_atoi(char const* text);
/// Not implemented: reports "not implemented" and gives 0.
KORVANE_API int gen_local_wtoi(wchar_t const* text);
KORVANE_API long gen_local_wtol(wchar_t const* text);

/// Writes @p value in decimal and returns @p string, which has room for at least 11 characters;
/// null is reported as "string != 0" and returned. For values from 0 up: a negative one gives the
/// single character that lies as far below '0' as its last digit says ("+" for -15).
KORVANE_API char* gen_local_itoa(int value, char* string);
