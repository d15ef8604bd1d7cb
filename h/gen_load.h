#pragma once

/// What gen keeps from its loading to its unloading: the path state, as data that hosts may read.
/// The functions that set and use it are in gen_path_project.h and gen_path_library.h.
///
/// All of it is process-wide and for one thread. Objects behind pointers belong to gen, and null
/// stands for "not set" or "not made yet".

#include "fio_find.h"
#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The project directory, ending in "/"; "" until it is set.
KORVANE_API extern STR gen_project_dir_path;
/// For callers; gen neither writes nor reads it.
KORVANE_API extern STR gen_korvane_library_paths;
/// The library path lists as they were given last.
KORVANE_API extern STR gen_project_library_paths;
KORVANE_API extern STR gen_user_library_paths;
/// The output directory, ending in "/"; "" for none.
KORVANE_API extern STR gen_project_output_directory;

/// The search objects over the project, database and parablocks directories.
KORVANE_API extern FIO_FIND* gen_project_directory_fio_find;
KORVANE_API extern FIO_FIND* gen_project_db_directory_fio_find;
KORVANE_API extern FIO_FIND* gen_project_parablocks_fio_find;
/// The search objects over the project's, the user's, and the two kinds of shipped libraries.
KORVANE_API extern FIO_FIND* gen_project_libraries;
KORVANE_API extern FIO_FIND* gen_ini_user_libraries;
KORVANE_API extern FIO_FIND* gen_korvane_libraries;
KORVANE_API extern FIO_FIND* gen_korvane_eda_libraries;

/// The project's parablocks directory, its database directory, and the second path of that.
KORVANE_API extern FIO_PATH* gen_project_parablocks_dir_path;
KORVANE_API extern FIO_PATH* db_dir_path;
KORVANE_API extern FIO_PATH* db_dir_full_name;

/// The file-type order: extensions with their dots, most preferred first.
KORVANE_API extern MEM_VECTOR<STR>* gen_file_type_order;

/// Frees the search objects, the file-type order and the project's directory paths, and makes them
/// null. The strings and the find-file cache stay. The next lookup builds the shipped libraries
/// again and makes the current directory the project directory; the project's and the user's
/// libraries are absent until they are set again.
KORVANE_API void gen_clear_all_library_paths();

/// Clears the path state when the library is unloaded.
class KORVANE_API GEN_PATH_INITIALIZER {
  public:
    GEN_PATH_INITIALIZER() {}
    ~GEN_PATH_INITIALIZER() { gen_clear_all_library_paths(); }
    GEN_PATH_INITIALIZER(GEN_PATH_INITIALIZER const&) = delete;
    GEN_PATH_INITIALIZER& operator=(GEN_PATH_INITIALIZER const&) = delete;
};
