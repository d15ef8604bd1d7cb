#pragma once

/// Private to gen.

#include "mem_alloc_sys.h"

/// Opens a file for writing, in the old contents' place and with the permissions of the umask; -1
/// where it cannot be had, with errno saying why. It is closed when the host starts another
/// program.
int gen_open_for_writing(STR const& path);
