/// Start-up, the process and its environment without memory.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "failing_heap.h"
#include "gen_exe.h"
#include "gen_meminfo.h"
#include "gen_os_info_paths.h"
#include "mem.h"
#include "thr.h"
#include "ver.h"

#include <cstdlib>

namespace {

/// The string without the name of this run's directory.
STR below_ground(STR text) {
    STR const directory = at("");
    for (std::size_t place = 0; (place = text.find(directory, place)) != text.npos;)
        text.erase(place, directory.size());
    return text;
}

// A variable that the C library has no memory to set is left as it was.
std::vector<Call> const calls = {
    {.name = "exe_init",
     .ask =
         [] {
             static STR const name = at("korvane/linux/tool");
             char const* argv[] = {name.c_str(), nullptr};
             gen_exe_init(1, argv);
             return below_ground(gen_get_module_fullpath() + shown(std::getenv("KORVANE_ROOTDIR")));
         },
     .prepare =
         [] {
             start();
             gen_module_fullpath = nullptr;
             unsetenv("KORVANE_ROOTDIR");
         },
     .lapse = "korvane/linux/toolnull"},
    {.name = "exe_init_by_path",
     .ask =
         [] {
             char const* argv[] = {"tool", nullptr};
             gen_exe_init(1, argv);
             return gen_get_module_fullpath() + mem_gen_get_korvane_path();
         },
     .prepare =
         [] {
             start();
             gen_module_fullpath = nullptr;
             setenv("PATH", ("/a/directory/that/is/not/there:" + at("korvane/linux")).c_str(), 1);
         }},
    {.name = "find_executable",
     .ask = [] { return find_executable_in_path("tool"); },
     .prepare =
         [] {
             start();
             setenv("PATH", at("korvane/linux").c_str(), 1);
         }},
    {.name = "module_fullpath", .ask = gen_get_module_fullpath, .prepare = start},
    {.name = "module_loading",
     .ask =
         [] {
             thr_drl_init("/the/path/of/an/executable");
             return shown(thr_drl_module_fullpath());
         }},
    {.name = "version_information",
     .ask =
         [] {
             ver_set_module_path("/the/directory/of/an/executable/");
             return shown(ver_module_path());
         }},
    {.name = "module_path", .ask = gen_get_module_path, .prepare = start},
    {.name = "module_filename",
     .ask = [] { return gen_get_module_filename() + STR(20, '.'); },
     .prepare = start},
    {.name = "korvane_path", .ask = gen_get_korvane_path, .prepare = start},
    {.name = "is_in_ui_process",
     .ask = [] { return shown(gen_is_in_ui_process()); },
     .prepare = start},
    {.name = "debug_message",
     .ask =
         [] {
             gen_mem_msg_debug("%s and %d", "a text that no string keeps within itself", 5);
             return debug_messages();
         },
     .prepare = keep_debug_messages},
    {.name = "set_paths_for_64bit",
     .ask =
         [] {
             STR path;
             STR library_path;
             bool const changed = gen_set_paths_for_64bit("fitter", path, library_path);
             return below_ground(shown(changed) + path + library_path + shown(std::getenv("PATH")) +
                                 shown(std::getenv("LD_LIBRARY_PATH")));
         },
     .prepare =
         [] {
             start();
             setenv("KORVANE_PLATFORM", "linux", 1);
             setenv("PATH", "/usr/bin:/bin", 1);
             unsetenv("LD_LIBRARY_PATH");
         },
     .lapse = "true/usr/bin:/binkorvane//linux64/:/usr/bin:/binnull"},
    {.name = "restore_paths",
     .ask =
         [] {
             gen_restore_paths("/a/path/of/some/length", "/another/path/of/some/length");
             return shown(std::getenv("PATH")) + shown(std::getenv("LD_LIBRARY_PATH"));
         },
     .prepare = [] { unsetenv("LD_LIBRARY_PATH"); },
     .lapse = "/a/path/of/some/lengthnull"},
    {.name = "set_switch",
     .ask =
         [] {
             mem_cfg_set("a_switch_of_some_length", true);
             return shown(mem_cfg_is_on("a_switch_of_some_length", false));
         },
     .prepare = [] { mem_cfg_unset("a_switch_of_some_length"); }},
    {.name = "meminfo_report",
     .ask =
         [] {
             gen_meminfo_report_dll_usage("fitter", "synthesis");
             return debug_messages();
         },
     .prepare =
         [] {
             start();
             keep_debug_messages();
             mem_cfg_set("profile_dll_usage", true);
             mem_cfg_set("list_dll_details", true);
         },
     .lapse = "GENNo *.dll files found!"},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Start, AllocationFailure, testing::ValuesIn(calls), call_name);

TEST(AllocationFailureLine, SaysHowLongTheStringOfAVariableIs) {
    auto const set_without_memory = [] {
        start_failing_heap(1, HeapFailure::one_and_all_after);
        gen_restore_paths("/a", "/b");
    };
    // "PATH=/a" and its terminator.
    EXPECT_EXIT(set_without_memory(), testing::ExitedWithCode(255),
                "^korvane: out of memory: 8 bytes for GEN ");
}
