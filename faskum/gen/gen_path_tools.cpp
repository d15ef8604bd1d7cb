#include "gen_path_tools.h"

#include "gen_exe.h"
#include "gen_path_install.h"
#include "gen_path_project.h"
#include "gen_state.h"
#include "gen_string_message.h"

namespace {

FIO_PATH in_module_directory(STR const& base, char const* extension) {
    FIO_PATH path(gen_get_module_path());
    path.base(base);
    path.extension(extension, "");
    return path;
}

FIO_PATH in_module_directory(STR const& base, FIO_EXTENSION_TYPE extension) {
    FIO_PATH path(gen_get_module_path());
    path.base(base);
    path.extension(extension, FIO_EXTENSION_NONE);
    return path;
}

FIO_PATH advisor_table(char const* base) {
    // MUTANT_EXCL_LINE("/advisors/" to): the base name takes its place
    FIO_PATH path(gen_get_common_data_fullpath() + "/advisors/");
    path.base(base);
    path.extension("xml", "");
    return path;
}

} // namespace

// Each row defines its function and is a row of gen_get_tool_files. Blanks, underscores and small
// letters are as the windows' settings have always been called.
#define FOR_EACH_TOOL(TOOL)                                                                        \
    TOOL(gen_get_ase_filename, "Assignment Editor", FIO_EXTENSION_ASSIGNMENT_EDITOR)               \
    TOOL(gen_get_acv_filename, "chip_editor", "acv")                                               \
    TOOL(gen_get_ape_filename, "Atom Property Editor", FIO_EXTENSION_ATOM_PROPERTY_EDITOR)         \
    TOOL(gen_get_cfw_filename, "Compiler Flow Window", "cfw")                                      \
    TOOL(gen_get_sfw_filename, "Simulator Flow Window", "sfw")                                     \
    TOOL(gen_get_tfw_filename, "Timing Analyzer Flow Window", "tfw")                               \
    TOOL(gen_get_advanced_tan_tool_filename, "Advanced Timing Analyzer Tool", "atfw")              \
    TOOL(gen_get_pgmw_cof_filename, "Convert Programming Files", "pgmwcof")                        \
    TOOL(gen_get_rui_filename, "RTL_Viewer", "krui")                                               \
    TOOL(gen_get_tech_viewer_filename, "Technology_Viewer", "krui")                                \
    TOOL(gen_get_rui_sim_viewer_fun_filename, "Functional_Simulation_Netlist_Viewer", "krui")      \
    TOOL(gen_get_rui_sim_viewer_tim_filename, "Timing_Simulation_Netlist_Viewer", "krui")          \
    TOOL(gen_get_rui_sim_viewer_ftm_filename, "Fast_Timing_Model_Simulation_Netlist_Viewer",       \
         "krui")                                                                                   \
    TOOL(gen_get_rsm_filename, "State_Machine_Viewer", "krsm")                                     \
    TOOL(gen_get_ppl_filename, "pin_planner", "ppl")                                               \
    TOOL(gen_get_ecui_filename, "Equivalence Checker", "ecui")                                     \
    TOOL(gen_get_reqc_filename, "Equivalence_Checker_Viewer", "reqc")                              \
    TOOL(gen_get_ptw_filename, "Power Tool Window", "ptw")                                         \
    TOOL(gen_get_kis_filename, "Korvane II Integrated Synthesis Tool Window", "kis")               \
    TOOL(gen_get_ram_editor_filename, "RAM Editor", "kred")

#define DEFINE_TOOL(getter, base, extension)                                                       \
    FIO_PATH getter() {                                                                            \
        return in_module_directory(base, extension);                                               \
    }
FOR_EACH_TOOL(DEFINE_TOOL)
#undef DEFINE_TOOL

FIO_PATH gen_get_rpw_filename(int number) {
    STR base;
    gen_sprintf(&base, "Report_Window_%02d", number);
    return in_module_directory(base, FIO_EXTENSION_REPORT_WINDOW);
}

FIO_PATH gen_get_krpt_name(STR const& /*project*/, STR const& /*revision*/, STR const& /*tool*/,
                           bool first, STR const& /*title*/) {
    return gen_get_rpw_filename(first ? 1 : 2);
}

FIO_PATH gen_get_fled_filename(STR const& /*revision*/, bool /*read_only*/) {
    return in_module_directory("TimingClosureFloorplan", "fld");
}

#define FOR_EACH_ADVISOR(ADVISOR)                                                                  \
    ADVISOR(gen_get_oaw_resource_filename, "oa_resource_table")                                    \
    ADVISOR(gen_get_oaw_timing_filename, "oa_timing_table")                                        \
    ADVISOR(gen_get_oaw_asx2_filename, "oa_asx2_table")                                            \
    ADVISOR(gen_get_oaw_power_filename, "oa_power_table")                                          \
    ADVISOR(gen_get_oaw_ssn_filename, "oa_ssn_table")                                              \
    ADVISOR(gen_get_oaw_productivity_filename, "oa_productivity_table")

#define DEFINE_ADVISOR(getter, base)                                                               \
    FIO_PATH getter() {                                                                            \
        return advisor_table(base);                                                                \
    }
FOR_EACH_ADVISOR(DEFINE_ADVISOR)
#undef DEFINE_ADVISOR

#define WINDOW_ROW(getter, base, extension) {"window", #getter, getter()},
#define ADVISOR_ROW(getter, base) {"advisor", #getter, getter()},

MEM_VECTOR<GEN_TOOL_FILE> gen_get_tool_files() {
    // GCOVR_EXCL_BR_START: of what the compiler makes for exceptions
    // MUTANT_EXCL_LINE("" to "~"): of a report only the flag has a say
    return {{"report", "gen_get_krpt_name(first)", gen_get_krpt_name("", "", "", true, "")},
            // MUTANT_EXCL_LINE("" to "~"): likewise
            {"report", "gen_get_krpt_name(second)", gen_get_krpt_name("", "", "", false, "")},
            {"report", "gen_get_rpw_filename(3)", gen_get_rpw_filename(3)},
            // MUTANT_EXCL_LINE("" to "~"; false to true): nothing that is asked for has a say
            {"window", "gen_get_fled_filename", gen_get_fled_filename("", false)},
            FOR_EACH_TOOL(WINDOW_ROW) FOR_EACH_ADVISOR(ADVISOR_ROW)};
    // GCOVR_EXCL_BR_STOP
}

#undef WINDOW_ROW
#undef ADVISOR_ROW
#undef FOR_EACH_TOOL
#undef FOR_EACH_ADVISOR

STR gen_generate_pdb_filename(STR const& name, STR const& extension, STR const* directory) {
    if (directory != nullptr)
        gen_pdb_directory = *directory;
    bool const is_kept = !gen_pdb_directory.empty();
    STR const base = is_kept ? gen_pdb_directory : gen_get_db_dir_path_string();
    STR path = base + name;
    if (!extension.empty())
        path.append(1, '.').append(extension);
    if (is_kept) // once the strings have been taken over: the channel's sink may change them
        gen_mem_msg_debug("DRV path is %s", base.c_str());
    return path;
}
