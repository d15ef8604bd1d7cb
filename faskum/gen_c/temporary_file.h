#pragma once

/// Whether a temporary file can be created at all.

#include "mem_alloc_sys.h"

/// Why gen_get_temp_filename would find no name for a file in @p directory, and wait until it does;
/// "" when it would. A file of the same form is created and removed again.
STR trouble_of_temporary_file(STR const& directory, STR const& prefix);
