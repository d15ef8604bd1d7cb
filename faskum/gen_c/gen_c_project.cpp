#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_path_find.h"
#include "gen_path_project.h"
#include "gen_path_text.h"
#include "lookup_watch.h"

#include <iterator>

using namespace gen_c;

template <typename Set>
static gen_c_status set_text(char const* name, char const* text, Set set) {
    if (lacks(name, text))
        return GEN_C_BAD_ARGUMENT;
    set(text);
    return GEN_C_OK;
}

gen_c_status gen_c_set_project(char const* directory) {
    return set_text("directory", directory, gen_set_project_dir_path);
}

gen_c_status gen_c_set_database(char const* directory) {
    return set_text("directory", directory, gen_set_db_dir_path);
}

gen_c_status gen_c_set_output(char const* directory) {
    return set_text("directory", directory, gen_set_project_output_directory);
}

gen_c_status gen_c_set_project_libraries(char const* directories) {
    return set_text("directories", directories, gen_set_project_library_paths);
}

gen_c_status gen_c_set_user_libraries(char const* directories) {
    return set_text("directories", directories, gen_set_user_library_paths);
}

gen_c_status gen_c_project(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    // As a lookup does; gen's own function for it is private.
    if (gen_project_directory_fio_find == nullptr)
        gen_set_project_dir_path(FIO_FILE_SYSTEM::get_current_directory());
    return give_row({{"project", gen_get_project_dir_path()},
                     {"database", known(gen_get_db_dir_path_string())},
                     {"output", gen_get_project_output_directory()},
                     {"parablocks", gen_get_project_parablocks_dir_path().fullpath()},
                     {"project_library_paths", gen_get_project_library_paths()},
                     {"user_library_paths", gen_get_user_library_paths()}},
                    answer);
}

gen_c_status gen_c_directories(int group, gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (group < 0 || group >= static_cast<int>(std::size(lookup_groups)))
        return refuse(GEN_C_BAD_ARGUMENT, "group", " is none of the seven");
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    gen_init_korvane_lib_paths();
    gen_c_table table{"directory"};
    if (FIO_FIND const* const find = lookup_groups[group].find)
        for (FIO_PATH const& directory : find->directories())
            table.row({directory.fullpath()});
    return give(std::move(table), answer);
}

gen_c_status gen_c_relative_to_project(char const* path, gen_c_text* relative) {
    if (lacks("path", path) || lacks("relative", relative))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    // As gen does with a relative path, which may come out as it went in.
    FIO_PATH const given(path);
    STR const file = (given.absolute() ? given : gen_find_file(path)).fullpath();
    STR const seen = gen_get_relative_path_if_starts_with_project_dir(file.c_str());
    return seen == file ? GEN_C_NOT_FOUND : put(relative, seen);
}

gen_c_status gen_c_file_types(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    gen_c_table table{"extension"};
    for (STR const& extension : *gen_get_file_type_order_helper())
        table.row({extension});
    return give(std::move(table), answer);
}

gen_c_status gen_c_clear_paths(void) {
    gen_clear_all_library_paths();
    return GEN_C_OK;
}
