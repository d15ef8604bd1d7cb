#pragma once

/// How executables are found.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// A regular file of that name exists, behind symbolic links too. Directories and devices are
/// not files; a socket counts as one. A path with an embedded NUL names nothing.
KORVANE_API bool gen_file_exists(STR const& path);

/// Looks the executable @p name up and gives its path, which may be relative:
///
/// 1. "$KORVANE_ROOTDIR/$KORVANE_PLATFORM/name" where both variables are set,
/// 2. "$KORVANE_DIR/bin/name" where that one is set,
/// 3. "entry/name" for each entry of "PATH"; an empty entry stands for the root directory, one that
///    makes a path of more than 1023 bytes is passed over.
///
/// Where no file is found it gives the last candidate of the first two, which does not exist,
/// or "" when neither variable was set.
KORVANE_API STR find_executable_in_path(STR const& name);
