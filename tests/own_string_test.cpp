/// Arguments that are the library's own strings, or each other: every function takes them like
/// copies.

#include "environment.h"
#include "gen_exe.h"
#include "gen_legal.h"
#include "gen_meminfo.h"
#include "gen_os_info.h"
#include "gen_time_clock.h"
#include "in_child.h"
#include "mem.h"
#include "temp_directory.h"
#include "thr.h"
#include "ver.h"

#include <cstdlib>
#include <functional>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string messages;

int keep(char const*, char const* text) {
    messages += text;
    return 0;
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
