#include "gen_path_tools.h"

#include "gen_exe.h"
#include "gen_path_library.h"
#include "gen_path_project.h"
#include "mem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

/// As if /opt/k/linux/tool had been started.
class ToolNames : public testing::Test {
  protected:
    ToolNames() { gen_module_fullpath = m_executable; }
    ~ToolNames() override { gen_module_fullpath = m_previous; }

  private:
    char m_executable[20] = "/opt/k/linux/tool";
    char* m_previous = gen_module_fullpath;
};

struct ToolName {
    FIO_PATH (*getter)();
    char const* name;
};

TEST_F(ToolNames, LieBesideTheExecutable) {
    ToolName const rows[] = {
        {gen_get_ase_filename, "Assignment Editor.kas"},
        {gen_get_acv_filename, "chip_editor.acv"},
        {gen_get_ape_filename, "Atom Property Editor.kap"},
        {gen_get_cfw_filename, "Compiler Flow Window.cfw"},
        {gen_get_sfw_filename, "Simulator Flow Window.sfw"},
        {gen_get_tfw_filename, "Timing Analyzer Flow Window.tfw"},
        {gen_get_advanced_tan_tool_filename, "Advanced Timing Analyzer Tool.atfw"},
        {gen_get_pgmw_cof_filename, "Convert Programming Files.pgmwcof"},
        {gen_get_rui_filename, "RTL_Viewer.krui"},
        {gen_get_tech_viewer_filename, "Technology_Viewer.krui"},
        {gen_get_rui_sim_viewer_fun_filename, "Functional_Simulation_Netlist_Viewer.krui"},
        {gen_get_rui_sim_viewer_tim_filename, "Timing_Simulation_Netlist_Viewer.krui"},
        {gen_get_rui_sim_viewer_ftm_filename, "Fast_Timing_Model_Simulation_Netlist_Viewer.krui"},
        {gen_get_rsm_filename, "State_Machine_Viewer.krsm"},
        {gen_get_ppl_filename, "pin_planner.ppl"},
        {gen_get_ecui_filename, "Equivalence Checker.ecui"},
        {gen_get_reqc_filename, "Equivalence_Checker_Viewer.reqc"},
        {gen_get_ptw_filename, "Power Tool Window.ptw"},
        {gen_get_kis_filename, "Korvane II Integrated Synthesis Tool Window.kis"},
        {gen_get_ram_editor_filename, "RAM Editor.kred"},
        {[] { return gen_get_fled_filename("rev", true); }, "TimingClosureFloorplan.fld"},
        {[] { return gen_get_fled_filename("", false); }, "TimingClosureFloorplan.fld"},
    };
    for (auto const& [getter, name] : rows)
        EXPECT_EQ(getter().fullpath(), STR("/opt/k/linux/") + name);
}

TEST_F(ToolNames, ReportWindowsHaveTwoDigitsAtLeast) {
    struct {
        int number;
        char const* name;
    } const rows[] = {
        {0, "Report_Window_00.krw"},
        {1, "Report_Window_01.krw"},
        {3, "Report_Window_03.krw"},
        {42, "Report_Window_42.krw"},
        {123, "Report_Window_123.krw"},
        {-5, "Report_Window_-5.krw"},
        {2147483647, "Report_Window_2147483647.krw"},
    };
    for (auto const& [number, name] : rows)
        EXPECT_EQ(gen_get_rpw_filename(number).fullpath(), STR("/opt/k/linux/") + name);
}

TEST_F(ToolNames, ReportsAreTheFirstOrTheSecondReportWindow) {
    EXPECT_EQ(gen_get_krpt_name("a", "b", "c", true, "d").fullpath(),
              gen_get_rpw_filename(1).fullpath());
    EXPECT_EQ(gen_get_krpt_name("", "", "", false, "").fullpath(),
              gen_get_rpw_filename(2).fullpath());
}

TEST_F(ToolNames, ListOfAllHasEachOnce) {
    std::vector<std::string> getters;
    for (GEN_TOOL_FILE const& file : gen_get_tool_files())
        getters.emplace_back(file.getter);
    ASSERT_EQ(getters.size(), 30U);
    EXPECT_EQ(getters.front(), "gen_get_krpt_name(first)");
    EXPECT_EQ(getters.back(), "gen_get_oaw_productivity_filename");
    std::set<std::string> const once(getters.begin(), getters.end());
    EXPECT_EQ(once.size(), getters.size());
    MEM_VECTOR<GEN_TOOL_FILE> const files = gen_get_tool_files();
    EXPECT_STREQ(files[4].family, "window");
    EXPECT_EQ(files[4].path.fullpath(), gen_get_ase_filename().fullpath());
}

