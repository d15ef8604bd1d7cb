#pragma once

/// The groups of directories and the order in which every search walks them.

#include "gen_load.h"
#include "gen_path_library.h"

/// The search object of library paths, its relative entries starting at the project directory of
/// this moment.
inline FIO_FIND* gen_starting_at_project(FIO_FIND* libraries) {
    if (libraries != nullptr)
        libraries->set_directory_for_results_to_become_absolute_to(gen_project_dir_path.c_str());
    return libraries;
}

/// Calls @p visit(tag, search object) for each group that there is, until one call gives true.
template <typename Visit>
void gen_visit_groups(Visit visit) {
    auto const ends_at = [&visit](GEN_LIBRARY_PATHS_ENUM tag, FIO_FIND* find) {
        return find != nullptr && visit(tag, *find);
    };
    // clang-format off
    static_cast<void>(
        ends_at(GEN_LIBRARY_PATHS_PROJECT_DIR, gen_project_directory_fio_find) ||
        ends_at(GEN_LIBRARY_PATHS_DB_DIR, gen_project_db_directory_fio_find) ||
        ends_at(GEN_LIBRARY_PATHS_PROJECT_LIBRARIES, gen_starting_at_project(gen_project_libraries)) ||
        ends_at(GEN_LIBRARY_PATHS_USER_LIBRARIES, gen_starting_at_project(gen_ini_user_libraries)) ||
        ends_at(GEN_LIBRARY_PATHS_KORVANE_LIBRARIES, gen_project_parablocks_fio_find) ||
        ends_at(GEN_LIBRARY_PATHS_KORVANE_LIBRARIES, gen_korvane_libraries));
    // clang-format on
}
