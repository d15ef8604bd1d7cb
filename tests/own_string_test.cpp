/// Arguments that are the library's own strings, or each other: every function takes them like
/// copies.

#include "environment.h"
#include "err_report.h"
#include "flag_recorder.h"
#include "gen_dyn_flag.h"
#include "gen_exe.h"
#include "gen_legal.h"
#include "gen_meminfo.h"
#include "gen_os_info.h"
#include "gen_path_project.h"
#include "gen_path_tools.h"
#include "gen_time_clock.h"
#include "gen_undo_redo.h"
#include "in_child.h"
#include "mem.h"
#include "temp_directory.h"
#include "thr.h"
#include "ver.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace {

std::string messages;

int keep(char const*, char const* text) {
    messages += text;
    return 0;
}

/// A sink that, as one does that opens a file of its own in the output directory, gives the project
/// another directory.
int keep_in_another_project(char const*, char const* text) {
    messages += text;
    STR(200, 'x').swap(gen_project_dir_path);
    return 0;
}

/// A handler that does.
void move_project(char const* condition, char const*, char const*, int) {
    keep_in_another_project("", condition);
}

/// A call in the two ways: with an argument of its own, and with one that is the library's.
struct Row {
    char const* name;
    std::function<std::string(bool own_string)> call;
};

std::ostream& operator<<(std::ostream& stream, Row const& row) {
    return stream << row.name;
}

/// The variables as a process of their own sees them afterwards.
std::string environment() {
    std::string seen;
    for (char const* const name : {"PATH", "LD_LIBRARY_PATH", "KORVANE_ROOTDIR"}) {
        char const* const value = std::getenv(name);
        seen += std::string(value != nullptr ? value : "(unset)") + "|";
    }
    return seen;
}

std::string const long_path = "/a/path/that/is/long/enough/to/lie/on/the/heap/linux/tool";

