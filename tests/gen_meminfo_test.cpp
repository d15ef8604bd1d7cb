#include "gen_meminfo.h"

#include "environment.h"
#include "gen_exe.h"
#include "gen_time_clock.h"
#include "mem.h"
#include "system_trouble.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <cstring>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

namespace {

std::vector<std::string> lines;

int keep(char const* owner, char const* text) {
    lines.push_back(std::string(owner) + ": " + text);
    return 0;
}

/// An executable in a directory of its own, whose lines we get.
class MeminfoReport : public testing::Test {
  protected:
    MeminfoReport() {
        m_modules = m_directory.make_directory("linux");
        m_executable = m_modules + "/tool";
        gen_module_fullpath = m_executable.data();
        lines.clear();
    }
    ~MeminfoReport() override {
        if (m_loaded != nullptr)
            dlclose(m_loaded);
        for (char const* const name :
             {"profile_dll_usage", "list_dll_details", "report_modules_flow"})
            mem_cfg_unset(name);
        gen_module_fullpath = m_previous_module;
        mem_msg_set_sink(m_previous_sink);
    }

    void module(std::string const& name, std::size_t size) {
        m_directory.write("linux/" + name, std::string(size, 'm'));
    }
    /// A module that is really loaded; its size.
    int loaded_module(std::string const& name) {
        std::string const file = m_modules + "/" + name;
        std::filesystem::copy_file(TEST_LIBRARY_DIR "/libsystem_answers.so", file);
        m_loaded = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(m_loaded, nullptr) << dlerror();
        return static_cast<int>(std::filesystem::file_size(file));
    }

    static std::vector<std::string> report(std::initializer_list<char const*> switches,
                                           char const* tag = "fitter",
                                           char const* phase = "synthesis") {
        for (char const* const name : switches)
            mem_cfg_set(name, true);
        gen_meminfo_report_dll_usage(tag, phase);
        return lines;
    }

    TempDirectory m_directory;
    std::string m_modules;
    std::string m_executable;
    void* m_loaded = nullptr;
    char* m_previous_module = gen_module_fullpath;
    MEM_MSG_SINK m_previous_sink = mem_msg_set_sink(keep);
};

constexpr char memory_figures[] =
    "memory usage\\(bytes\\): transient [0-9]+ WS [0-9]+ WS Peak [0-9]+";
constexpr char any_date[] = "[A-Z][a-z][a-z] [A-Z][a-z][a-z] [ 0-9][0-9] [0-9:]+ [0-9]+";

auto memory_line(std::string const& labels) {
    return MatchesRegex("GEN: " + labels + " at " + any_date + " " + memory_figures);
}

} // namespace

TEST_F(MeminfoReport, IsSilentWithAllSwitchesOff) {
    module("one.dll", 100);
    EXPECT_THAT(report({}), IsEmpty());
}

TEST_F(MeminfoReport, DetailsAloneSayNothing) {
    loaded_module("one.dll");
    EXPECT_THAT(report({"list_dll_details"}), IsEmpty());
}

TEST_F(MeminfoReport, AddsUpLoadedAndNotLoadedModules) {
    int const size = loaded_module("b.dll");
    module("a.dll", 100);
    module("c.dll", 23);
    EXPECT_THAT(report({"profile_dll_usage"}),
                ElementsAre("GEN: fitter     synthesis DLL usage(bytes): Loaded " +
                            std::to_string(size) + " Not Loaded 123"));
}

TEST_F(MeminfoReport, DetailsListTheLoadedOnes) {
    std::string const size = std::to_string(loaded_module("b.dll"));
    module("a.dll", 100);
    EXPECT_THAT(
        report({"profile_dll_usage", "list_dll_details"}),
        ElementsAre("GEN: LOADED: b.dll         " + std::string(9 - size.size(), ' ') + size,
                    "GEN: fitter     synthesis DLL usage(bytes): Loaded " + size +
                        " Not Loaded 100"));
}

TEST_F(MeminfoReport, LongModuleNamesAreNotCut) {
    std::string const size = std::to_string(loaded_module("a_rather_long_name.dll"));
    EXPECT_EQ(report({"profile_dll_usage", "list_dll_details"}).front(),
              "GEN: LOADED: a_rather_long_name.dll  " + std::string(9 - size.size(), ' ') + size);
}

TEST_F(MeminfoReport, OnlyDllFilesBesideTheExecutableCount) {
    module("a.dll", 5);
    module("b.so", 7);
    module("c.dll.bak", 11);
    module("edll", 13);
    m_directory.write("d.dll", "outside");
    EXPECT_EQ(report({"profile_dll_usage"}).front(),
              "GEN: fitter     synthesis DLL usage(bytes): Loaded 0 Not Loaded 5");
}

TEST_F(MeminfoReport, WithoutModulesSaysSoAndNoMore) {
    EXPECT_THAT(report({"profile_dll_usage", "list_dll_details"}),
                ElementsAre("GEN: No *.dll files found!"));
}

TEST_F(MeminfoReport, ModulesComeBeforeMemory) {
    EXPECT_THAT(report({"profile_dll_usage", "report_modules_flow"}),
                ElementsAre("GEN: No *.dll files found!", memory_line("fitter     synthesis")));
}

TEST_F(MeminfoReport, SumsWrapIn32Bits) {
    for (char const* const name : {"a.dll", "b.dll"})
        std::filesystem::resize_file(m_directory.write(std::string("linux/") + name), 3U << 30);
    module("c.dll", 3);
    // Each of the two counts as the largest 32-bit size, on either width.
    EXPECT_EQ(report({"profile_dll_usage"}).front(),
              "GEN: fitter     synthesis DLL usage(bytes): Loaded 0 Not Loaded 1");
}