TEST_F(ToolNames, AdvisorTablesLieInTheSharedData) {
    ToolName const rows[] = {
        {gen_get_oaw_resource_filename, "oa_resource_table.xml"},
        {gen_get_oaw_timing_filename, "oa_timing_table.xml"},
        {gen_get_oaw_asx2_filename, "oa_asx2_table.xml"},
        {gen_get_oaw_power_filename, "oa_power_table.xml"},
        {gen_get_oaw_ssn_filename, "oa_ssn_table.xml"},
        {gen_get_oaw_productivity_filename, "oa_productivity_table.xml"},
    };
    for (auto const& [getter, name] : rows)
        EXPECT_EQ(getter().fullpath(), STR("/opt/k/common/advisors/") + name);
}

std::vector<std::string> debug_messages;

int keep_message(char const* owner, char const* text) {
    debug_messages.push_back(std::string(owner) + ": " + text);
    return 0;
}

/// Without a directory kept from earlier, and with the debug messages in debug_messages.
class DatabaseFilename : public testing::Test {
  protected:
    DatabaseFilename() : m_previous(mem_msg_set_sink(keep_message)) {
        forget();
        gen_set_db_dir_path("/p/db/");
    }
    ~DatabaseFilename() override {
        forget();
        gen_clear_all_library_paths();
        mem_msg_set_sink(m_previous);
    }

    static void forget() {
        STR const none;
        gen_generate_pdb_filename("", "", &none);
        debug_messages.clear();
    }

  private:
    MEM_MSG_SINK m_previous;
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(DatabaseFilename, LiesInTheDatabaseDirectory) {
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", nullptr), "/p/db/top.pdb");
    EXPECT_EQ(gen_generate_pdb_filename("top.sub", "pdb", nullptr), "/p/db/top.sub.pdb");
    EXPECT_EQ(gen_generate_pdb_filename("", "pdb", nullptr), "/p/db/.pdb");
    EXPECT_THAT(debug_messages, IsEmpty());
}

TEST_F(DatabaseFilename, EmptyExtensionBringsNoDot) {
    EXPECT_EQ(gen_generate_pdb_filename("top", "", nullptr), "/p/db/top");
    EXPECT_EQ(gen_generate_pdb_filename("", "", nullptr), "/p/db/");
}

TEST_F(DatabaseFilename, NoSeparatorIsAdded) {
    gen_set_db_dir_path("/p/db");
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", nullptr), "/p/dbtop.pdb");
    STR const directory = "/q/drv";
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", &directory), "/q/drvtop.pdb");
}

TEST_F(DatabaseFilename, IsTheBareNameWithoutAnyDirectory) {
    gen_clear_all_library_paths();
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", nullptr), "top.pdb");
}

TEST_F(DatabaseFilename, DirectoryIsKeptForLaterCallsAndReportedEachTime) {
    STR directory = "/q/drv/";
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", &directory), "/q/drv/top.pdb");
    directory = "changed by its owner";
    EXPECT_EQ(gen_generate_pdb_filename("sub", "pdb", nullptr), "/q/drv/sub.pdb");
    EXPECT_THAT(debug_messages,
                ElementsAre("GEN: DRV path is /q/drv/", "GEN: DRV path is /q/drv/"));
}

TEST_F(DatabaseFilename, EmptyDirectoryGoesBackToTheDatabaseDirectory) {
    STR const directory = "/q/drv/";
    STR const none;
    gen_generate_pdb_filename("top", "pdb", &directory);
    debug_messages.clear();
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", &none), "/p/db/top.pdb");
    EXPECT_EQ(gen_generate_pdb_filename("top", "pdb", nullptr), "/p/db/top.pdb");
    EXPECT_THAT(debug_messages, IsEmpty());
}

TEST_F(DatabaseFilename, PercentSignsOfADirectoryAreReportedAsTheyAre) {
    STR const directory = "/q/100%s/";
    gen_generate_pdb_filename("top", "pdb", &directory);
    EXPECT_THAT(debug_messages, ElementsAre("GEN: DRV path is /q/100%s/"));
}

} // namespace
