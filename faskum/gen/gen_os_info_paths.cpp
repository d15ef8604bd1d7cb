#include "gen_os_info_paths.h"

#include "fio_file_system.h"
#include "gen_environment.h"
#include "gen_exe.h"

#include <cstdlib>
#include <cstring>

namespace {

/// Returns what the variable was.
STR put_in_front(char const* name, STR const& directory) {
    char const* const value = std::getenv(name);
    STR previous = value != nullptr ? value : "";
    gen_set_variable(name, directory + ":" + previous);
    return previous;
}

} // namespace

bool gen_is_system_64bit() {
    static bool const is_64bit = [] {
        char const* const type = std::getenv("KORVANE_BIT_TYPE");
        return type != nullptr && std::strncmp(type, "64", 2) == 0;
    }();
    return is_64bit;
}

bool gen_set_paths_for_64bit(STR const& exe_name, STR& old_path, STR& old_ld_library_path) {
    char const* const platform = std::getenv("KORVANE_PLATFORM");
    if (platform == nullptr)
        return false;
    // The root ends in "/" already; the doubled one has always been there, and stays.
    STR const directory = gen_get_korvane_path() + "/" + platform + "64/";
    if (!FIO_FILE_SYSTEM::exists(FIO_PATH(directory + exe_name)))
        return false;
    old_path = put_in_front("PATH", directory);
    old_ld_library_path = put_in_front("LD_LIBRARY_PATH", directory);
    return true;
}

void gen_restore_paths(STR const& path, STR const& ld_library_path) {
    gen_set_variable("PATH", path);
    gen_set_variable("LD_LIBRARY_PATH", ld_library_path);
}

bool gen_is_valid_web_browser() {
    return true;
}
