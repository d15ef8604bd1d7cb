// What lives from the loading of the library to its unloading. All of it is in one source, so that
// the order is the one written here: built from the top to the bottom, and destroyed in reverse
// after the host's own static objects, whose destructors may still ask for a path.
//
// Whatever has no destructor needs no order, and stands with its topic: the find-file cache, which
// is released here; the executable's path, which stays in the process for those who keep it; the
// stream of the GUI profile, which is its host's to close; the name of the base locale, which is
// its host's to set; what the environment said at the first call of gen_is_system_64bit; and what
// loading finds out about the processor and valgrind, which checksums and comparisons go by.

#include "gen_load.h"

#include "gen_localization_base.h"
#include "gen_owned.h"
#include "gen_path_cache.h"
#include "gen_state.h"
#include "mem.h"

#include <ios>

namespace {
/// Outlives whatever is charged to it.
MEM_INITIALIZER const owner("GEN");
/// A host whose sources only declare the standard streams can use them.
std::ios_base::Init const standard_streams;
} // namespace

BaseLocale const no_base_locale;
MEM_LIST<BaseLocale> base_locales;

STR gen_project_dir_path;
STR gen_korvane_library_paths;
STR gen_project_library_paths;
STR gen_user_library_paths;
STR gen_project_output_directory;
STR gen_pdb_directory;

FIO_FIND* gen_project_directory_fio_find = nullptr;
FIO_FIND* gen_project_db_directory_fio_find = nullptr;
FIO_FIND* gen_project_parablocks_fio_find = nullptr;
FIO_FIND* gen_project_libraries = nullptr;
FIO_FIND* gen_ini_user_libraries = nullptr;
FIO_FIND* gen_korvane_libraries = nullptr;
FIO_FIND* gen_korvane_eda_libraries = nullptr;
FIO_PATH* gen_project_parablocks_dir_path = nullptr;
FIO_PATH* db_dir_path = nullptr;
FIO_PATH* db_dir_full_name = nullptr;
MEM_VECTOR<STR>* gen_file_type_order = nullptr;

void gen_clear_all_library_paths() {
    gen_release_owned(gen_korvane_libraries);
    gen_release_owned(gen_project_parablocks_fio_find);
    gen_release_owned(gen_project_parablocks_dir_path);
    gen_release_owned(gen_korvane_eda_libraries);
    gen_release_owned(gen_ini_user_libraries);
    gen_release_owned(gen_project_libraries);
    gen_release_owned(gen_project_directory_fio_find);
    gen_release_owned(gen_project_db_directory_fio_find);
    gen_release_owned(gen_file_type_order);
    gen_release_owned(db_dir_path);
    gen_release_owned(db_dir_full_name);
}

namespace {

/// What start-up or a lookup left behind, and nothing else would take back.
struct Leftovers {
    Leftovers() {}
    ~Leftovers() {
        gen_destroy_find_file_cache();
        release_base_locales();
        // The memory library may outlive gen, and would call code that is gone.
        mem_set_gen_get_korvane_path_callback(nullptr);
        mem_set_gen_get_db_dir_path_string_callback(nullptr);
        mem_set_gen_is_in_ui_process_callback(nullptr);
        mem_set_gen_get_module_filename_callback(nullptr);
        mem_set_gen_get_project_output_directory_callback(nullptr);
    }
};

Leftovers const leftovers;
GEN_PATH_INITIALIZER const path_state;

} // namespace
