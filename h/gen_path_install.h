#pragma once

/// The installation: the shipped library and data directories, all of them below the root that
/// gen_get_korvane_path answers. Nothing here is cached and nothing asks whether the directories
/// exist, gen_get_all_device_files apart. Before gen_exe_init these functions end the process, as
/// gen_get_module_fullpath does.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The shipped library directories. The values are passed around as numbers and keep this order,
/// which is not grouped by tree.
enum GEN_LIBRARY_TYPE : int {
    GEN_LIB_ROOT = 0,             ///< the installation root itself
    GEN_LIB_LIBRARIES,            ///< libraries/
    GEN_LIB_VHDL,                 ///< libraries/vhdl/
    GEN_LIB_PRIMITIVES,           ///< libraries/primitives/
    GEN_LIB_PRIM_PIN,             ///< libraries/primitives/pin/
    GEN_LIB_PRIM_BUFFER,          ///< libraries/primitives/buffer/
    GEN_LIB_PRIM_LOGIC,           ///< libraries/primitives/logic/
    GEN_LIB_PRIM_STORAGE,         ///< libraries/primitives/storage/
    GEN_LIB_PRIM_OTHER,           ///< libraries/primitives/other/
    GEN_LIB_PARABLOCKS,           ///< libraries/parablocks/
    GEN_LIB_PARA_ARITHMETIC = 10, ///< libraries/parablocks/arithmetic/
    GEN_LIB_PARA_GATES,           ///< libraries/parablocks/gates/
    GEN_LIB_PARA_IO,              ///< libraries/parablocks/io/
    GEN_LIB_PARA_STORAGE,         ///< libraries/parablocks/storage/
    GEN_LIB_PARA_EMBEDDED_LOGIC,  ///< libraries/parablocks/embedded_logic/
    GEN_LIB_COREKITS,             ///< libraries/corekits/
    GEN_LIB_OTHERS,               ///< libraries/others/
    GEN_LIB_PRISMO2,              ///< libraries/others/prismo2/
    GEN_LIB_ALLYCORES,            ///< libraries/others/allycores/
    GEN_LIB_VITAL,                ///< libraries/others/vital/
    GEN_LIB_EDA_MENTOR = 20,      ///< eda/mentor/
    GEN_LIB_EDA_SYNOPSYS,         ///< eda/synopsys/
    GEN_LIB_EDA_VIEWLOGIC,        ///< eda/viewlogic/
    GEN_LIB_EDA_SIM_LIB,          ///< eda/sim_lib/
    GEN_LIB_EDA_IBIS,             ///< eda/ibis/
    GEN_LIB_SYNPLICITY,           ///< libraries/others/synplicity/
    GEN_LIB_SOFTWARE_BOOT,        ///< libraries/software/boot/
    GEN_LIB_EVALCORES,            ///< libraries/others/evalcores/
    GEN_LIB_EDA_HSPICE,           ///< eda/hspice/
    GEN_LIB_SIZE                  ///< how many there are
};

/// The directory of a library, ending in "/". A type past the table reports "type < GEN_LIB_SIZE";
/// that one and a negative type give the root alone.
KORVANE_API STR gen_get_library_path(GEN_LIBRARY_TYPE type);

/// The library is meant for outside (EDA) tools only: GEN_LIB_VITAL to GEN_LIB_SYNPLICITY.
/// GEN_LIB_EDA_HSPICE is not among them, nor is any value outside the table.
KORVANE_API bool gen_lib_is_for_eda_use_only(GEN_LIBRARY_TYPE type);

/// "<root>common", without a "/" at its end.
KORVANE_API STR gen_get_common_data_fullpath();
/// "<root>common/misc/".
KORVANE_API STR gen_get_common_misc_fullpath();
/// "<root>common/not_shipped/".
KORVANE_API STR gen_get_unshipped_data_fullpath();
/// "<root>common/tcl/apps/".
KORVANE_API STR gen_get_tcl_apps_fullpath();
/// "<root>common/tcl/internal/".
KORVANE_API STR gen_get_tcl_internal_fullpath();
/// "<root>common/not_shipped/tcl/".
KORVANE_API STR gen_get_unshipped_tcl_fullpath();

/// "<root>common/devinfo", without a "/" at its end.
KORVANE_API STR gen_get_device_db_fullpath();
/// "devinfo".
KORVANE_API STR gen_get_device_db_name();
/// The bare names of the device database files ("*.ddb") in the executable's own directory, sorted
/// by byte value; an empty list when there are none.
KORVANE_API MEM_LIST<STR> gen_get_all_device_files();
