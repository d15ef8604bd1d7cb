#pragma once

/// The neutral twins that read floating-point numbers (LC_NUMERIC).

#include "korvane_export.h"

/// The number that a string begins with; 0 where it begins with none. A null string is reported as
/// "text != NULL"; it gives 0 and a null end.
KORVANE_API double gen_local_atof(char const* text);
KORVANE_API double gen_local_strtod(char const* text, char** end);
KORVANE_API double gen_local_wcstod(wchar_t const* text, wchar_t** end);
