#include "allocation_ground.h"

#include "gen_exe.h"
#include "gen_path.h"
#include "gen_string_number.h"
#include "mem.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Ground {
    Ground() {
        for (char const* const file :
             {"korvane/linux/tool", "korvane/linux/a_module_of_the_suite.dll",
              "korvane/linux/a_device_of_the_suite.ddb", "korvane/linux64/fitter",
              "korvane/libraries/primitives/shipped_with_the_suite.v",
              "korvane/eda/sim_lib/an_eda_file_of_the_suite.v", "project/the_top_of_the_design.v",
              "project/the_top_of_the_design.vhd", "project/include/a_file_to_include.v",
              "library/a_name_in_the_library.v"})
            directory.write(file);
        directory.make_directory("written");
    }

    TempDirectory directory;
};

STR kept_messages;

int keep(char const* owner, char const* text) {
    kept_messages += owner;
    kept_messages += text;
    return 0;
}

} // namespace

TempDirectory const& ground() {
    static Ground const made;
    return made.directory;
}

STR at(char const* relative) {
    static STR const directory = library_string(ground().path()) + "/";
    return directory + relative;
}

void start() {
    static std::string module;
    module = ground() / "korvane/linux/tool";
    gen_module_fullpath = module.data();
    setenv("KORVANE_ROOTDIR", at("korvane/").c_str(), 1);
    fs::current_path(ground() / "written");
}

void open_project() {
    start();
    gen_set_project_dir_path(at("project"));
    gen_set_db_dir_path(at("written"));
    gen_set_project_library_paths(at("library") + ";../library");
    gen_set_user_library_paths(at("a_library_that_is_not_there"));
}

void clear_written() {
    for (fs::directory_entry const& entry : fs::directory_iterator(ground() / "written"))
        fs::remove_all(entry.path());
}

std::string written() {
    std::vector<std::string> files;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(ground() / "written"))
        files.push_back(entry.path().string() + "=" +
                        (entry.is_directory() ? "" : read_file(entry.path())));
    std::sort(files.begin(), files.end());
    std::string text;
    for (std::string const& file : files)
        text += file + "\n";
    return text;
}

void keep_debug_messages() {
    kept_messages.clear();
    mem_msg_set_sink(keep);
}

STR const& debug_messages() {
    return kept_messages;
}

STR shown(bool answer) {
    return answer ? "true" : "false";
}

STR shown(char const* text) {
    return text != nullptr ? text : "null";
}

STR shown(long number) {
    char digits[24];
    gen_ultoa(static_cast<unsigned long>(number), digits, 10);
    return digits;
}

STR shown(FIO_PATH const& path) {
    return path.fullpath();
}

STR shown(MEM_LIST<FIO_PATH> const* paths) {
    STR text;
    for (FIO_PATH const& path : *paths)
        text += path.fullpath() + ";";
    return text;
}

STR shown(MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates) {
    STR text;
    for (auto const& [group, path] : candidates)
        text += shown(long{group}) + path.fullpath() + ";";
    return text;
}
