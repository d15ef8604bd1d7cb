// A host as any other: shows what start-up left behind, one "name=value" a line.
//   start_probe             the answers after start-up
//   start_probe again       the answers after a second start-up under another name
//   start_probe status N    ends with that exit status

#include "gen_exe.h"
#include "mem.h"
#include "thr.h"
#include "ver.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

void show(char const* name, char const* value) {
    std::printf("%s=%s\n", name, value != nullptr ? value : "(none)");
}

void show_all() {
    show("gen_module_fullpath", gen_module_fullpath);
    show("module_fullpath", gen_get_module_fullpath().c_str());
    show("module_path", gen_get_module_path().c_str());
    show("module_filename", gen_get_module_filename().c_str());
    show("korvane_path", gen_get_korvane_path().c_str());
    show("ui", gen_is_in_ui_process() ? "yes" : "no");
    show("KORVANE_ROOTDIR", std::getenv("KORVANE_ROOTDIR"));
    show("thr", thr_drl_module_fullpath());
    show("ver", ver_module_path());
    show("mem.korvane_path", mem_gen_get_korvane_path().c_str());
    show("mem.module_filename", mem_gen_get_module_filename().c_str());
    show("mem.db_dir", mem_gen_get_db_dir_path_string().c_str());
    show("mem.ui", mem_gen_is_in_ui_process() ? "yes" : "no");
    show("mem.output_directory", mem_gen_get_project_output_directory());
}

/// The string of the first start-up, which nobody frees, for whoever looks for lost blocks.
char const* volatile first_root = nullptr;

void start_again() {
    first_root = std::getenv("KORVANE_ROOTDIR");
    unsetenv("KORVANE_ROOTDIR");
    gen_exe_fini();
    mem_set_gen_get_korvane_path_callback(nullptr);
    mem_set_gen_get_module_filename_callback(nullptr);
    mem_set_gen_get_db_dir_path_string_callback(nullptr);
    mem_set_gen_is_in_ui_process_callback(nullptr);
    mem_set_gen_get_project_output_directory_callback(nullptr);
    char const* other[] = {"/gone/other", nullptr};
    gen_exe_init(1, other);
}

} // namespace

GEN_DEFINE_MAIN(argc, argv) {
    std::string_view const what = argc > 1 ? argv[1] : "";
    if (what == "status")
        return std::atoi(argv[2]);
    if (what == "again")
        start_again();
    show_all();
    return 0;
}
