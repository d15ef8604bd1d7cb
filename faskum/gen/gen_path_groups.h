#pragma once

/// The groups of directories and the order in which every search walks them.

#include "gen_load.h"
#include "gen_path_library.h"

/// Calls @p visit(tag, search object) for each group that there is, until one call gives true.
/// Relative entries of libraries start at the project directory of this moment.
template <typename Visit>
void gen_visit_groups(Visit visit) {
    struct Group {
        GEN_LIBRARY_PATHS_ENUM tag;
        FIO_FIND* const& find;
        bool starts_at_project;
    };
    Group const groups[] = {
        {GEN_LIBRARY_PATHS_PROJECT_DIR, gen_project_directory_fio_find, false},
        {GEN_LIBRARY_PATHS_DB_DIR, gen_project_db_directory_fio_find, false},
        {GEN_LIBRARY_PATHS_PROJECT_LIBRARIES, gen_project_libraries, true},
        {GEN_LIBRARY_PATHS_USER_LIBRARIES, gen_ini_user_libraries, true},
        {GEN_LIBRARY_PATHS_KORVANE_LIBRARIES, gen_project_parablocks_fio_find, false},
        {GEN_LIBRARY_PATHS_KORVANE_LIBRARIES, gen_korvane_libraries, false},
    };
    for (auto const& [tag, find, starts_at_project] : groups) {
        if (find == nullptr)
            continue;
        if (starts_at_project)
            find->set_directory_for_results_to_become_absolute_to(gen_project_dir_path.c_str());
        if (visit(tag, *find))
            return;
    }
}