Row const rows[] = {
    {"gen_exe_init, again under its own path",
     [](bool own_string) {
         gen_module_fullpath = const_cast<char*>(long_path.c_str());
         char const* argv[] = {own_string ? gen_module_fullpath : long_path.c_str(), nullptr};
         gen_exe_init(1, argv);
         return std::string(gen_get_module_fullpath()) + environment();
     }},
    {"gen_exe_init, under a variable",
     [](bool own_string) {
         gen_module_fullpath = nullptr;
         setenv("KORVANE_DIR", "/nowhere", 1);
         setenv("TOOL", "tool", 1);
         unsetenv("PATH");
         char const* argv[] = {own_string ? std::getenv("TOOL") : "tool", nullptr};
         gen_exe_init(1, argv);
         return std::string(gen_get_module_fullpath());
     }},
    {"thr_drl_init",
     [](bool own_string) {
         thr_drl_init(long_path.c_str());
         thr_drl_init(own_string ? thr_drl_module_fullpath() : long_path.c_str());
         return std::string(thr_drl_module_fullpath());
     }},
    {"ver_set_module_path",
     [](bool own_string) {
         ver_set_module_path(long_path.c_str());
         ver_set_module_path(own_string ? ver_module_path() : long_path.c_str());
         return std::string(ver_module_path());
     }},
    {"gen_set_paths_for_64bit, name and old path",
     [](bool own_string) {
         STR exe_name = "fitter";
         STR old_path;
         STR old_library_path;
         bool const changed =
             gen_set_paths_for_64bit(exe_name, own_string ? exe_name : old_path, old_library_path);
         return std::to_string(static_cast<int>(changed)) + environment();
     }},
    {"gen_set_paths_for_64bit, name and old library path",
     [](bool own_string) {
         STR exe_name = "fitter";
         STR old_path;
         STR old_library_path;
         gen_set_paths_for_64bit(exe_name, old_path, own_string ? exe_name : old_library_path);
         return std::string(old_path) + std::string(own_string ? exe_name : old_library_path);
     }},
    {"gen_restore_paths",
     [](bool own_string) {
         STR const path(long_path);
         STR const same(long_path);
         gen_restore_paths(path, own_string ? path : same);
         return environment();
     }},
    {"gen_format_current_date_and_time",
     [](bool own_string) {
         STR text = "a format that is as long as its own result, %%";
         STR result;
         gen_format_current_date_and_time(own_string ? &text : &result, text.c_str());
         return std::string(own_string ? text : result);
     }},
    {"gen_format_elapsed_time",
     [](bool own_string) {
         static long const seconds = 86399;
         long const copy = seconds;
         return std::string(gen_format_elapsed_time(own_string ? seconds : copy));
     }},
    {"gen_get_legal_text",
     [](bool own_string) {
         std::string const line = GEN_LEGAL_BANNER_ARRAY[0];
         return std::string(
             gen_get_legal_text(own_string ? GEN_LEGAL_BANNER_ARRAY[0] : line.c_str()));
     }},
    {"gen_get_legal_text, after the copyright line",
     [](bool own_string) {
         std::string const line = ver_get_dravik_copyright_ascii();
         return std::string(
             gen_get_legal_text(own_string ? ver_get_dravik_copyright_ascii() : line.c_str()));
     }},
    {"gen_meminfo_report_dll_usage",
     [](bool own_string) {
         mem_cfg_set("profile_dll_usage", true);
         mem_msg_set_sink(keep);
         std::string const label = gen_module_fullpath;
         char const* const tag = own_string ? gen_module_fullpath : label.c_str();
         gen_meminfo_report_dll_usage(tag, tag);
         return messages;
     }},
    {"gen_meminfo_report_dll_usage, of a string that changes",
     [](bool own_string) {
         mem_cfg_set("profile_dll_usage", true);
         mem_cfg_set("report_modules_flow", true);
         mem_msg_set_sink(keep_in_another_project);
         gen_project_dir_path = long_path.c_str();
         char const* const label = own_string ? gen_project_dir_path.c_str() : long_path.c_str();
         gen_meminfo_report_dll_usage("", label);
         return messages.substr(0, messages.find(" at "));
     }},
    {"gen_generate_pdb_filename, of strings that change",
     [](bool own_string) {
         mem_msg_set_sink(keep_in_another_project);
         gen_project_dir_path = long_path.c_str();
         STR const copy = gen_project_dir_path;
         STR const& own = own_string ? gen_project_dir_path : copy;
         STR const path = gen_generate_pdb_filename(own, own, &own);
         return messages + std::string(path);
     }},
    {"GEN_DYN_FLAG_MANAGER, of a name that changes",
     [](bool own_string) {
         RecordingClearer clearer;
         GEN_DYN_FLAG_MANAGER manager(&clearer);
         STR const copy = long_path.c_str();
         auto const named = [&](int slot) {
             return slot == 9 ? copy : STR(std::to_string(slot).c_str());
         };
         for (int slot = 0; slot < 32; ++slot)
             manager.create_flag(named(slot).c_str());
         // A second flag of one name goes into a slot below it that was swept.
         manager.destroy_flag(GEN_DYN_FLAG(1U << 3));
         manager.destroy_flag(GEN_DYN_FLAG(1U << 7));
         manager.create_flag("swept");
         manager.create_flag(copy.c_str());
         gen_project_dir_path = copy;
         char const* const name = own_string ? gen_project_dir_path.c_str() : copy.c_str();
         err_set_internal_error_handler(move_project);
         unsigned const given = manager.create_flag(name).mask();
         return messages + std::to_string(given);
     }},
    {"GEN_UNDO_REDO_MGR",
     [](bool own_string) {
         TempDirectory const directory;
         gen_project_dir_path = (directory.path() + "/").c_str();
         STR const copy = gen_project_dir_path;
         STR const& own = own_string ? gen_project_dir_path : copy;
         GEN_UNDO_REDO_MGR manager;
         manager.start_new_file(own);
         manager.begin_section(own);
         manager.add_description(own);
         manager.add_undo_command(own, own);
         manager.add_redo_command(own, own);
         manager.end_section();
         manager.commit_file();
         std::string text = read_file(directory / "undo_redo.txt");
         for (std::size_t at = 0; (at = text.find(directory.path(), at)) != text.npos;)
             text.erase(at, directory.path().size());
         return text;
     }},
    {"gen_mem_msg_debug",
     [](bool own_string) {
         mem_msg_set_sink(keep);
         std::string const label = gen_module_fullpath;
         gen_mem_msg_debug("%s", own_string ? gen_module_fullpath : label.c_str());
         return messages;
     }},
};

class OwnString : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(OwnString, IsTakenLikeACopy) {
    TempDirectory const root;
    root.write("linux64/fitter");
    root.write("linux/module.dll");
    std::string const module = root / "linux/tool";
    auto const answer = [&](bool own_string) {
        return in_child([&] {
            setenv("KORVANE_PLATFORM", "linux", 1);
            setenv("PATH", "/bin:/usr/bin:/a/directory/of/some/length", 1);
            setenv("LD_LIBRARY_PATH", "/lib:/another/directory/of/some/length", 1);
            gen_module_fullpath = const_cast<char*>(module.c_str());
            return GetParam().call(own_string);
        });
    };
    std::string const wanted = answer(false);
    EXPECT_NE(wanted, "<died>");
    EXPECT_EQ(answer(true), wanted);
}

INSTANTIATE_TEST_SUITE_P(Frame, OwnString, testing::ValuesIn(rows));

TEST(OwnString, OneStringForBothOldPathsGetsTheSecond) {
    TempDirectory const root;
    root.write("linux64/fitter");
    std::string const module = root / "linux/tool";
    EXPECT_EQ(in_child([&] {
                  setenv("KORVANE_PLATFORM", "linux", 1);
                  setenv("PATH", "/bin", 1);
                  setenv("LD_LIBRARY_PATH", "/lib", 1);
                  gen_module_fullpath = const_cast<char*>(module.c_str());
                  STR old;
                  gen_set_paths_for_64bit("fitter", old, old);
                  return std::string(old);
              }),
              "/lib");
}
