#pragma once

#include "fio_file_system.h"
#include "gen_path_project.h"

/// Makes the current directory the project directory when none is set.
inline void gen_default_project_directory() {
    if (gen_project_directory_fio_find == nullptr)
        gen_set_project_dir_path(FIO_FILE_SYSTEM::get_current_directory());
}
