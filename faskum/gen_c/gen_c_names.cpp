// Names of files, and the environment, which the 64-bit tools are put into.

#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_os_info_paths.h"
#include "gen_path_temp.h"
#include "gen_path_tools.h"
#include "temporary_file.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

using namespace gen_c;

gen_c_status gen_c_tool_files(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    gen_c_table table{"family", "function", "path"};
    for (auto const& [family, function, path] : gen_get_tool_files())
        table.row({family, function, path.fullpath()});
    return give(std::move(table), answer);
}

gen_c_status gen_c_database_file(char const* name, char const* extension, gen_c_text* path) {
    if (lacks("name", name) || lacks("extension", extension) || lacks("path", path))
        return GEN_C_BAD_ARGUMENT;
    return put(path, gen_generate_pdb_filename(name, extension, nullptr));
}

gen_c_status gen_c_temporary_file(char const* directory, char const* prefix, int number,
                                  gen_c_text* path) {
    if (lacks("prefix", prefix) || lacks("path", path))
        return GEN_C_BAD_ARGUMENT;
    if (std::strchr(prefix, '/') != nullptr)
        return refuse(GEN_C_BAD_ARGUMENT, "prefix", " contains a \"/\"");
    if (number < 0 || number > 65535)
        return refuse(GEN_C_BAD_ARGUMENT, "number", " is not from 0 to 65535");
    Reports const reports;
    STR const place = directory != nullptr ? STR(directory) : gen_get_temp_path();
    // Before gen is asked, which would go on trying.
    if (STR const trouble = trouble_of_temporary_file(place, prefix); !trouble.empty())
        return refuse(GEN_C_FAILED, "no file can be created in " + place + ": ", trouble);
    STR const made = gen_get_temp_filename(place, prefix, static_cast<unsigned short>(number));
    gen_c_status const status = put(path, made);
    if (status != GEN_C_OK) // nobody knows of the file
        unlink(made.c_str());
    return reports.status(status);
}

gen_c_status gen_c_profile_directory(gen_c_text* path) {
    if (lacks("path", path))
        return GEN_C_BAD_ARGUMENT;
    STR const directory = gen_get_user_profile_directory();
    return directory.empty() ? refuse(GEN_C_FAILED, "HOME", " has no place for the user's settings")
                             : put(path, directory);
}

gen_c_status gen_c_is_64bit_wanted(int* wanted) {
    if (lacks("wanted", wanted))
        return GEN_C_BAD_ARGUMENT;
    *wanted = gen_is_system_64bit() ? 1 : 0;
    return GEN_C_OK;
}

gen_c_status gen_c_enter_64bit(char const* tool, gen_c_text* old_path,
                               gen_c_text* old_library_path) {
    if (lacks("tool", tool) || lacks("old_path", old_path) ||
        lacks("old_library_path", old_library_path))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    STR path;
    STR library_path;
    if (!gen_set_paths_for_64bit(tool, path, library_path))
        return GEN_C_NOT_FOUND;
    gen_c_status const status = put_both(old_path, path, old_library_path, library_path);
    if (status != GEN_C_OK) // who would bring them back?
        gen_restore_paths(path, library_path);
    return status;
}

gen_c_status gen_c_leave_64bit(char const* path, char const* library_path) {
    if (lacks("path", path) || lacks("library_path", library_path))
        return GEN_C_BAD_ARGUMENT;
    gen_restore_paths(path, library_path);
    return GEN_C_OK;
}

gen_c_status gen_c_environment(char const* name, gen_c_text* value) {
    if (lacks("name", name) || lacks("value", value))
        return GEN_C_BAD_ARGUMENT;
    char const* const text = std::getenv(name);
    return text != nullptr ? put(value, text) : GEN_C_NOT_FOUND;
}
