#include "gen_path_project.h"

#include "fio_file_system.h"
#include "gen_owned.h"
#include "gen_path_default.h"
#include "gen_path_library.h"
#include "gen_path_slash.h"

#include <sys/stat.h>

char const GEN_DB_DIR_NAME[3] = "db";
char const GEN_PROJECT_PARABLOCKS_DIR_NAME[11] = "parablocks";

namespace {

FIO_PATH path_or_empty(FIO_PATH const* path) {
    return path != nullptr ? *path : FIO_PATH();
}

/// Whether the file system calls the string without its last character a directory. The bit is
/// tested alone, as it always was: block devices and sockets carry it too.
bool is_directory_without_last_character(STR const& string) {
    constexpr unsigned directory_bit = 0x4000;
    STR const path = string.substr(0, string.size() - 1);
    struct stat status;
    return stat(path.c_str(), &status) == 0 && (status.st_mode & directory_bit) != 0;
}

/// Whether it exists, once it has been created if need be.
bool is_there_or_created(STR const& directory) {
    FIO_PATH const path(directory);
    if (FIO_FILE_SYSTEM::exists(path))
        return true;
    FIO_FILE_SYSTEM::create(directory);
    return FIO_FILE_SYSTEM::exists(path);
}

bool is_output_directory_usable() {
    return !gen_project_output_directory.empty() &&
           is_there_or_created(gen_project_output_directory) &&
           is_directory_without_last_character(gen_project_output_directory);
}

} // namespace

void gen_default_project_directory() {
    if (gen_project_directory_fio_find == nullptr)
        gen_set_project_dir_path(FIO_FILE_SYSTEM::get_current_directory());
}

void gen_set_project_dir_path(STR dir) {
    FIO_PATH path;
    path.cd(std::move(dir));
    gen_project_dir_path = path.fullpath();
    gen_init_project_parablocks_path(path);
    gen_set_fio_find_library_paths_helper(gen_project_dir_path, &gen_project_directory_fio_find);
}

STR gen_get_project_dir_path() {
    return gen_project_dir_path;
}

void gen_init_project_parablocks_path(FIO_PATH const& project_dir) {
    STR directory = project_dir.fullpath();
    gen_end_with_slash(directory);
    directory += GEN_PROJECT_PARABLOCKS_DIR_NAME;
    directory += '/';
    gen_replace_owned(gen_project_parablocks_dir_path, directory);
    gen_set_fio_find_library_paths_helper(directory, &gen_project_parablocks_fio_find);
}

FIO_PATH gen_get_project_parablocks_dir_path() {
    return path_or_empty(gen_project_parablocks_dir_path);
}

FIO_FIND* gen_get_project_parablocks_fio_find() {
    return gen_project_parablocks_fio_find;
}

void gen_set_db_dir_path(STR dir) {
    gen_replace_owned(db_dir_path, dir);
    gen_set_fio_find_library_paths_helper(db_dir_path->fullpath(),
                                          &gen_project_db_directory_fio_find);
}

FIO_PATH gen_get_db_dir_path() {
    return path_or_empty(db_dir_path);
}

STR gen_get_db_dir_path_string() {
    return db_dir_path != nullptr ? db_dir_path->fullpath() : STR();
}

bool gen_check_db_dir_path() {
    return db_dir_path != nullptr;
}

void gen_set_db_dir_full_name(FIO_PATH p) {
    gen_replace_owned(db_dir_full_name, std::move(p));
}

FIO_PATH gen_get_db_dir_full_name() {
    return path_or_empty(db_dir_full_name);
}

void gen_set_project_output_directory(char const* dir) {
    if (dir == nullptr || *dir == '\0') {
        gen_project_output_directory.clear();
        return;
    }
    FIO_PATH path;
    path.cd(dir);
    path.become_absolute("");
    gen_project_output_directory = path.fullpath();
}

char const* gen_get_project_output_directory() {
    if (is_output_directory_usable())
        return gen_project_output_directory.c_str();
    gen_default_project_directory();
    return gen_project_dir_path.c_str();
}
