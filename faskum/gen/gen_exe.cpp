#include "gen_exe.h"

#include "fio_file_system.h"
#include "fio_path.h"
#include "gen_path_project.h"
#include "mem.h"
#include "thr.h"
#include "ver.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ios>
#include <string_view>
#include <sys/stat.h>

char* gen_module_fullpath = nullptr;

namespace {

constexpr std::string_view root_variable_start = "KORVANE_ROOTDIR=";

/// putenv keeps the pointer, and the environment is read long after the library has been unloaded:
/// the buffer is the process's, made once and never freed.
constexpr std::size_t root_variable_size = 1024;
char* root_variable = nullptr;

char* allocate_for_good(std::size_t size) {
    return MEM_STL_ALLOCATOR<char>().allocate(size);
}

STR locate(STR const& name) {
    std::size_t const slash = name.rfind('/');
    if (slash == STR::npos)
        return find_executable_in_path(name);
    if (gen_file_exists(name))
        return name;
    return find_executable_in_path(name.substr(slash + 1));
}

// Whether a file is there, and not (or not the same) under the simplified text of its path: ".."
// behind a symbolic link does not lead where the text alone says.
bool simplifying_misleads(STR const& file, STR const& simplified) {
    struct stat there;
    struct stat here;
    if (file.find("..") == STR::npos || stat(file.c_str(), &there) != 0)
        return false;
    return stat(simplified.c_str(), &here) != 0 || here.st_dev != there.st_dev ||
           here.st_ino != there.st_ino;
}

STR absolute_path(STR const& file) {
    FIO_PATH path(file);
    path.become_absolute("");
    if (!simplifying_misleads(file, path.fullpath()))
        return path.fullpath();
    return FIO_PATH(file).absolute() ? file : FIO_FILE_SYSTEM::get_current_directory() + "/" + file;
}

void record_module(char const* name) {
    STR const candidate = locate(name);
    if (candidate.empty()) {
        // The text is fixed, the missing closing quote included.
        std::fprintf(stderr, "Failed to find '%s\n", name);
        std::exit(-1);
    }
    STR const fullpath = absolute_path(candidate);
    std::size_t const size = fullpath.size() + 1;
    char* const text = allocate_for_good(size);
    std::memcpy(text, fullpath.c_str(), size);
    gen_module_fullpath = text;
}

void set_root_variable() {
    STR const root = gen_get_korvane_path();
    if (root_variable_start.size() + root.size() >= root_variable_size)
        return;
    if (root_variable == nullptr)
        root_variable = allocate_for_good(root_variable_size);
    std::memcpy(root_variable, root_variable_start.data(), root_variable_start.size());
    std::memcpy(root_variable + root_variable_start.size(), root.c_str(), root.size() + 1);
    if (putenv(root_variable) != 0)
        MEM_MANAGER::fail(root_variable_size, nullptr, "GEN");
}

} // namespace

void gen_exe_init(int /*argc*/, char const** argv) {
    std::ios_base::sync_with_stdio(true);
    if (gen_module_fullpath == nullptr)
        record_module(argv != nullptr && argv[0] != nullptr ? argv[0] : "");
    if (std::getenv("KORVANE_ROOTDIR") == nullptr)
        set_root_variable();
    thr_drl_init(gen_get_module_fullpath().c_str());
    ver_set_module_path(gen_get_module_path().c_str());
    mem_set_gen_get_korvane_path_callback(gen_get_korvane_path);
    mem_set_gen_get_db_dir_path_string_callback(gen_get_db_dir_path_string);
    mem_set_gen_is_in_ui_process_callback(gen_is_in_ui_process);
    mem_set_gen_get_module_filename_callback(gen_get_module_filename);
    mem_set_gen_get_project_output_directory_callback(gen_get_project_output_directory);
}

void gen_exe_fini() {
    ver_cleanup();
    thr_drl_fini();
}

STR gen_get_module_fullpath() {
    if (gen_module_fullpath == nullptr) {
        std::fputs("Executable was not properly initialized with gen_exe_init!\n"
                   "Check that the executable's main() is defined using GEN_DEFINE_MAIN\n",
                   stderr);
        std::exit(-1);
    }
    return gen_module_fullpath;
}

STR gen_get_module_path() {
    FIO_PATH path(gen_get_module_fullpath());
    path.filename("");
    return path.fullpath();
}

STR gen_get_module_filename() {
    return FIO_PATH(gen_get_module_fullpath()).filename();
}

STR gen_get_korvane_path() {
    STR path = gen_get_module_path();
    std::size_t slash = path.rfind('/');
    if (slash != STR::npos)
        path.erase(slash);
    slash = path.rfind('/');
    if (slash != STR::npos)
        path.erase(slash + 1);
    return path;
}

bool gen_is_in_ui_process() {
    return FIO_PATH(gen_get_module_fullpath()).base() == ver_get_dravik_product_filename();
}
