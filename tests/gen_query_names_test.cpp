#include "gen_query.h"
#include "in_child.h"
#include "private_mounts.h"
#include "system_trouble.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

/// gen_query in an installation of its own, run in its project.
class GenQueryNames : public testing::Test {
  protected:
    void SetUp() override {
        m_root.make_directory("project");
        m_root.make_directory("linux");
        std::filesystem::create_symlink(TEST_BINARY_DIR "/gen_query", m_root / "linux/gen_query");
    }

    ProgramResult run(std::vector<std::string> const& arguments) {
        ProgramStart start;
        start.arguments = {m_root / "linux/gen_query"};
        start.directory = m_root / "project";
        return run_gen_query(arguments, start);
    }

    nlohmann::json names(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"names", "--json"});
        return nlohmann::json::parse(run(arguments).output)["names"];
    }

    TempDirectory m_root;
};

} // namespace

namespace {

struct ListedName {
    char const* family;
    char const* function;
    char const* path; ///< below the installation
};

ListedName const listed_names[] = {
    {"report", "gen_get_krpt_name(first)", "linux/Report_Window_01.krw"},
    {"report", "gen_get_krpt_name(second)", "linux/Report_Window_02.krw"},
    {"report", "gen_get_rpw_filename(3)", "linux/Report_Window_03.krw"},
    {"window", "gen_get_fled_filename", "linux/TimingClosureFloorplan.fld"},
    {"window", "gen_get_ase_filename", "linux/Assignment Editor.kas"},
    {"window", "gen_get_acv_filename", "linux/chip_editor.acv"},
    {"window", "gen_get_ape_filename", "linux/Atom Property Editor.kap"},
    {"window", "gen_get_cfw_filename", "linux/Compiler Flow Window.cfw"},
    {"window", "gen_get_sfw_filename", "linux/Simulator Flow Window.sfw"},
    {"window", "gen_get_tfw_filename", "linux/Timing Analyzer Flow Window.tfw"},
    {"window", "gen_get_advanced_tan_tool_filename", "linux/Advanced Timing Analyzer Tool.atfw"},
    {"window", "gen_get_pgmw_cof_filename", "linux/Convert Programming Files.pgmwcof"},
    {"window", "gen_get_rui_filename", "linux/RTL_Viewer.krui"},
    {"window", "gen_get_tech_viewer_filename", "linux/Technology_Viewer.krui"},
    {"window", "gen_get_rui_sim_viewer_fun_filename",
     "linux/Functional_Simulation_Netlist_Viewer.krui"},
    {"window", "gen_get_rui_sim_viewer_tim_filename",
     "linux/Timing_Simulation_Netlist_Viewer.krui"},
    {"window", "gen_get_rui_sim_viewer_ftm_filename",
     "linux/Fast_Timing_Model_Simulation_Netlist_Viewer.krui"},
    {"window", "gen_get_rsm_filename", "linux/State_Machine_Viewer.krsm"},
    {"window", "gen_get_ppl_filename", "linux/pin_planner.ppl"},
    {"window", "gen_get_ecui_filename", "linux/Equivalence Checker.ecui"},
    {"window", "gen_get_reqc_filename", "linux/Equivalence_Checker_Viewer.reqc"},
    {"window", "gen_get_ptw_filename", "linux/Power Tool Window.ptw"},
    {"window", "gen_get_kis_filename", "linux/Korvane II Integrated Synthesis Tool Window.kis"},
    {"window", "gen_get_ram_editor_filename", "linux/RAM Editor.kred"},
    {"advisor", "gen_get_oaw_resource_filename", "common/advisors/oa_resource_table.xml"},
    {"advisor", "gen_get_oaw_timing_filename", "common/advisors/oa_timing_table.xml"},
    {"advisor", "gen_get_oaw_asx2_filename", "common/advisors/oa_asx2_table.xml"},
    {"advisor", "gen_get_oaw_power_filename", "common/advisors/oa_power_table.xml"},
    {"advisor", "gen_get_oaw_ssn_filename", "common/advisors/oa_ssn_table.xml"},
    {"advisor", "gen_get_oaw_productivity_filename", "common/advisors/oa_productivity_table.xml"},
    {"database", "gen_generate_pdb_filename", "project/db/top.pdb"},
};

/// @p text, and blanks up to @p width.
std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

} // namespace

TEST_F(GenQueryNames, EveryNameIsListedForThisInstallationAndProject) {
    nlohmann::json expected = nlohmann::json::array();
    for (auto const& [family, function, path] : listed_names)
        expected.push_back({{"family", family}, {"function", function}, {"path", m_root / path}});
    EXPECT_EQ(names({}), expected);
}

TEST_F(GenQueryNames, PeopleSeeColumnsUnderTheirHeads) {
    std::string expected = padded("family", 10) + padded("function", 37) + "path\n";
    for (auto const& [family, function, path] : listed_names)
        expected += padded(family, 10) + padded(function, 37) + (m_root / path) + "\n";
    EXPECT_EQ(run({"names"}).output, expected);
}

TEST_F(GenQueryNames, DatabaseFileIsTheOneThatGenWouldUse) {
    struct {
        std::vector<std::string> arguments;
        std::string path;
    } const rows[] = {
        {{"--database-file", "chip"}, m_root / "project/db/chip.pdb"},
        {{"--project", "/q"}, "/q/db/top.pdb"},
        {{"--project", "/q/"}, "/q/db/top.pdb"},
        {{"--project", "/q", "--db", "/p/db/"}, "/p/db/top.pdb"},
        {{"--db", "/p/db/", "--database-file", "chip"}, "/p/db/chip.pdb"},
        // gen puts no "/" there.
        {{"--db", "/p/db", "--database-file", "chip"}, "/p/dbchip.pdb"},
        {{"--db", "db"}, "dbtop.pdb"},
        {{"--db", ""}, "top.pdb"},
    };
    for (auto const& [arguments, path] : rows)
        EXPECT_EQ(names(arguments).back()["path"], path);
}

