#include "gen_exe.h"

#include "fio_path.h"
#include "gen_environment.h"
#include "gen_memory_watch.h"
#include "gen_path_project.h"
#include "mem.h"
#include "thr.h"
#include "ver.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ios>
#include <sys/stat.h>

char* gen_module_fullpath = nullptr;

namespace {

STR locate(STR const& name) {
    std::size_t const slash = name.rfind('/');
    if (slash == STR::npos)
        return find_executable_in_path(name);
    if (gen_file_exists(name))
        return name;
    return find_executable_in_path(name.substr(slash + 1));
}

/// Whether @p file is there but not under its simplified path: ".." behind a symbolic link
/// does not lead where the string alone says.
bool simplifying_misleads(STR const& file, STR const& simplified) {
    struct stat found;
    struct stat named;
    if (stat(file.c_str(), &found) != 0)
        return false;
    if (stat(simplified.c_str(), &named) != 0)
        return errno == ENOENT || errno == ENOTDIR;
    // GCOVR_EXCL_BR_START: in the tests both lie on one device
    return named.st_dev != found.st_dev || named.st_ino != found.st_ino;
    // GCOVR_EXCL_BR_STOP
}

/// @p file, which has a directory, with the real path of that; as it is where the system knows
/// none, as without a current directory.
STR with_real_directory(STR const& file) {
    std::size_t const slash = file.rfind('/');
    MemoryWatch const watch;
    char directory[PATH_MAX];
    if (realpath(file.substr(0, slash + 1).c_str(), directory) == nullptr)
        return file;
    STR path(directory);
    path += '/';
    return path.append(file, slash + 1);
}

STR absolute_path(STR const& file) {
    FIO_PATH path(file);
    path.become_absolute("");
    STR text =
        simplifying_misleads(file, path.fullpath()) ? with_real_directory(file) : path.fullpath();
    // A "/" too many in front means nothing to the system, but a network path to FIO_PATH.
    if (text.starts_with("//"))
        text.erase(text.begin());
    return text;
}

void record_module(char const* name) {
    STR const candidate = locate(name);
    if (candidate.empty()) {
        // The message is fixed, the missing closing quote included.
        std::fprintf(stderr, "Failed to find '%s\n", name);
        std::exit(-1);
    }
    STR const fullpath = absolute_path(candidate);
    std::size_t const size = fullpath.size() + 1;
    char* const kept = MEM_STL_ALLOCATOR<char>().allocate(size);
    std::memcpy(kept, fullpath.c_str(), size);
    gen_module_fullpath = kept;
}

} // namespace

void gen_exe_init(int /*argc*/, char const** argv) {
    std::ios_base::sync_with_stdio(true);
    if (gen_module_fullpath == nullptr)
        record_module(argv != nullptr && argv[0] != nullptr ? argv[0] : "");
    if (std::getenv("KORVANE_ROOTDIR") == nullptr)
        gen_set_variable("KORVANE_ROOTDIR", gen_get_korvane_path());
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
    return FIO_PATH(gen_get_module_fullpath()).full_directory();
}

STR gen_get_module_filename() {
    return FIO_PATH(gen_get_module_fullpath()).filename();
}

STR gen_get_korvane_path() {
    STR path = gen_get_module_path();
    // The "/" at its end goes, and then the name of the directory.
    std::size_t slash = path.rfind('/');
    if (slash != STR::npos) // GCOVR_EXCL_BR_LINE: a module path ends in "/"
        path.erase(slash);
    slash = path.rfind('/');
    if (slash != STR::npos)
        path.erase(slash + 1);
    return path;
}

bool gen_is_in_ui_process() {
    return FIO_PATH(gen_get_module_fullpath()).base() == ver_get_dravik_product_filename();
}
