#pragma once

/// Formatting of messages into library strings.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// Replaces @p out with the printf-style expansion of @p format; returns its length. A null format
/// counts as an empty one.
KORVANE_API int gen_sprintf(STR* out, char const* format, ...) KORVANE_PRINTF(2, 3);
/// The same for arguments as STL_ARGS of stl.h gives them.
KORVANE_API int gen_vsprintf(STR* out, char const* format, char* args);
