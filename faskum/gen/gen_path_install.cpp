#include "gen_path_install.h"

#include "fio_find.h"
#include "gen_exe.h"
#include "gen_report.h"

namespace {

// Characters, not pointers to them: a table of pointers would have to be relocated at each load.
// MUTANT_EXCL_LINE(40 to 41): room alone
constexpr char library_directories[][40] = {
    "",
    "libraries/",
    "libraries/vhdl/",
    "libraries/primitives/",
    "libraries/primitives/pin/",
    "libraries/primitives/buffer/",
    "libraries/primitives/logic/",
    "libraries/primitives/storage/",
    "libraries/primitives/other/",
    "libraries/parablocks/",
    "libraries/parablocks/arithmetic/",
    "libraries/parablocks/gates/",
    "libraries/parablocks/io/",
    "libraries/parablocks/storage/",
    "libraries/parablocks/embedded_logic/",
    "libraries/corekits/",
    "libraries/others/",
    "libraries/others/prismo2/",
    "libraries/others/allycores/",
    "libraries/others/vital/",
    "eda/mentor/",
    "eda/synopsys/",
    "eda/viewlogic/",
    "eda/sim_lib/",
    "eda/ibis/",
    "libraries/others/synplicity/",
    "libraries/software/boot/",
    "libraries/others/evalcores/",
    "eda/hspice/",
};
static_assert(std::size(library_directories) == GEN_LIB_SIZE);

constexpr char device_db_name[] = "devinfo";

STR directory_below(STR const& parent, char const* relative) {
    FIO_PATH path;
    path.cd(parent);
    path.cd(relative);
    return path.full_directory();
}

} // namespace

STR gen_get_library_path(GEN_LIBRARY_TYPE type) {
    STR path = gen_get_korvane_path();
    if (type >= GEN_LIB_SIZE)
        report(reports::no_such_library);
    else if (type >= GEN_LIB_ROOT) // MUTANT_EXCL_LINE(>= to >): of the root nothing is appended
        path += library_directories[type];
    return path;
}

bool gen_lib_is_for_eda_use_only(GEN_LIBRARY_TYPE type) {
    return type >= GEN_LIB_VITAL && type <= GEN_LIB_SYNPLICITY;
}

STR gen_get_common_data_fullpath() {
    FIO_PATH path(gen_get_korvane_path());
    path.base("common");
    return path.fullpath();
}

STR gen_get_common_misc_fullpath() {
    return directory_below(gen_get_common_data_fullpath(), "misc");
}

STR gen_get_unshipped_data_fullpath() {
    return directory_below(gen_get_common_data_fullpath(), "not_shipped");
}

STR gen_get_tcl_apps_fullpath() {
    return directory_below(gen_get_common_data_fullpath(), "tcl/apps");
}

STR gen_get_tcl_internal_fullpath() {
    return directory_below(gen_get_common_data_fullpath(), "tcl/internal");
}

STR gen_get_unshipped_tcl_fullpath() {
    return directory_below(gen_get_unshipped_data_fullpath(), "tcl");
}

STR gen_get_device_db_fullpath() {
    FIO_PATH path(gen_get_common_data_fullpath() + '/');
    path.base(device_db_name);
    return path.fullpath();
}

STR gen_get_device_db_name() {
    return device_db_name;
}

MEM_LIST<STR> gen_get_all_device_files() {
    MEM_LIST<STR> names;
    STR const directory = gen_get_module_path();
    if (directory.empty())
        return names;
    FIO_FIND search(directory + "*.ddb");
    for (STR name = search.find_first(); !name.empty(); name = search.find_next())
        names.push_back(name);
    return names;
}
