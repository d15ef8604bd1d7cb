#pragma once

/// Threads and module loading: what gen needs of it.

#include "korvane_export.h"

/// Starts module loading for the executable at that absolute path. The string is copied; null
/// counts as empty.
KORVANE_API void thr_drl_init(char const* module_fullpath);
/// Ends module loading and forgets the path.
KORVANE_API void thr_drl_fini();
/// What thr_drl_init was given, or null before it and after thr_drl_fini. Valid until either.
KORVANE_API char const* thr_drl_module_fullpath();

/// Non-zero when a shared module of that file name is loaded into the process, whatever directory
/// it came from. A name with a "/" must match the whole path. Null and "" give 0.
KORVANE_API int thr_drl_is_loaded(char const* module_file_name);

/// Stops in the debugger that is attached to the process; without one it does nothing.
KORVANE_API void thr_debug_break();
