#pragma once

/// Two services on path strings.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// @p path without the project directory in front. A name that is not absolute is looked up first,
/// with gen_find_file. A file that is not found or not below the project directory, letter case
/// included, gives @p path unchanged; null reports "path != NULL" and gives "".
KORVANE_API STR gen_get_relative_path_if_starts_with_project_dir(char const* path);

/// @p s with every "\" replaced by "/".
KORVANE_API STR gen_sync_path_separators(STR const& s);
