#pragma once

/// The project, its database directory and its output directory. All of it is process-wide state
/// that the host's main thread sets and reads.

#include "fio.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The absolute project directory; "" until one is set.
KORVANE_API extern STR gen_project_dir_path;
/// The absolute output directory; "" when none is set.
KORVANE_API extern STR gen_project_output_directory;
/// The database directory; null until one is set.
KORVANE_API extern FIO_PATH* db_dir_path;

/// The database directory's path, "" until one is set.
KORVANE_API STR gen_get_db_dir_path_string();

/// The output directory, or the project directory where none is set. The text belongs to the
/// library and stays valid until that directory changes.
KORVANE_API char const* gen_get_project_output_directory();