TEST_F(GenQueryNames, SettingsOfTheProjectApplyAndTheProjectStays) {
    m_root.write("project/gen_query.toml", "project = \"chip\"\n");
    EXPECT_EQ(names({}).back()["path"], m_root / "project/chip/db/top.pdb");
    m_root.write("project/gen_query.toml", "db = \"base\"\n");
    EXPECT_EQ(names({}).back()["path"], m_root / "project/base/top.pdb");
    EXPECT_EQ(names({"--db", "/p/"}).back()["path"], "/p/top.pdb");
    EXPECT_THAT(run({"names", "--project", "/nowhere"}).errors,
                HasSubstr("project directory '/nowhere' does not exist"));

    // What was asked before stays set, and what is asked here changes nothing.
    m_root.make_directory("other");
    m_root.write("other/db/only_here.v");
    std::string const project = m_root / "other";
    ProgramStart start;
    start.arguments = {m_root / "linux/gen_query"};
    start.directory = m_root / "project";
    start.input = R"({"args": ["find", "/", "--project", ")" + project + "\"]}\n" +
                  R"({"args": ["names"]})" + "\n" + R"({"args": ["find", "only_here.v"]})" + "\n";
    EXPECT_THAT(run_gen_query({"serve"}, start).output,
                MatchesRegex(".*" + project + "/db/top.pdb.*\n.*\"status\": 1.*\n"));
}

TEST_F(GenQueryNames, ExistsMarksWhatIsOnTheDisk) {
    EXPECT_EQ(run({"names", "--exists"}).status, 1);
    m_root.write("common/advisors/oa_ssn_table.xml");
    EXPECT_EQ(run({"names", "--exists"}).status, 0);
    for (nlohmann::json const& row : names({"--exists"}))
        EXPECT_EQ(row["exists"], row["function"] == "gen_get_oaw_ssn_filename") << row;
}

TEST_F(GenQueryNames, TempCreatesTheFileThatItPrints) {
    ProgramResult const result =
        run({"temp", "--directory", ".", "--prefix", "report", "--number", "42"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "./rep0000002a.tmp\n");
    EXPECT_TRUE(std::filesystem::is_regular_file(m_root / "project/rep0000002a.tmp"));
}

TEST_F(GenQueryNames, TempLeavesNothingElseBehind) {
    ProgramResult const result = run({"temp", "--directory", ".", "--json"});
    EXPECT_EQ(result.status, 0);
    std::string const path = nlohmann::json::parse(result.output)["path"];
    EXPECT_THAT(path, MatchesRegex("\\./gen0000[0-9a-f]*\\.tmp"));
    std::vector<std::string> found;
    for (auto const& entry : std::filesystem::directory_iterator(m_root / "project"))
        found.push_back("./" + entry.path().filename().string());
    EXPECT_THAT(found, ElementsAre(path));
}

TEST_F(GenQueryNames, TempSaysWhyNoFileCanBeCreated) {
    std::string deep = m_root.path();
    while (deep.size() < 4085)
        deep += "/.";
    struct {
        std::string directory;
        char const* why;
    } const rows[] = {
        {"/nowhere", "No such file or directory"},
        {TEST_BINARY_DIR "/gen_query", "Not a directory"},
        {"/proc", ""}, // the system's reason depends on who asks
        {deep, "File name too long"},
    };
    for (auto const& [directory, why] : rows) {
        if (directory == "/proc" && !proc_trouble().empty())
            continue;
        ProgramResult const result = run({"temp", "--directory", directory});
        EXPECT_EQ(result.status, 1) << directory;
        EXPECT_THAT(result.errors,
                    StartsWith("gen_query: no file can be created in " + directory + ": " + why));
    }
}

TEST_F(GenQueryNames, TempDoesNotWaitForAFullDevice) {
    std::string const answer = in_child([&]() -> std::string {
        // The device has room for its own directory only.
        if (!enter_private_mounts() || !mount_in_memory(m_root / "project", "nr_inodes=1"))
            return "not permitted";
        ProgramResult const result = run({"temp", "--directory", m_root / "project"});
        return std::to_string(result.status) + " " + result.errors;
    });
    if (answer == "not permitted")
        GTEST_SKIP() << "no private mounts for this user";
    EXPECT_EQ(answer, "1 gen_query: no file can be created in " + (m_root / "project") +
                          ": No space left on device\n");
}

TEST_F(GenQueryNames, TempDoesNotWaitWhereAllNamesAreTaken) {
    char name[24];
    for (unsigned number = 0; number < 65536; ++number) {
        std::snprintf(name, sizeof name, "project/rep%.8x.tmp", number);
        int const file = open((m_root / name).c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
        ASSERT_GE(file, 0) << name;
        close(file);
    }
    std::vector<std::string> const request = {"temp", "--directory", ".", "--prefix", "report"};
    ProgramResult const result = run(request);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "gen_query: no file can be created in .: all 65536 names are taken\n");

    std::filesystem::remove(m_root / "project/rep0000beef.tmp");
    EXPECT_EQ(run(request).output, "./rep0000beef.tmp\n");
}

TEST_F(GenQueryNames, TempRefusesAPrefixOfAnotherDirectory) {
    for (char const* const prefix : {"a/b", "../", "/", "abc/d"}) {
        ProgramResult const result = run({"temp", "--directory", ".", "--prefix", prefix});
        EXPECT_EQ(result.status, 2) << prefix;
        EXPECT_THAT(result.errors, HasSubstr("--prefix: no name contains a \"/\"")) << prefix;
    }
}
