/// The names of the tools' files without memory.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "gen_path.h"

namespace {

struct ToolFile {
    char const* name;
    FIO_PATH (*ask)();
};

constexpr ToolFile files[] = {
    {"ase", gen_get_ase_filename},
    {"acv", gen_get_acv_filename},
    {"ape", gen_get_ape_filename},
    {"cfw", gen_get_cfw_filename},
    {"sfw", gen_get_sfw_filename},
    {"tfw", gen_get_tfw_filename},
    {"advanced_tan_tool", gen_get_advanced_tan_tool_filename},
    {"pgmw_cof", gen_get_pgmw_cof_filename},
    {"rui", gen_get_rui_filename},
    {"tech_viewer", gen_get_tech_viewer_filename},
    {"rui_sim_viewer_fun", gen_get_rui_sim_viewer_fun_filename},
    {"rui_sim_viewer_tim", gen_get_rui_sim_viewer_tim_filename},
    {"rui_sim_viewer_ftm", gen_get_rui_sim_viewer_ftm_filename},
    {"rsm", gen_get_rsm_filename},
    {"ppl", gen_get_ppl_filename},
    {"ecui", gen_get_ecui_filename},
    {"reqc", gen_get_reqc_filename},
    {"ptw", gen_get_ptw_filename},
    {"kis", gen_get_kis_filename},
    {"ram_editor", gen_get_ram_editor_filename},
    {"oaw_resource", gen_get_oaw_resource_filename},
    {"oaw_timing", gen_get_oaw_timing_filename},
    {"oaw_asx2", gen_get_oaw_asx2_filename},
    {"oaw_power", gen_get_oaw_power_filename},
    {"oaw_ssn", gen_get_oaw_ssn_filename},
    {"oaw_productivity", gen_get_oaw_productivity_filename},
};

std::vector<Call> calls() {
    std::vector<Call> all = {
        {.name = "krpt",
         .ask = [] { return shown(gen_get_krpt_name("project", "revision", "tool", true, "")); },
         .prepare = start},
        {.name = "rpw", .ask = [] { return shown(gen_get_rpw_filename(7)); }, .prepare = start},
        {.name = "fled",
         .ask = [] { return shown(gen_get_fled_filename("revision", true)); },
         .prepare = start},
    };
    for (ToolFile const& file : files)
        all.push_back({.name = file.name,
                       .ask = [ask = file.ask] { return shown(ask()); },
                       .prepare = start});
    return all;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(ToolFile, AllocationFailure, testing::ValuesIn(calls()), call_name);
