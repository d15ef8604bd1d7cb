#include "gen_path_library.h"

#include "gen_path_project.h"

void gen_clear_all_library_paths() {
    delete db_dir_path;
    db_dir_path = nullptr;
}
