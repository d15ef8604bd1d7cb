#include "lookup_order.h"

#include <iterator>

LibraryDirectory const library_directories[29] = {
    {""},
    {"libraries/"},
    {"libraries/vhdl/"},
    {"libraries/primitives/"},
    {"libraries/primitives/pin/"},
    {"libraries/primitives/buffer/"},
    {"libraries/primitives/logic/"},
    {"libraries/primitives/storage/"},
    {"libraries/primitives/other/"},
    {"libraries/parablocks/"},
    {"libraries/parablocks/arithmetic/"},
    {"libraries/parablocks/gates/"},
    {"libraries/parablocks/io/"},
    {"libraries/parablocks/storage/"},
    {"libraries/parablocks/embedded_logic/"},
    {"libraries/corekits/"},
    {"libraries/others/"},
    {"libraries/others/prismo2/"},
    {"libraries/others/allycores/"},
    {"libraries/others/vital/", true},
    {"eda/mentor/", true},
    {"eda/synopsys/", true},
    {"eda/viewlogic/", true},
    {"eda/sim_lib/", true},
    {"eda/ibis/", true},
    {"libraries/others/synplicity/", true},
    {"libraries/software/boot/"},
    {"libraries/others/evalcores/"},
    {"eda/hspice/"},
};

char const* const source_extensions[7] = {".kbd", ".ksd", ".khd", ".vhd", ".v", ".sv", ".edf"};

static std::vector<std::string> directories_below(std::string const& root, bool for_outside_tools) {
    std::vector<std::string> directories;
    for (std::size_t type = 1; type < std::size(library_directories); ++type)
        if (library_directories[type].for_outside_tools == for_outside_tools)
            directories.push_back(root + library_directories[type].name);
    return directories;
}

std::vector<std::string> shipped_directories(std::string const& root) {
    return directories_below(root, false);
}

std::vector<std::string> eda_directories(std::string const& root) {
    return directories_below(root, true);
}
