#include "fio_file_system.h"
#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_exe.h"
#include "gen_iterator_sys.h"
#include "gen_path_install.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

using namespace gen_c;

namespace {

/// By gen_c_start. A host may have started gen by itself, which only gen_module_fullpath shows.
bool is_started = false;

bool is_directory(char const* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

/// The executable that a root stands for; it need not exist.
STR executable_below(char const* root) {
    char const* const platform = std::getenv("KORVANE_PLATFORM");
    char real[PATH_MAX];
    // ".." behind a symbolic link does not lead where the string alone says.
    STR directory =
        std::strstr(root, "..") != nullptr && realpath(root, real) != nullptr ? real : root;
    if (!directory.ends_with('/')) // "//" in front would be a network path
        directory += '/';
    FIO_PATH path(directory + (platform != nullptr ? platform : "linux") + "/korvane_gen");
    path.become_absolute("");
    return path.fullpath();
}

/// Where gen_exe_init would find the executable; "" where it would end the process.
STR executable_of(STR const& name) {
    if (name.find('/') != STR::npos && gen_file_exists(name))
        return name;
    STR const found = find_executable_in_path(FIO_PATH(name).filename());
    return gen_file_exists(found) ? found : STR(); // the last candidate, where there is none
}

/// Whether both are the same name in the same directory. The strings may differ: gen keeps the path
/// of its executable absolute, simplified, and by the real directory where ".." follows a link.
bool is_same_executable(STR const& one, STR const& other) {
    std::size_t const one_name = one.rfind('/') + 1;
    std::size_t const other_name = other.rfind('/') + 1;
    struct stat first;
    struct stat second;
    return one == other || (one.substr(one_name) == other.substr(other_name) &&
                            stat(one.substr(0, one_name).c_str(), &first) == 0 &&
                            stat(other.substr(0, other_name).c_str(), &second) == 0 &&
                            first.st_dev == second.st_dev && first.st_ino == second.st_ino);
}

} // namespace

gen_c_status gen_c_start(char const* root, char const* executable) {
    if ((root == nullptr) == (executable == nullptr))
        return refuse(GEN_C_BAD_ARGUMENT, "root and executable", ": one of them has to be null");
    if (root != nullptr && !is_directory(root))
        return refuse(GEN_C_NOT_FOUND, "root", " is no directory");
    STR const path = root != nullptr ? executable_below(root) : executable_of(executable);
    if (path.empty())
        return refuse(GEN_C_NOT_FOUND, "executable", " is not found");
    if (gen_module_fullpath != nullptr && !is_same_executable(path, gen_module_fullpath))
        return refuse(GEN_C_BAD_ARGUMENT, root != nullptr ? "root" : "executable",
                      " is another one than the process has started with");
    if (root != nullptr && gen_module_fullpath == nullptr) {
        // Never freed: the process is that executable for good.
        gen_module_fullpath = strdup(path.c_str());
        if (gen_module_fullpath == nullptr)
            return GEN_C_NO_MEMORY;
    }
    gen_exe_init(1, &executable);
    is_started = true;
    return GEN_C_OK;
}

int gen_c_is_started(void) {
    return is_started ? 1 : 0;
}

gen_c_status gen_c_finish(void) {
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    gen_exe_fini();
    is_started = false;
    return GEN_C_OK;
}

gen_c_status gen_c_where(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    return give_row({{"executable", gen_get_module_fullpath()},
                     {"module_path", gen_get_module_path()},
                     {"file_name", gen_get_module_filename()},
                     {"installation_root", gen_get_korvane_path()},
                     {"graphical_shell", gen_is_in_ui_process()}},
                    answer);
}

gen_c_status gen_c_installation(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    return give_row({{"root", gen_get_korvane_path()},
                     {"common_data", gen_get_common_data_fullpath()},
                     {"miscellaneous", gen_get_common_misc_fullpath()},
                     {"unshipped_data", gen_get_unshipped_data_fullpath()},
                     {"tcl_applications", gen_get_tcl_apps_fullpath()},
                     {"tcl_internal", gen_get_tcl_internal_fullpath()},
                     {"unshipped_tcl", gen_get_unshipped_tcl_fullpath()},
                     {"device_database", gen_get_device_db_fullpath()}},
                    answer);
}

gen_c_status gen_c_libraries(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    gen_c_table table{"library", "eda_only", "there", "directory"};
    GEN_ENUM_ITERATOR<GEN_LIBRARY_TYPE> type(GEN_LIB_ROOT,
                                             static_cast<GEN_LIBRARY_TYPE>(GEN_LIB_SIZE - 1));
    for (; !type.at_end(); ++type) {
        STR const directory = gen_get_library_path(*type);
        table.row({static_cast<int>(*type), gen_lib_is_for_eda_use_only(*type),
                   FIO_FILE_SYSTEM::exists(directory.c_str()), directory});
    }
    return give(std::move(table), answer);
}

gen_c_status gen_c_library(int library, gen_c_text* directory) {
    if (lacks("directory", directory))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    if (library < 0)
        return refuse(GEN_C_BAD_ARGUMENT, "library", " is negative");
    Reports const reports;
    STR const path = gen_get_library_path(static_cast<GEN_LIBRARY_TYPE>(library));
    return reports.status(put(directory, path));
}

gen_c_status gen_c_device_files(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    return give_list("name", gen_get_all_device_files(), answer);
}
