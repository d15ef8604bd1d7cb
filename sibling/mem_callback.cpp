#include "mem_callback.h"

namespace {

STR (*korvane_path)() = nullptr;
STR (*module_filename)() = nullptr;
STR (*db_dir_path_string)() = nullptr;
bool (*is_in_ui_process)() = nullptr;
char const* (*project_output_directory)() = nullptr;

} // namespace

void mem_set_gen_get_korvane_path_callback(STR (*callback)()) {
    korvane_path = callback;
}

void mem_set_gen_get_module_filename_callback(STR (*callback)()) {
    module_filename = callback;
}

void mem_set_gen_get_db_dir_path_string_callback(STR (*callback)()) {
    db_dir_path_string = callback;
}

void mem_set_gen_is_in_ui_process_callback(bool (*callback)()) {
    is_in_ui_process = callback;
}

void mem_set_gen_get_project_output_directory_callback(char const* (*callback)()) {
    project_output_directory = callback;
}

STR mem_gen_get_korvane_path() {
    return korvane_path != nullptr ? korvane_path() : STR();
}

STR mem_gen_get_module_filename() {
    return module_filename != nullptr ? module_filename() : STR();
}

STR mem_gen_get_db_dir_path_string() {
    return db_dir_path_string != nullptr ? db_dir_path_string() : STR();
}

bool mem_gen_is_in_ui_process() {
    return is_in_ui_process != nullptr && is_in_ui_process();
}

char const* mem_gen_get_project_output_directory() {
    return project_output_directory != nullptr ? project_output_directory() : nullptr;
}
