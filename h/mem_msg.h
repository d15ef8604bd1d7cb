#pragma once

/// The debug-message channel.

#include "korvane_export.h"

/// Receives one debug message, without a line end of its own. What it returns is passed on to the
/// writer of the message.
using MEM_MSG_SINK = int (*)(char const* owner, char const* text);

/// Expands a printf-style message and hands it to the sink in force.
/// @param args the arguments as STL_ARGS of stl.h gives them; null where there are none
/// @return what the sink returned; the default sink writes one line to standard error and returns
///         the number of characters of that line
/// A null owner or format counts as an empty one.
KORVANE_API int mem_msg_local_vdebug(char* owner, char const* format, char* args);
/// Installs @p sink and returns the one it replaces. Null restores the default sink, which is
/// itself returned as null.
KORVANE_API MEM_MSG_SINK mem_msg_set_sink(MEM_MSG_SINK sink);
