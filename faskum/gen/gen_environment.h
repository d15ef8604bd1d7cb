#pragma once

/// Private to gen.

#include "mem_alloc_sys.h"

/// Sets the environment variable @p name. The environment keeps the string, and whoever asked for
/// the variable earlier may still read the one that it had before: strings are never freed, are
/// not counted as tracked memory, and outlive the library. A system that refuses is ignored.
void gen_set_variable(char const* name, STR const& value);
