#pragma once

/// A few services for the process of an executable.

#include "korvane_export.h"

/// Adds 10 to the process's nice value; a refusal is ignored.
KORVANE_API void gen_lower_process_priority();

/// Stops in the debugger, but only with the configuration switch "dont_catch_all_exceptions" on.
/// @param guarded whatever exception the stop raises is caught and dropped
KORVANE_API void gen_debug_break(bool guarded);

/// Does nothing on this platform.
KORVANE_API void gen_debug_output_string(char const* text);

/// Writes a printf-style message to the memory library's debug channel under the owner "GEN", and
/// gives the channel's answer. A null format counts as an empty one.
KORVANE_API int gen_mem_msg_debug(char const* format, ...) KORVANE_PRINTF(1, 2);
