#pragma once

/// The version of the library: the one that a host is compiled with, in macros, and the one that it
/// runs with.

#include "korvane_export.h"

/// The three numbers of the version. A host that runs with another GEN_VERSION_MAJOR than it was
/// compiled with does not load; names are only added between versions of one.
#define GEN_VERSION_MAJOR 1
#define GEN_VERSION_MINOR 0
#define GEN_VERSION_PATCH 0
/// The version as a string, "1.0.0".
#define GEN_VERSION "1.0.0"

/// The GEN_VERSION of the library in the process. Never null; the library's own.
KORVANE_API char const* gen_get_version();
