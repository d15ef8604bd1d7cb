#pragma once

/// The project: its directory, its database, parablocks and output directories. Hosts set them when
/// they start and when the user opens another project; nothing is stored. All state is process-wide
/// and for one thread.

#include "gen_load.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// "db", the conventional name of the database directory, for callers.
KORVANE_API extern char const GEN_DB_DIR_NAME[3];
/// "parablocks", the name of the parablocks directory below the project directory.
KORVANE_API extern char const GEN_PROJECT_PARABLOCKS_DIR_NAME[11];

/// Makes @p dir the project directory, and the one below it the parablocks directory. A relative
/// one stays relative: lookups take it from the current directory of their time. Lookups split its
/// string as a path list, unless the whole of it names a directory that exists by now. With "",
/// nothing is found in the project, and "/parablocks/" is the parablocks directory.
KORVANE_API void gen_set_project_dir_path(STR dir);
/// The project directory, "" when none was ever set.
KORVANE_API STR gen_get_project_dir_path();

/// Makes "<project_dir>/parablocks/" the parablocks directory. It need not exist.
KORVANE_API void gen_init_project_parablocks_path(FIO_PATH const& project_dir);
/// The parablocks directory, the empty path while unset.
KORVANE_API FIO_PATH gen_get_project_parablocks_dir_path();
/// Its search object, null while unset.
KORVANE_API FIO_FIND* gen_get_project_parablocks_fio_find();

/// Sets the database directory. It is not joined to the project directory. Lookups split its string
/// as they do the project directory's.
KORVANE_API void gen_set_db_dir_path(STR dir);
/// The database directory as given, the empty path or "" while unset.
KORVANE_API FIO_PATH gen_get_db_dir_path();
KORVANE_API STR gen_get_db_dir_path_string();
/// A database directory has been set.
KORVANE_API bool gen_check_db_dir_path();

/// A second path of the database, kept for callers: nothing is looked up in it. The empty path
/// while unset.
KORVANE_API void gen_set_db_dir_full_name(FIO_PATH p);
KORVANE_API FIO_PATH gen_get_db_dir_full_name();

/// Sets the output directory, absolute and simplified; a relative one is taken from the current
/// directory. Null and "" set none, and "/" is never used.
KORVANE_API void gen_set_project_output_directory(char const* dir);
/// The output directory, created when it is missing; the project directory when none is set or it
/// cannot be had. Makes the current directory the project directory when it needs one and there is
/// none. Never null; valid until the project or output directory is set again.
KORVANE_API char const* gen_get_project_output_directory();
