// An executable that forgot GEN_DEFINE_MAIN and asks for one answer about its location.

#include "gen_exe.h"

#include <cstdio>
#include <string_view>

int main(int, char** argv) {
    std::string_view const request = argv[1];
    if (request == "fullpath")
        gen_get_module_fullpath();
    else if (request == "path")
        gen_get_module_path();
    else if (request == "filename")
        gen_get_module_filename();
    else if (request == "korvane_path")
        gen_get_korvane_path();
    else if (request == "ui")
        gen_is_in_ui_process();
    std::puts("went on");
    return 0;
}
