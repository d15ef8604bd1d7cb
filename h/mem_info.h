#pragma once

/// The size of the process.

#include "korvane_export.h"

/// Resident bytes of the process now, and at most so far; 0 where the kernel does not report them.
KORVANE_API unsigned long mem_info_get_working_set_size();
KORVANE_API unsigned long mem_info_get_working_set_peak_size();
