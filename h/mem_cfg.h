#pragma once

/// Configuration switches.

#include "korvane_export.h"

/// A configuration switch: what mem_cfg_set said last, else what the environment variable
/// "KORVANE_CFG" says (comma-separated, `name` or `name=on` or `name=off`, blanks around a mention
/// ignored, the last mention counts), else @p by_default. A mention with any other value says
/// nothing. The variable is read anew by every call. A null or empty name gives @p by_default.
KORVANE_API bool mem_cfg_is_on(char const* name, bool by_default);
/// Sets a switch for this process, whatever the environment says. A null or empty name is ignored.
KORVANE_API void mem_cfg_set(char const* name, bool on);
/// Forgets what mem_cfg_set said of that switch; nothing happens for one that it has not set, or a
/// null or empty name.
KORVANE_API void mem_cfg_unset(char const* name);
