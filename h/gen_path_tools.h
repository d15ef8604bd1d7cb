#pragma once

/// The file that each tool window, report and advisor of the suite keeps its settings in, so that
/// all executables agree on the names. Nothing is created, and nothing on the disk is looked at.

#include "fio_path.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

// Files beside the executable, in gen_get_module_path(). Like that function, these end a process
// that was not started through GEN_DEFINE_MAIN.

/// "Report_Window_01.krw" when @p first is true, else "Report_Window_02.krw". The strings are
/// accepted for callers that have them and are not used.
KORVANE_API FIO_PATH gen_get_krpt_name(STR const& project, STR const& revision, STR const& tool,
                                       bool first, STR const& title);
/// "Report_Window_07.krw" for 7; the number has at least two digits.
KORVANE_API FIO_PATH gen_get_rpw_filename(int number);
/// "TimingClosureFloorplan.fld". The arguments are not used.
KORVANE_API FIO_PATH gen_get_fled_filename(STR const& revision, bool read_only);
/// "Assignment Editor.kas"
KORVANE_API FIO_PATH gen_get_ase_filename();
/// "chip_editor.acv"
KORVANE_API FIO_PATH gen_get_acv_filename();
/// "Atom Property Editor.kap"
KORVANE_API FIO_PATH gen_get_ape_filename();
/// "Compiler Flow Window.cfw"
KORVANE_API FIO_PATH gen_get_cfw_filename();
/// "Simulator Flow Window.sfw"
KORVANE_API FIO_PATH gen_get_sfw_filename();
/// "Timing Analyzer Flow Window.tfw"
KORVANE_API FIO_PATH gen_get_tfw_filename();
/// "Advanced Timing Analyzer Tool.atfw"
KORVANE_API FIO_PATH gen_get_advanced_tan_tool_filename();
/// "Convert Programming Files.pgmwcof"
KORVANE_API FIO_PATH gen_get_pgmw_cof_filename();
/// "RTL_Viewer.krui"
KORVANE_API FIO_PATH gen_get_rui_filename();
/// "Technology_Viewer.krui"
KORVANE_API FIO_PATH gen_get_tech_viewer_filename();
/// "Functional_Simulation_Netlist_Viewer.krui"
KORVANE_API FIO_PATH gen_get_rui_sim_viewer_fun_filename();
/// "Timing_Simulation_Netlist_Viewer.krui"
KORVANE_API FIO_PATH gen_get_rui_sim_viewer_tim_filename();
/// "Fast_Timing_Model_Simulation_Netlist_Viewer.krui"
KORVANE_API FIO_PATH gen_get_rui_sim_viewer_ftm_filename();
/// "State_Machine_Viewer.krsm"
KORVANE_API FIO_PATH gen_get_rsm_filename();
/// "pin_planner.ppl"
KORVANE_API FIO_PATH gen_get_ppl_filename();
/// "Equivalence Checker.ecui"
KORVANE_API FIO_PATH gen_get_ecui_filename();
/// "Equivalence_Checker_Viewer.reqc"
KORVANE_API FIO_PATH gen_get_reqc_filename();
/// "Power Tool Window.ptw"
KORVANE_API FIO_PATH gen_get_ptw_filename();
/// "Korvane II Integrated Synthesis Tool Window.kis"
KORVANE_API FIO_PATH gen_get_kis_filename();
/// "RAM Editor.kred"
KORVANE_API FIO_PATH gen_get_ram_editor_filename();

// The tables of the advisors, in the directory "advisors/" of the shipped common data. They need
// the start-up too.

/// "oa_resource_table.xml"
KORVANE_API FIO_PATH gen_get_oaw_resource_filename();
/// "oa_timing_table.xml"
KORVANE_API FIO_PATH gen_get_oaw_timing_filename();
/// "oa_asx2_table.xml"
KORVANE_API FIO_PATH gen_get_oaw_asx2_filename();
/// "oa_power_table.xml"
KORVANE_API FIO_PATH gen_get_oaw_power_filename();
/// "oa_ssn_table.xml"
KORVANE_API FIO_PATH gen_get_oaw_ssn_filename();
/// "oa_productivity_table.xml"
KORVANE_API FIO_PATH gen_get_oaw_productivity_filename();

/// One of the files above.
struct GEN_TOOL_FILE {
    char const* family; ///< "report", "window" or "advisor"
    char const* getter; ///< the function that gives it, with its number or choice if it takes one
    FIO_PATH path;      ///< as that function gives it
};

/// All of them, in the order in which people look for them; of the numbered report windows the
/// third stands for the rest.
KORVANE_API MEM_VECTOR<GEN_TOOL_FILE> gen_get_tool_files();

/// The path of a database file: the directory's string, @p name and, unless @p extension is empty,
/// "." and @p extension. No separator is added to the directory.
/// @param directory kept for the later calls, which pass null; "" makes them forget it. The debug
///                  channel gets which one is kept: "DRV path is /q/drv/". With none it is the
///                  project's database directory; where that is not set either, the name comes
///                  without a directory.
KORVANE_API STR gen_generate_pdb_filename(STR const& name, STR const& extension,
                                          STR const* directory);
