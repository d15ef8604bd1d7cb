// Asks the library for one thing between two marks in its trace of system calls, and once more
// behind them; prints what came of each, a line each. The system is to fail between the marks.
//
//     fault_probe                        names the things, a line each
//     fault_probe <thing> <directory>    asks for one, in that empty directory
//
// What depends on the machine or on the moment is shown as "known" or "none".

#include "fault_ground.h"
#include "fault_thing.h"
#include "fio.h"
#include "gen.h"
#include "mem.h"

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <unistd.h>

namespace {

std::string number(bool (*request)(int*)) {
    int number = 0;
    return !request(&number) ? "failed" : number > 0 ? "known" : "none";
}

std::string bytes(bool (*request)(unsigned long long*)) {
    unsigned long long bytes = 77;
    return !request(&bytes) ? "failed" : bytes == 77 ? "untouched" : "known";
}

std::string system_name(bool (*request)(STR*)) {
    STR text;
    return request(&text) ? known(text) : "failed";
}

int messages = 0;

int count_message(char const*, char const*) {
    return ++messages;
}

std::string names_found(char const* pattern) {
    std::string names;
    _finddata_t found;
    long const search = FIO_FILE_SYSTEM::findfirst(pattern, &found);
    if (search == -1)
        return "none";
    do
        names += std::string(found.name) + " " + std::to_string(found.size) + " ";
    while (FIO_FILE_SYSTEM::findnext(search, &found) == 0);
    FIO_FILE_SYSTEM::findclose(search);
    return names;
}

std::string include_found() {
    STR path;
    return gen_find_include_file("x.h", at("elsewhere/top.v").c_str(), nullptr, &path, nullptr)
               ? shown(path)
               : "none";
}

std::string sources_found() {
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    gen_get_source_files("top", &candidates);
    std::string paths;
    for (auto const& [group, path] : candidates)
        paths += shown(path) + " ";
    return paths;
}

std::string devices_found() {
    std::string names;
    for (STR const& name : gen_get_all_device_files())
        names += shown(name) + " ";
    return names;
}

std::string path_list_entries() {
    std::string entries;
    FIO_FIND const find("here; \"there\"");
    for (FIO_PATH const& directory : find.directories())
        entries += shown(directory) + " ";
    return entries;
}

std::string results_found() {
    MEM_LIST<FIO_PATH> results;
    FIO_FIND("../project").find_all("top", {"v", "vhd"}, &results, true, true);
    std::string paths;
    for (FIO_PATH const& path : results)
        paths += shown(path) + " ";
    return paths;
}

std::string absolute(char const* base) {
    FIO_PATH path("a/../b.v");
    path.become_absolute(base);
    return shown(path);
}

std::string search_paths() {
    STR old_path;
    STR old_library_path;
    bool const changed = gen_set_paths_for_64bit("tool", old_path, old_library_path);
    if (changed)
        gen_restore_paths(old_path, old_library_path);
    return shown(changed);
}

std::string reported(STR const& answer, int reports_before) {
    return known(answer) + (reports() > reports_before ? ", reported" : "");
}

Thing report() {
    for (char const* name : {"profile_dll_usage", "list_dll_details", "report_modules_flow"})
        mem_cfg_set(name, true);
    mem_msg_set_sink(count_message);
    return answer_of([] {
        messages = 0;
        gen_meminfo_report_dll_usage("tag", "phase");
        return std::to_string(messages) + " lines";
    });
}

Thing start() {
    gen_module_fullpath = nullptr;
    write(at("korvane/linux/tool"));
    static std::string const tool = at("korvane/linux/tool");
    return answer_of([] {
        char const* arguments[] = {tool.c_str(), nullptr};
        gen_exe_init(1, arguments);
        return std::string(gen_module_fullpath);
    });
}

Thing locale() {
    LOCALIZATION_BASE_STRING = "C.UTF-8";
    return answer_of([] {
        int const before = reports();
        std::string const answer =
            shown(gen_local_isalpha('a') != 0 && gen_local_isalpha('1') == 0);
        return answer + (reports() > before ? ", reported" : "");
    });
}

Thing debug_break() {
    mem_cfg_set("dont_catch_all_exceptions", true);
    return answer_of([] { return gen_debug_break(true), std::string("went on"); });
}

using Machine = GEN_MACHINE_INFO;

std::map<std::string, std::function<Thing()>> const things{
    {"absolute", [] { return answer_of([] { return absolute(""); }); }},
    {"address", [] { return answer_of([] { return known(gen_get_ip_addr("localhost")); }); }},
    {"available", [] { return answer_of([] { return bytes(Machine::get_available_ram); }); }},
    {"break", debug_break},
    {"cached",
     [] { return answer_of([] { return shown(gen_find_file_cache_assisted("top.v")); }); }},
    {"commit", commit},
    {"cpu",
     [] { return answer_of([] { return shown(GEN_STOPWATCH::get_cpu_seconds_elapsed() >= 0); }); }},
    {"create",
     [] {
         return answer_of([] { return shown(FIO_FILE_SYSTEM::create(fresh("new") + "/deep")); });
     }},
    {"current",
     [] { return answer_of([] { return shown(FIO_FILE_SYSTEM::get_current_directory()); }); }},
    {"date", [] { return answer_of([] { return known(gen_get_current_date_and_time(0)); }); }},
    {"devices", [] { return answer_of(devices_found); }},
    {"eda", [] { return answer_of([] { return shown(gen_find_eda_file("cell.v")); }); }},
    {"executable", [] { return answer_of([] { return shown(find_executable_in_path("tool")); }); }},
    {"exists",
     [] { return answer_of([] { return shown(FIO_FILE_SYSTEM::exists("../project")); }); }},
    {"file",
     [] { return answer_of([] { return shown(gen_file_exists(text_at("project/top.v"))); }); }},
    {"find", [] { return answer_of([] { return shown(gen_find_file("top.v")); }); }},
    {"find_all", [] { return answer_of(results_found); }},
    {"findfirst", [] { return answer_of([] { return names_found("../project/*.v"); }); }},
    {"flags", flags},
    {"frequency", [] { return answer_of([] { return number(Machine::get_cpu_frequency); }); }},
    {"host_name",
     [] {
         return answer_of([] {
             int const before = reports();
             return reported(gen_get_host_name(), before);
         });
     }},
    {"include", [] { return answer_of(include_found); }},
    {"locale", locale},
    {"output", output},
    {"path_list", [] { return answer_of(path_list_entries); }},
    {"physical", [] { return answer_of([] { return bytes(Machine::get_physical_ram); }); }},
    {"priority",
     [] { return answer_of([] { return gen_lower_process_priority(), std::string("went on"); }); }},
    {"processors", [] { return answer_of([] { return number(Machine::get_cpu_count); }); }},
    {"profile", profile},
    {"project",
     [] {
         return answer_of([] {
             gen_clear_all_library_paths();
             gen_find_file("top.v");
             return shown(gen_get_project_dir_path());
         });
     }},
    {"report", report},
    {"search_paths", [] { return answer_of(search_paths); }},
    {"sources", [] { return answer_of(sources_found); }},
    {"standard_error", standard_error},
    {"start", start},
    {"system_names", [] { return answer_of([] { return system_name(Machine::get_os_version); }); }},
    {"temp_file", temp_file},
    {"temp_path",
     [] {
         return answer_of([] {
             int const before = reports();
             return reported(gen_get_temp_path(), before);
         });
     }},
    {"ticks", [] { return answer_of([] { return gen_get_tick_count(), std::string("done"); }); }},
    {"total", [] { return answer_of([] { return bytes(Machine::get_total_ram); }); }},
    {"touch",
     [] { return answer_of([] { return shown(FIO_FILE_SYSTEM::touch(fresh("file"))); }); }},
    {"try_commit", try_commit},
    {"usage", [] { return answer_of([] { return bytes(Machine::get_total_usage_ram); }); }},
    {"user",
     [] {
         return answer_of([] {
             int const before = reports();
             return reported(gen_get_user_name(), before);
         });
     }},
    {"user_profile",
     [] { return answer_of([] { return shown(gen_get_user_profile_directory()); }); }},
    {"virtual", [] { return answer_of([] { return bytes(Machine::get_virtual_ram); }); }},
    {"working_set",
     [] {
         return answer_of([] {
             return mem_info_get_working_set_size() != 0 &&
                            mem_info_get_working_set_peak_size() != 0
                        ? std::string("known")
                        : std::string("none");
         });
     }},
};

/// Leaves a line in the trace. The library could not make the call itself, and no write
/// fails.
void leave(std::string const& text) {
    static_cast<void>(access(text.c_str(), X_OK));
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        for (auto const& [name, make] : things)
            std::printf("%s\n", name.c_str());
        return 0;
    }
    prepare_ground(argv[2]);
    Thing const thing = things.at(argv[1])();
    leave("/mark");
    thing.ask();
    leave("/mark");
    leave("/result/" + thing.result());
    thing.ask();
    leave("/result/" + thing.result());
    return 0;
}
