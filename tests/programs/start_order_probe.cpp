// Stands in for the operations of other libraries that start-up and shut-down call, and shows their
// order. The definitions here come before the libraries' own when gen's calls are bound.

#include "gen_exe.h"
#include "gen_path_project.h"
#include "mem.h"
#include "thr.h"
#include "ver.h"

#include <cstdio>
#include <cstdlib>
#include <ios>

namespace {

/// When gen is unloaded it withdraws what it registered.
bool is_withdrawn(char const* name, bool is_null) {
    if (is_null)
        std::printf("%s withdrawn\n", name);
    return is_null;
}

} // namespace

bool std::ios_base::sync_with_stdio(bool synchronized) {
    std::printf("sync_with_stdio %d\n", synchronized);
    return true;
}

void thr_drl_init(char const* module_fullpath) {
    std::printf("KORVANE_ROOTDIR %s\n", std::getenv("KORVANE_ROOTDIR"));
    std::printf("thr_drl_init %s\n", module_fullpath);
}

void thr_drl_fini() {
    std::puts("thr_drl_fini");
}

void ver_set_module_path(char const* directory) {
    std::printf("ver_set_module_path %s\n", directory);
}

void ver_cleanup() {
    std::puts("ver_cleanup");
}

void mem_set_gen_get_korvane_path_callback(STR (*callback)()) {
    if (!is_withdrawn("korvane_path", callback == nullptr))
        std::printf("korvane_path %s\n", callback().c_str());
}

void mem_set_gen_get_module_filename_callback(STR (*callback)()) {
    if (!is_withdrawn("module_filename", callback == nullptr))
        std::printf("module_filename %s\n", callback().c_str());
}

void mem_set_gen_get_db_dir_path_string_callback(STR (*callback)()) {
    if (!is_withdrawn("db_dir_path_string", callback == nullptr))
        std::printf("db_dir_path_string '%s'\n", callback().c_str());
}

void mem_set_gen_is_in_ui_process_callback(bool (*callback)()) {
    if (!is_withdrawn("is_in_ui_process", callback == nullptr))
        std::printf("is_in_ui_process %s\n", callback() ? "yes" : "no");
}

void mem_set_gen_get_project_output_directory_callback(char const* (*callback)()) {
    if (is_withdrawn("project_output_directory", callback == nullptr))
        return;
    bool const expected = callback == gen_get_project_output_directory;
    std::printf("project_output_directory %s\n", expected ? "registered" : "?");
}

GEN_DEFINE_MAIN(count, arguments) {
    std::printf("body %d %s\n", count, arguments[count - 1]);
    return 0;
}
