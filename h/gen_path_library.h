#pragma once

/// The groups of directories in which design files are looked up, and the order of file types that
/// ranks source files. Hosts set the project's and the user's library paths; the shipped libraries
/// are found by themselves. gen_path_project.h has the directories of the project itself.
///
/// A library path list is a string as FIO_FIND splits it. Its relative entries are taken relative
/// to the project directory that is in force when a file is looked up.
///
/// All state is process-wide and for one thread.

#include "gen_load.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The group that supplied a file. A source search visits them in the order in which they stand
/// here: the user's libraries come before the shipped ones although they carry the higher number.
enum GEN_LIBRARY_PATHS_ENUM : int {
    GEN_LIBRARY_PATHS_PROJECT_DIR = 1,       ///< the project directory
    GEN_LIBRARY_PATHS_DB_DIR = 2,            ///< the project database directory
    GEN_LIBRARY_PATHS_PROJECT_LIBRARIES = 3, ///< the project library paths
    GEN_LIBRARY_PATHS_USER_LIBRARIES = 5,    ///< the user library paths
    GEN_LIBRARY_PATHS_KORVANE_LIBRARIES = 4, ///< the project's parablocks, the shipped libraries
};

/// Points a search object at a path list: re-initialises it in place, or creates it where @p slot
/// contains null, to be released with delete. A null @p slot is ignored.
KORVANE_API void gen_set_fio_find_library_paths_helper(STR const& paths, FIO_FIND** slot);

/// Sets the project's library paths; an empty list finds nothing. The search object of the group
/// stays the same from the first call on.
KORVANE_API void gen_set_project_library_paths(STR paths);
KORVANE_API STR gen_get_project_library_paths();
/// The same for the user's library paths.
KORVANE_API void gen_set_user_library_paths(STR paths);
KORVANE_API STR gen_get_user_library_paths();

/// Builds the search objects of the shipped libraries, in the order of GEN_LIBRARY_TYPE, when there
/// is neither of them yet. A root that changes afterwards shows after gen_clear_all_library_paths.
KORVANE_API void gen_init_korvane_lib_paths();
/// The search object of the shipped libraries, and of those for outside tools, built if need be.
KORVANE_API FIO_FIND* gen_get_korvane_lib_paths();
KORVANE_API FIO_FIND* gen_get_korvane_eda_lib_paths();
/// The directories of the shipped libraries, built if need be. Valid until
/// gen_clear_all_library_paths.
KORVANE_API MEM_LIST<FIO_PATH> const* gen_get_default_lib_fio_paths();
/// The project's library directories as given, null while none were set. Valid until they are set
/// again.
KORVANE_API MEM_LIST<FIO_PATH> const* gen_project_lib_fio_paths();

/// The shared file-type order, created on the first call; never null. Who wants to edit it copies
/// it. Valid until gen_clear_all_library_paths.
KORVANE_API MEM_VECTOR<STR>* gen_get_file_type_order_helper();
/// Removes from @p order every entry that is @p ext but for letter case and one leading dot of the
/// entry. @p ext itself is given without its dot: ".v" matches no ".v". A null order is ignored.
KORVANE_API void gen_remove_file_type_order_helper(MEM_VECTOR<STR>* order, STR const& ext);
