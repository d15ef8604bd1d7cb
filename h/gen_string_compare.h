#pragma once

/// Comparison and case folding of byte strings.

#include "korvane_export.h"

/// Byte order, bytes taken unsigned: the difference of the first two bytes that differ, 0 for equal
/// strings. Two nulls are equal, a null on one side compares below anything on the other.
KORVANE_API int gen_strcmp(char const* a, char const* b);
/// As gen_strcmp with the letters A to Z compared as a to z, whatever the locale.
KORVANE_API int gen_stricmp(char const* a, char const* b);