TEST_F(MeminfoReport, SwitchesAreReadOnEveryCall) {
    module("a.dll", 5);
    EXPECT_THAT(report({"profile_dll_usage"}), SizeIs(1));
    mem_cfg_set("profile_dll_usage", false);
    EXPECT_THAT(report({}), SizeIs(1));
    mem_cfg_unset("profile_dll_usage");
    ScopedVariable const environment("KORVANE_CFG", "profile_dll_usage,report_modules_flow=on");
    EXPECT_THAT(report({}), SizeIs(3));
}

TEST_F(MeminfoReport, MemoryLine) {
    EXPECT_THAT(report({"report_modules_flow"}), ElementsAre(memory_line("fitter     synthesis")));
}

/// Has the process been larger than it is, by 32 MiB at least.
static void grow_and_shrink() {
    constexpr std::size_t size = 32U << 20;
    void* const memory =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    std::memset(memory, 'm', size);
    munmap(memory, size);
}

TEST_F(MeminfoReport, MemoryLineHasTheCounters) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    grow_and_shrink();
    mem_cfg_set("report_modules_flow", true);
    STR const held(1000, 'm');
    std::size_t const in_use = MEM_MANAGER::s_system_memory_counter.current();
    std::string const line = report({}).front();
    auto const figure = [&line](std::string const& label) {
        std::size_t const at = line.find(label + " ");
        return std::stoull(line.substr(at + label.size() + 1));
    };
    EXPECT_EQ(figure("transient"), in_use);
    EXPECT_GT(in_use, held.size());
    EXPECT_GT(figure("WS"), 100000U);
    EXPECT_GT(figure("WS Peak"), figure("WS") + (16U << 20));
    EXPECT_EQ(figure("WS Peak"), mem_info_get_working_set_peak_size());
}

TEST_F(MeminfoReport, MemoryLineHasTheDateNow) {
    std::string const before(gen_get_current_date_and_time(0));
    std::string const line = report({"report_modules_flow"}).front();
    std::string const after(gen_get_current_date_and_time(0));
    EXPECT_THAT(line, AnyOf(HasSubstr(" at " + before + " "), HasSubstr(" at " + after + " ")));
}

TEST_F(MeminfoReport, KeepsNoSearchOpen) {
    module("a.dll", 5);
    report({"profile_dll_usage"});
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    report({});
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

TEST_F(MeminfoReport, NullPhaseIsStart) {
    module("a.dll", 5);
    EXPECT_THAT(report({"profile_dll_usage", "report_modules_flow"}, "fitter", nullptr),
                ElementsAre("GEN: fitter     start DLL usage(bytes): Loaded 0 Not Loaded 5",
                            memory_line("fitter     start")));
}

TEST_F(MeminfoReport, TagIsCutOrPaddedToTen) {
    module("a.dll", 5);
    EXPECT_THAT(report({"profile_dll_usage", "report_modules_flow"}, "0123456789abc", "x"),
                ElementsAre("GEN: 0123456789 x DLL usage(bytes): Loaded 0 Not Loaded 5",
                            memory_line("0123456789 x")));
    lines.clear();
    mem_cfg_set("report_modules_flow", false);
    EXPECT_THAT(report({"profile_dll_usage"}, nullptr, ""),
                ElementsAre("GEN:             DLL usage(bytes): Loaded 0 Not Loaded 5"));
}

TEST_F(MeminfoReport, PercentInALabelIsExpandedOnceMoreInTheMemoryLineOnly) {
    module("a.dll", 5);
    EXPECT_THAT(report({"profile_dll_usage", "report_modules_flow"}, "100%%", "<%s%d%n%%>"),
                ElementsAre("GEN: 100%%      <%s%d%n%%> DLL usage(bytes): Loaded 0 Not Loaded 5",
                            memory_line("100%      <%>")));
}

TEST_F(MeminfoReport, ConversionsInALabelFindNoArguments) {
    for (std::string const conversion :
         {"%s", "%d", "%f", "%Lf", "%*.*s", "%n", "%9999$s", "%hs"}) {
        std::string phase = "<";
        while (phase.size() < 800)
            phase += conversion;
        EXPECT_THAT(report({"report_modules_flow"}, "t", (phase + ">").c_str()),
                    ElementsAre(memory_line("t          <>")))
            << conversion;
        lines.clear();
    }
}

TEST_F(MeminfoReport, DirectoryIsNoModule) {
    m_directory.make_directory("linux/x.dll");
    EXPECT_THAT(report({"profile_dll_usage"}), ElementsAre("GEN: No *.dll files found!"));
    lines.clear();
    module("y.dll", 5);
    EXPECT_THAT(report({}),
                ElementsAre("GEN: fitter     synthesis DLL usage(bytes): Loaded 0 Not Loaded 5"));
}

TEST_F(MeminfoReport, LabelsOfAnyLengthOverrunNothing) {
    std::string const phase(100000, 'p');
    std::string const line = report({"report_modules_flow"}, phase.c_str(), phase.c_str()).front();
    EXPECT_EQ(line, "GEN: pppppppppp " + std::string(1012, 'p'));
    lines.clear();
    std::string const percents(100000, '%');
    EXPECT_EQ(report({"report_modules_flow"}, "t", percents.c_str()).front(),
              "GEN: t          " + std::string(506, '%'));
}
