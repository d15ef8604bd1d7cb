#include "fio_file_system.h"
#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_exe.h"
#include "gen_iterator_sys.h"
#include "gen_path_install.h"

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
STR executable_below(STR root) {
    char const* const platform = std::getenv("KORVANE_PLATFORM");
    FIO_PATH path(root + "/" + (platform != nullptr ? platform : "linux") + "/korvane_gen");
    path.become_absolute("");
    return path.fullpath();
}

/// Where gen_exe_init would find the executable; "" where it would end the process.
STR executable_of(STR const& name) {
    bool const is_named = name.find('/') != STR::npos && gen_file_exists(name);
    FIO_PATH path(is_named ? name : find_executable_in_path(FIO_PATH(name).filename()));
    if (!path.fullpath().empty())
        path.become_absolute("");
    return path.fullpath();
}

/// The process is that executable for good, so the text of one that a root stands for is never
/// freed.
void record(char const* executable, STR const& path) {
    if (executable == nullptr && gen_module_fullpath == nullptr)
        gen_module_fullpath = strdup(path.c_str());
    char const* arguments[] = {executable != nullptr ? executable : path.c_str(), nullptr};
    gen_exe_init(1, arguments);
    is_started = true;
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
    if (gen_module_fullpath != nullptr && path != gen_module_fullpath)
        return refuse(GEN_C_BAD_ARGUMENT, root != nullptr ? "root" : "executable",
                      " is another one than the process has started with");
    record(executable, path);
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
