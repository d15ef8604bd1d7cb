#pragma once

/// Looking a design file up by name. gen_path_cache.h keeps such answers.
///
/// Directories are asked in this order, and the first that has the name wins: the project
/// directory, the database directory, the project's libraries, the user's libraries, the project's
/// parablocks directory, the shipped libraries. An absolute name is only tested for existence. What
/// is found may be a directory. Every lookup that finds no project directory set makes the current
/// directory the project directory.

#include "fio.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The file that @p name means, or the empty path, as for "". One existence check a directory
/// tried. Reports "korvane_libs != 0" where a host has set the shipped libraries' search object to
/// null.
KORVANE_API FIO_PATH gen_find_file(STR const& name);
/// The same in the libraries for outside tools alone; it sets no project directory. Reports
/// "korvane_eda_libs != 0" where a host has set their search object to null.
KORVANE_API FIO_PATH gen_find_eda_file(STR const& name);
