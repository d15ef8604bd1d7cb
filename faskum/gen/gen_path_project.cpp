#include "gen_path_project.h"

FIO_PATH* db_dir_path = nullptr;

STR gen_get_db_dir_path_string() {
    return db_dir_path != nullptr ? db_dir_path->fullpath() : STR();
}

char const* gen_get_project_output_directory() {
    STR const& directory =
        gen_project_output_directory.empty() ? gen_project_dir_path : gen_project_output_directory;
    return directory.c_str();
}
