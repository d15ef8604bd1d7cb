#include "usage_report.h"

#include "environment.h"
#include "gen_exe.h"
#include "mem.h"

#include <gtest/gtest.h>
#include <utility>

TEST(UsageReport, SwitchesAreAsTheyWereBehindIt) {
    char executable[] = "/korvane/linux/tool";
    char* const previous = std::exchange(gen_module_fullpath, executable);
    ScopedVariable const variable("KORVANE_CFG", "report_modules_flow");
    mem_cfg_set("profile_dll_usage", false);
    EXPECT_EQ(usage_report("tag", nullptr, {true, true, true}).size(), 2U);
    setenv("KORVANE_CFG", "profile_dll_usage,list_dll_details", 1);
    EXPECT_FALSE(mem_cfg_is_on("profile_dll_usage", true)); // the host has said so
    EXPECT_TRUE(mem_cfg_is_on("list_dll_details", false));  // nobody has
    EXPECT_FALSE(mem_cfg_is_on("report_modules_flow", false));
    mem_cfg_unset("profile_dll_usage");
    setenv("KORVANE_CFG", "profile_dll_usage=off", 1);
    EXPECT_EQ(usage_report("tag", nullptr, {true, false, false}).size(), 1U);
    setenv("KORVANE_CFG", "profile_dll_usage", 1);
    EXPECT_TRUE(mem_cfg_is_on("profile_dll_usage", false)); // the variable is read anew
    gen_module_fullpath = previous;
}
